#include "settings/InstalledApplicationsModel.h"

#include "settings/ApplicationIconSource.h"
#include "settings/NameCollator.h"
#include "settings/QtText.h"
#include "settings/SearchKey.h"
#include "settings/ShownText.h"

#include <QStringList>
#include <algorithm>
#include <utility>

namespace velmorand {

InstalledApplicationsModel::Entry InstalledApplicationsModel::entryOf(const InstalledApplication& application) {
    const QString name = toQString(application.name);
    const QString identifier = toQString(application.bundleIdentifier);
    return {application, name, identifier, searchKey(name + u'\n' + identifier)};
}

void InstalledApplicationsModel::setApplications(const std::vector<InstalledApplication>& applications,
                                                 bool allowsSeveral) {
    beginResetModel();
    entries_.clear();
    for (const InstalledApplication& application : applications) entries_.push_back(entryOf(application));
    allowsSeveral_ = allowsSeveral;
    searchText_.clear();
    sort();
    show();
    endResetModel();
    Q_EMIT searchTextChanged();
    Q_EMIT countChanged();
    Q_EMIT chosenCountChanged();
}

int InstalledApplicationsModel::choose(const InstalledApplication& application) {
    beginResetModel();
    const QString identifier = toQString(application.bundleIdentifier);
    auto entry = std::ranges::find(entries_, identifier, &Entry::identifier);
    if (entry == entries_.end()) entry = entries_.insert(entry, entryOf(application));
    mark(*entry, true);
    sort();
    searchText_.clear();
    show();
    endResetModel();
    Q_EMIT searchTextChanged();
    Q_EMIT countChanged();
    Q_EMIT chosenCountChanged();
    return static_cast<int>(std::ranges::find(entries_, identifier, &Entry::identifier) - entries_.begin());
}

/// Applications of the same name stay in the order of their identifiers.
void InstalledApplicationsModel::sort() {
    const QCollator collator = nameCollator();
    std::ranges::sort(entries_, [&](const Entry& first, const Entry& second) {
        const int order = collator.compare(first.name, second.name);
        return order != 0 ? order < 0 : first.application.bundleIdentifier < second.application.bundleIdentifier;
    });
}

void InstalledApplicationsModel::show() {
    const QStringList words = searchKey(searchText_.simplified()).split(u' ', Qt::SkipEmptyParts);
    shown_.clear();
    for (std::size_t place = 0; place < entries_.size(); ++place) {
        const QString& key = entries_[place].key;
        if (std::ranges::all_of(words, [&](const QString& word) { return key.contains(word); }))
            shown_.push_back(place);
    }
}

void InstalledApplicationsModel::setSearchText(const QString& text) {
    if (text == searchText_) return;
    beginResetModel();
    searchText_ = text;
    show();
    endResetModel();
    Q_EMIT searchTextChanged();
    Q_EMIT countChanged();
}

void InstalledApplicationsModel::mark(Entry& entry, bool chosen) {
    if (chosen && !allowsSeveral_) {
        for (Entry& other : entries_) other.isChosen = false;
    }
    entry.isChosen = chosen;
}

void InstalledApplicationsModel::setChosen(int row, bool chosen) {
    if (row < 0 || row >= count()) return;
    mark(entries_[shown_[static_cast<std::size_t>(row)]], chosen);
    Q_EMIT dataChanged(index(0), index(count() - 1), {chosenRole});
    Q_EMIT chosenCountChanged();
}

std::vector<std::filesystem::path> InstalledApplicationsModel::chosenLocations() const {
    std::vector<std::filesystem::path> locations;
    for (const Entry& entry : entries_) {
        if (entry.isChosen) locations.push_back(entry.application.location);
    }
    return locations;
}

int InstalledApplicationsModel::chosenCount() const {
    return static_cast<int>(std::ranges::count(entries_, true, &Entry::isChosen));
}

int InstalledApplicationsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant InstalledApplicationsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) return {};
    const Entry& entry = entries_[shown_[static_cast<std::size_t>(index.row())]];
    switch (role) {
        case Qt::DisplayRole:
        case nameRole: return shownName(entry.name);
        case identifierRole: return shownIdentifier(entry.identifier);
        case iconRole: return sourceOfIcon(entry.application.icon);
        case chosenRole: return entry.isChosen;
        default: return {};
    }
}

QHash<int, QByteArray> InstalledApplicationsModel::roleNames() const {
    return {{nameRole, "name"}, {identifierRole, "identifier"}, {iconRole, "icon"}, {chosenRole, "chosen"}};
}

}  // namespace velmorand

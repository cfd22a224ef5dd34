#include "settings/IgnoredAppsModel.h"

#include "platform/ApplicationChooser.h"
#include "preferences/PreferencesStore.h"
#include "settings/ApplicationIconSource.h"
#include "settings/QtText.h"
#include "settings/ShownText.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

constexpr const char* startingFolder = "/Applications";

}  // namespace

IgnoredAppsModel::IgnoredAppsModel(std::shared_ptr<PreferencesStore> preferencesStore, Workspace& workspace,
                                   const Bundle& bundle, ApplicationChooser& applicationChooser, QObject* parent)
    : QAbstractListModel(parent),
      preferencesStore_(std::move(preferencesStore)),
      workspace_(workspace),
      bundle_(bundle),
      applicationChooser_(applicationChooser),
      ignoredApps_(preferencesStore_->current().ignoredApps),
      rows_(ignoredAppDisplays(preferencesStore_->current(), workspace)),
      preferences_(
          preferencesStore_->state().subscribe([this](const PreferencesState&) { preferencesWerePublished(); })) {}

IgnoredAppsModel::~IgnoredAppsModel() = default;

/// The answer may come when the model is gone.
void IgnoredAppsModel::addApplications() {
    applicationChooser_.choose({.message = tr("Choose applications for Velmorand to ignore").toStdString(),
                                .confirmText = tr("Ignore").toStdString(),
                                .startingFolder = startingFolder,
                                .allowsSeveral = true},
                               [self = QPointer(this)](const auto& locations) {
                                   if (!self || !locations) return;
                                   ignoreApplications(*locations, *self->preferencesStore_, self->workspace_,
                                                      self->bundle_);
                               });
}

/// By the row: a view's text is not every identifier as it is stored.
void IgnoredAppsModel::remove(int row) {
    if (row < 0 || row >= count()) return;
    preferencesStore_->removeIgnoredApp(std::string(rows_[static_cast<std::size_t>(row)].bundleID));
}

void IgnoredAppsModel::refresh() {
    takeOver(ignoredAppDisplays(preferencesStore_->current(), workspace_));
}

/// A slider in motion publishes, too; it is no reason to look for applications.
void IgnoredAppsModel::preferencesWerePublished() {
    const std::vector<std::string>& ignored = preferencesStore_->current().ignoredApps;
    if (ignored == ignoredApps_) return;
    ignoredApps_ = ignored;
    refresh();
}

/// Both lists are in the same order. Rows that stay are left alone, so that a view keeps its place among them.
void IgnoredAppsModel::takeOver(const std::vector<IgnoredAppDisplay>& displays) {
    const int countBefore = count();
    removeRowsWithout(displays);
    insertRowsOf(displays);
    for (int row = 0; row < count(); ++row) {
        const auto place = static_cast<std::size_t>(row);
        if (rows_[place] == displays[place]) continue;
        rows_[place] = displays[place];
        Q_EMIT dataChanged(index(row), index(row));
    }
    if (count() != countBefore) Q_EMIT countChanged();
}

void IgnoredAppsModel::removeRowsWithout(const std::vector<IgnoredAppDisplay>& displays) {
    for (int row = count() - 1; row >= 0; --row) {
        const auto& identifier = rows_[static_cast<std::size_t>(row)].bundleID;
        if (std::ranges::binary_search(displays, identifier, {}, &IgnoredAppDisplay::bundleID)) continue;
        beginRemoveRows({}, row, row);
        rows_.erase(rows_.begin() + row);
        endRemoveRows();
    }
}

void IgnoredAppsModel::insertRowsOf(const std::vector<IgnoredAppDisplay>& displays) {
    for (std::size_t place = 0; place < displays.size(); ++place) {
        if (place < rows_.size() && rows_[place].bundleID == displays[place].bundleID) continue;
        const int row = static_cast<int>(place);
        beginInsertRows({}, row, row);
        rows_.insert(rows_.begin() + row, displays[place]);
        endInsertRows();
    }
}

int IgnoredAppsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant IgnoredAppsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) return {};
    const IgnoredAppDisplay& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case nameRole: return shownName(toQString(row.name));
        case identifierRole: return shownIdentifier(toQString(row.bundleID));
        case iconRole: return sourceOfIcon(row.icon);
        default: return {};
    }
}

QHash<int, QByteArray> IgnoredAppsModel::roleNames() const {
    return {{identifierRole, "bundleIdentifier"}, {nameRole, "name"}, {iconRole, "icon"}};
}

}  // namespace velmorand

#include "settings/ApplicationFolderModel.h"

#include "base/UnicodeText.h"
#include "platform/Workspace.h"
#include "settings/ApplicationIconSource.h"
#include "settings/NameCollator.h"
#include "settings/QtText.h"
#include "settings/ShownText.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

constexpr const char* entrySuffix = ".desktop";

QString textOf(const fs::path& path) {
    return toQString(validUtf8(path.string()));
}

}  // namespace

ApplicationFolderModel::ApplicationFolderModel(Workspace& workspace, QObject* parent)
    : QAbstractListModel(parent), workspace_(workspace) {}

bool ApplicationFolderModel::enter(const fs::path& folder) {
    std::error_code error;
    const fs::path whole = fs::absolute(folder, error).lexically_normal();
    auto entries = entriesOf(whole);
    if (error || !entries) return false;
    beginResetModel();
    folder_ = whole.has_filename() ? whole : whole.parent_path();
    entries_ = std::move(*entries);
    endResetModel();
    Q_EMIT pathChanged();
    Q_EMIT countChanged();
    return true;
}

std::optional<std::vector<ApplicationFolderModel::Entry>> ApplicationFolderModel::entriesOf(
    const fs::path& folder) const {
    std::error_code error;
    fs::directory_iterator files(folder, error);
    if (error) return std::nullopt;
    std::vector<Entry> entries;
    for (const fs::directory_iterator end; !error && files != end; files.increment(error)) {
        if (auto entry = entryOf(*files)) entries.push_back(std::move(*entry));
    }
    const QCollator collator = nameCollator();
    std::ranges::sort(entries, [&](const Entry& first, const Entry& second) {
        if (first.isFolder != second.isFolder) return first.isFolder;
        const int order = collator.compare(first.name, second.name);
        return order != 0 ? order < 0 : first.location < second.location;
    });
    return entries;
}

/// An entry that is broken is shown, too: the user who looks for it is told so when it is chosen.
std::optional<ApplicationFolderModel::Entry> ApplicationFolderModel::entryOf(const fs::directory_entry& file) const {
    const fs::path& location = file.path();
    const QString fileName = textOf(location.filename());
    std::error_code error;
    if (fileName.startsWith(u'.')) return std::nullopt;
    if (file.is_directory(error)) return Entry{location, fileName, fileName, std::nullopt, true};
    if (location.extension() != entrySuffix) return std::nullopt;
    return Entry{location, toQString(workspace_.displayName(location)), fileName, workspace_.icon(location)};
}

QString ApplicationFolderModel::path() const {
    return textOf(folder_);
}

std::optional<fs::path> ApplicationFolderModel::location(int row) const {
    if (row < 0 || row >= count()) return std::nullopt;
    return entries_[static_cast<std::size_t>(row)].location;
}

bool ApplicationFolderModel::isFolder(int row) const {
    return row >= 0 && row < count() && entries_[static_cast<std::size_t>(row)].isFolder;
}

int ApplicationFolderModel::rowOf(const fs::path& fileName) const {
    const auto found =
        std::ranges::find_if(entries_, [&](const Entry& entry) { return entry.location.filename() == fileName; });
    return found == entries_.end() ? 0 : static_cast<int>(found - entries_.begin());
}

int ApplicationFolderModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ApplicationFolderModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) return {};
    const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case nameRole: return shownName(entry.name);
        case fileNameRole: return shownText(entry.fileName);
        case iconRole: return sourceOfIcon(entry.icon);
        case folderRole: return entry.isFolder;
        default: return {};
    }
}

QHash<int, QByteArray> ApplicationFolderModel::roleNames() const {
    return {{nameRole, "name"}, {fileNameRole, "fileName"}, {iconRole, "icon"}, {folderRole, "isFolder"}};
}

}  // namespace velmorand

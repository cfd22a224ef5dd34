#pragma once

#include "platform/InstalledApplication.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QString>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

class Workspace;

/// What is in a folder for a user who looks for an application that the desktop does not list: its folders, then its
/// desktop entries, both by their names in the order of the user's language. What is hidden is left out.
class ApplicationFolderModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application chooser")
    Q_PROPERTY(QString path READ path NOTIFY pathChanged)
    Q_PROPERTY(bool hasParent READ hasParent NOTIFY pathChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role : int { nameRole = Qt::UserRole + 1, fileNameRole, iconRole, folderRole };

    /// It shows no folder at first. `workspace` must outlive the model.
    ApplicationFolderModel(Workspace& workspace, QObject* parent);

    /// Shows this folder. False when it cannot be read: then everything stays as it is.
    bool enter(const std::filesystem::path& folder);

    /// Absolute, and empty before the first folder.
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    [[nodiscard]] QString path() const;
    [[nodiscard]] bool hasParent() const { return folder_.has_relative_path(); }
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }

    /// What is in this row; absent when it is no row.
    [[nodiscard]] std::optional<std::filesystem::path> location(int row) const;
    [[nodiscard]] bool isFolder(int row) const;
    /// The row of what has this file name, for a view that comes back to it; the first row when there is none.
    [[nodiscard]] int rowOf(const std::filesystem::path& fileName) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// `nameRole` is the application's name where there is one, `fileNameRole` what the file is called, both
    /// as a reader is to see them (`ShownText.h`). `iconRole` is an address for a view; empty without an icon.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void pathChanged();
    void countChanged();

private:
    struct Entry {
        std::filesystem::path location;
        QString name;
        QString fileName;
        std::optional<ApplicationIcon> icon;
        bool isFolder = false;
    };

    [[nodiscard]] std::optional<std::vector<Entry>> entriesOf(const std::filesystem::path& folder) const;
    [[nodiscard]] std::optional<Entry> entryOf(const std::filesystem::directory_entry& file) const;

    Workspace& workspace_;
    std::filesystem::path folder_;
    std::vector<Entry> entries_;
};

}  // namespace velmorand

#pragma once

#include "platform/InstalledApplication.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <filesystem>
#include <vector>

namespace velmorand {

/// The applications that the user can choose, by their names in the order of the user's language, and which of them are
/// chosen. The rows are those that fit the search; what is chosen stays so while it is not shown.
class InstalledApplicationsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application chooser")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int chosenCount READ chosenCount NOTIFY chosenCountChanged)

public:
    enum Role : int { nameRole = Qt::UserRole + 1, identifierRole, iconRole, chosenRole };

    explicit InstalledApplicationsModel(QObject* parent) : QAbstractListModel(parent) {}

    /// Takes these applications, none of them chosen, and forgets the search.
    void setApplications(const std::vector<InstalledApplication>& applications, bool allowsSeveral);

    /// Chooses the application, which is added if none with its identifier is there, and shows it. Its row.
    int choose(const InstalledApplication& application);

    /// Everything that is chosen, in the order of the list.
    [[nodiscard]] std::vector<std::filesystem::path> chosenLocations() const;
    [[nodiscard]] int chosenCount() const;

    [[nodiscard]] QString searchText() const { return searchText_; }
    /// Every word of it must be in the name or the identifier of an application that is shown; accents and letter case do
    /// not count.
    void setSearchText(const QString& text);

    /// How many are shown.
    [[nodiscard]] int count() const { return static_cast<int>(shown_.size()); }

    /// Chooses the application in this row, or no longer. Where one alone can be chosen, it takes the place of the
    /// other. What is no row changes nothing.
    Q_INVOKABLE void setChosen(int row, bool chosen);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// `nameRole` and `identifierRole` are as a reader is to see them (`ShownText.h`). `iconRole` is an address for a view;
    /// empty without an icon.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void searchTextChanged();
    void countChanged();
    void chosenCountChanged();

private:
    struct Entry {
        InstalledApplication application;
        QString name;
        QString identifier;
        QString key;  // what the search looks at
        bool isChosen = false;
    };

    [[nodiscard]] static Entry entryOf(const InstalledApplication& application);
    void sort();
    void show();
    void mark(Entry& entry, bool chosen);

    std::vector<Entry> entries_;
    std::vector<std::size_t> shown_;  // places in `entries_`
    QString searchText_;
    bool allowsSeveral_ = true;
};

}  // namespace velmorand

#pragma once

#include "base/Subscription.h"
#include "preferences/IgnoredApps.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace velmorand {

class ApplicationChooser;
class Bundle;
class PreferencesStore;
class Workspace;

/// The rows of the Ignored Apps pane, and what its controls do. The rows follow the preferences.
class IgnoredAppsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role : int { identifierRole = Qt::UserRole + 1, nameRole, iconRole };

    /// What is given by reference must outlive the model.
    IgnoredAppsModel(std::shared_ptr<PreferencesStore> preferencesStore, Workspace& workspace, const Bundle& bundle,
                     ApplicationChooser& applicationChooser, QObject* parent = nullptr);
    ~IgnoredAppsModel() override;

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }

    /// Lets the user choose applications, which are ignored from then on.
    Q_INVOKABLE void addApplications();
    /// Takes the identifier of this row from the list.
    Q_INVOKABLE void remove(int row);
    /// Looks again for the applications, which may have come or gone.
    Q_INVOKABLE void refresh();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// `nameRole` and `identifierRole` are as a reader is to see them (`ShownText.h`). `iconRole` is an address for a view;
    /// empty without an icon.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void preferencesWerePublished();
    void takeOver(const std::vector<IgnoredAppDisplay>& displays);
    void removeRowsWithout(const std::vector<IgnoredAppDisplay>& displays);
    void insertRowsOf(const std::vector<IgnoredAppDisplay>& displays);

    std::shared_ptr<PreferencesStore> preferencesStore_;
    Workspace& workspace_;
    const Bundle& bundle_;
    ApplicationChooser& applicationChooser_;
    std::vector<std::string> ignoredApps_;  // of which the rows were made
    std::vector<IgnoredAppDisplay> rows_;
    Subscription preferences_;
};

}  // namespace velmorand

#pragma once

#include "settings/ApplicationChooserModel.h"
#include "settings/ApplicationInformation.h"
#include "settings/GeneralSettingsModel.h"
#include "settings/IgnoredAppsModel.h"
#include "settings/SettingsWindow.h"
#include "settings/ShortcutSettingsModel.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <QVariantList>
#include <memory>

namespace velmorand {

/// What the settings window as a whole shows: its panes, and what each of them works on.
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QVariantList panes READ panes CONSTANT)
    Q_PROPERTY(QString selectedPane READ selectedPane WRITE setSelectedPane NOTIFY selectedPaneChanged)
    Q_PROPERTY(QString selectedView READ selectedView NOTIFY selectedPaneChanged)
    Q_PROPERTY(velmorand::ApplicationInformation* information READ information CONSTANT)
    Q_PROPERTY(velmorand::GeneralSettingsModel* general READ general CONSTANT)
    Q_PROPERTY(velmorand::ShortcutSettingsModel* shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(velmorand::IgnoredAppsModel* ignoredApps READ ignoredApps CONSTANT)
    Q_PROPERTY(velmorand::ApplicationChooserModel* applicationChooser READ applicationChooser CONSTANT)

public:
    SettingsModel(const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure,
                  QObject* parent = nullptr);
    ~SettingsModel() override;

    /// One map for each pane, in the order of the sidebar: `rawValue`, `title` and `symbol`.
    [[nodiscard]] QVariantList panes() const;
    /// A raw value; the first pane at the start.
    [[nodiscard]] QString selectedPane() const { return selectedPane_; }
    /// What names no pane changes nothing.
    void setSelectedPane(const QString& rawValue);

    /// The file of its view.
    [[nodiscard]] QString selectedView() const;

    [[nodiscard]] ApplicationInformation* information() { return &information_; }
    [[nodiscard]] GeneralSettingsModel* general() { return &general_; }
    [[nodiscard]] ShortcutSettingsModel* shortcuts() { return &shortcuts_; }
    [[nodiscard]] IgnoredAppsModel* ignoredApps() { return &ignoredApps_; }
    /// The panel in which the user chooses applications to ignore.
    [[nodiscard]] ApplicationChooserModel* applicationChooser() { return &applicationChooser_; }

    /// The user comes back to the program: looks again for the applications that are shown, which may have come or gone.
    void becameActive();

    /// Begins a mail to the contact address. Where no program writes mail the user is told, with the address.
    Q_INVOKABLE void writeToSupport();

Q_SIGNALS:
    void selectedPaneChanged();

private:
    Workspace& workspace_;
    std::shared_ptr<SettingsFailureHandler> onFailure_;
    /// Until the workspace has answered.
    std::shared_ptr<bool> isWritingToSupport_ = std::make_shared<bool>(false);
    ApplicationInformation information_;
    GeneralSettingsModel general_;
    ShortcutSettingsModel shortcuts_;
    ApplicationChooserModel applicationChooser_;
    IgnoredAppsModel ignoredApps_;
    QString selectedPane_;
};

}  // namespace velmorand

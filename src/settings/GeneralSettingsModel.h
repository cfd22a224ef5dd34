#pragma once

#include "app/LaunchAtLogin.h"
#include "base/Subscription.h"
#include "settings/PreferenceSlider.h"
#include "settings/SettingsWindow.h"
#include "windows/NotificationToken.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <optional>

namespace velmorand {

/// What the General pane shows, and what its controls do. Launch at login is as the platform has it: its status is read
/// when the pane appears, after each attempt to change it, and when the user comes back to the program.
class GeneralSettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(bool isTrusted READ isTrusted NOTIFY trustChanged)
    Q_PROPERTY(QString accessibilityStatus READ accessibilityStatus NOTIFY trustChanged)
    Q_PROPERTY(QString accessibilitySymbol READ accessibilitySymbol NOTIFY trustChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(QString launchAtLoginNote READ launchAtLoginNote NOTIFY launchAtLoginChanged)
    Q_PROPERTY(QString launchAtLoginError READ launchAtLoginError NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool offersLoginItems READ offersLoginItems NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool clampToVisibleArea READ clampToVisibleArea WRITE setClampToVisibleArea NOTIFY preferencesChanged)
    Q_PROPERTY(bool enableAnimations READ enableAnimations WRITE setEnableAnimations NOTIFY preferencesChanged)
    Q_PROPERTY(velmorand::PreferenceSlider* animationDuration READ animationDuration CONSTANT)
    Q_PROPERTY(velmorand::PreferenceSlider* outerPadding READ outerPadding CONSTANT)
    Q_PROPERTY(velmorand::PreferenceSlider* innerGap READ innerGap CONSTANT)

public:
    GeneralSettingsModel(SettingsServices services, const SettingsPlatform& platform, QObject* parent = nullptr);
    ~GeneralSettingsModel() override;

    [[nodiscard]] bool isTrusted() const;
    [[nodiscard]] QString accessibilityStatus() const;
    [[nodiscard]] QString accessibilitySymbol() const;

    /// Whether the switch is on: a pending approval counts as on.
    [[nodiscard]] bool launchAtLogin() const { return isShownAsOn(launchAtLoginStatus_); }
    /// What the status means when it needs words; empty when it needs none or the error says the same.
    [[nodiscard]] QString launchAtLoginNote() const;
    /// Why the last attempt failed; empty when it did not.
    [[nodiscard]] QString launchAtLoginError() const { return launchAtLoginError_.value_or(QString()); }
    /// Whether the user is to finish it in the system's settings.
    [[nodiscard]] bool offersLoginItems() const;
    /// Tries to switch it. The status is read afresh in any case, and both are told.
    void setLaunchAtLogin(bool enabled);

    [[nodiscard]] bool clampToVisibleArea() const;
    void setClampToVisibleArea(bool clamped);
    [[nodiscard]] bool enableAnimations() const;
    void setEnableAnimations(bool enabled);
    [[nodiscard]] PreferenceSlider* animationDuration() { return &animationDuration_; }
    [[nodiscard]] PreferenceSlider* outerPadding() { return &outerPadding_; }
    [[nodiscard]] PreferenceSlider* innerGap() { return &innerGap_; }

    /// Asks the system again whether the program may move windows.
    Q_INVOKABLE void checkStatus();
    /// Asks for access, with what the system shows for it, and opens the settings in which it is given.
    Q_INVOKABLE void openAccessibilitySettings();
    /// Opens the system's list of what is started at log-in.
    Q_INVOKABLE void openLoginItems() { launchAtLogin_.openLoginItemsSettings(); }
    /// The pane is shown from now on, and nothing has failed in it yet.
    Q_INVOKABLE void paneAppeared();
    /// The pane is no longer shown.
    Q_INVOKABLE void paneDisappeared() { isShown_ = false; }
    /// The user comes back to the program: reads what may have changed elsewhere, while the pane is shown.
    void becameActive();

Q_SIGNALS:
    void trustChanged();
    void launchAtLoginChanged();
    void preferencesChanged();

private:
    void readLaunchAtLoginStatus();
    void preferencesWerePublished();

    SettingsServices services_;
    LaunchAtLogin launchAtLogin_;
    LaunchAtLoginStatus launchAtLoginStatus_;
    std::optional<QString> launchAtLoginError_;
    PreferenceSlider animationDuration_;
    PreferenceSlider outerPadding_;
    PreferenceSlider innerGap_;
    bool isShown_ = false;
    Subscription trust_;
    Subscription preferences_;
    NotificationToken activation_;
};

}  // namespace velmorand

#include "settings/GeneralSettingsModel.h"

#include "platform/NotificationCenter.h"
#include "preferences/PreferencesStore.h"
#include "settings/QtText.h"
#include "windows/PermissionsManager.h"

#include <utility>

namespace velmorand {
GeneralSettingsModel::GeneralSettingsModel(SettingsServices services, const SettingsPlatform& platform, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      launchAtLogin_(platform.loginItemService),
      launchAtLoginStatus_(launchAtLogin_.currentStatus()),
      animationDuration_(
          animationDurationRule, [this] { return services_.preferencesStore->current().animationDuration; },
          [this](double duration) { services_.preferencesStore->setAnimationDuration(duration); }),
      outerPadding_(
          outerPaddingRule, [this] { return services_.preferencesStore->current().outerPadding; },
          [this](double padding) { services_.preferencesStore->setOuterPadding(padding); }),
      innerGap_(
          innerGapRule, [this] { return services_.preferencesStore->current().innerGap; },
          [this](double gap) { services_.preferencesStore->setInnerGap(gap); }),
      trust_(services_.permissionsManager->isTrusted().subscribe([this](bool) { Q_EMIT trustChanged(); })),
      preferences_(services_.preferencesStore->state().subscribe(
          [this](const PreferencesState&) { preferencesWerePublished(); })),
      activation_(platform.defaultNotificationCenter,
                  platform.defaultNotificationCenter.addObserver(NotificationName::applicationBecameActive,
                                                                 [this](const Notification&) { becameActive(); })) {}

GeneralSettingsModel::~GeneralSettingsModel() = default;

bool GeneralSettingsModel::isTrusted() const {
    return services_.permissionsManager->isTrusted().value();
}

QString GeneralSettingsModel::accessibilityStatus() const {
    return isTrusted() ? tr("Velmorand is ready to arrange your windows.")
                       : tr("Accessibility permission is required to arrange windows.");
}

QString GeneralSettingsModel::accessibilitySymbol() const {
    return isTrusted() ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("exclamationmark.triangle.fill");
}

QString GeneralSettingsModel::launchAtLoginNote() const {
    switch (launchAtLoginStatus_) {
        case LaunchAtLoginStatus::enabled:
        case LaunchAtLoginStatus::disabled: return {};
        case LaunchAtLoginStatus::requiresApproval:
            return tr("Pending approval — enable Velmorand under Login Items to finish.");
        case LaunchAtLoginStatus::unavailable: {
            const QString note = toQString(launchAtLoginUnavailableMessage);
            return note == launchAtLoginError_ ? QString() : note;
        }
    }
    std::unreachable();
}

bool GeneralSettingsModel::offersLoginItems() const {
    return launchAtLoginStatus_ == LaunchAtLoginStatus::requiresApproval;
}

void GeneralSettingsModel::setLaunchAtLogin(bool enabled) {
    const auto outcome = launchAtLogin_.setEnabled(enabled);
    launchAtLoginError_.reset();
    if (!outcome) launchAtLoginError_ = toQString(outcome.error().description);
    readLaunchAtLoginStatus();
}

bool GeneralSettingsModel::clampToVisibleArea() const {
    return services_.preferencesStore->current().clampToVisibleArea;
}

void GeneralSettingsModel::setClampToVisibleArea(bool clamped) {
    services_.preferencesStore->setClampToVisibleArea(clamped);
}

bool GeneralSettingsModel::enableAnimations() const {
    return services_.preferencesStore->current().enableAnimations;
}

void GeneralSettingsModel::setEnableAnimations(bool enabled) {
    services_.preferencesStore->setEnableAnimations(enabled);
}

void GeneralSettingsModel::checkStatus() {
    services_.permissionsManager->refresh();
}

void GeneralSettingsModel::openAccessibilitySettings() {
    services_.permissionsManager->requestAccess();
}

void GeneralSettingsModel::paneAppeared() {
    isShown_ = true;
    launchAtLoginError_.reset();
    readLaunchAtLoginStatus();
}

void GeneralSettingsModel::becameActive() {
    if (!isShown_) return;
    readLaunchAtLoginStatus();
    services_.permissionsManager->refresh();
}

void GeneralSettingsModel::readLaunchAtLoginStatus() {
    launchAtLoginStatus_ = launchAtLogin_.currentStatus();
    Q_EMIT launchAtLoginChanged();
}

void GeneralSettingsModel::preferencesWerePublished() {
    Q_EMIT preferencesChanged();
    Q_EMIT animationDuration_.valueChanged();
    Q_EMIT outerPadding_.valueChanged();
    Q_EMIT innerGap_.valueChanged();
}

}  // namespace velmorand

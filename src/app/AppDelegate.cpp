#include "app/AppDelegate.h"

#include "app/MenuBarController.h"
#include "platform/Platform.h"
#include "preferences/PreferencesStore.h"
#include "settings/SettingsWindowController.h"
#include "shortcuts/CarbonHotKeyRegistrar.h"
#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "windows/AXWindowClient.h"
#include "windows/PermissionsManager.h"
#include "windows/ScreenGeometryProvider.h"
#include "windows/WindowManager.h"

#include <utility>

namespace velmorand {

AppDelegate::AppDelegate(Platform& platform, SettingsWindowMaker makeSettingsWindow)
    : preferencesStore_(
          std::make_shared<PreferencesStore>(platform.userDefaults(), platform.runLoop(), platform.log())),
      permissionsManager_(std::make_shared<PermissionsManager>(platform.accessibility(), platform.workspace())),
      screenGeometryProvider_(std::make_shared<ScreenGeometryProvider>(platform.displays())) {
    const auto axClient = std::make_shared<AXWindowClient>(platform.accessibility(), platform.log());
    windowManager_ = std::make_shared<WindowManager>(
        permissionsManager_, preferencesStore_, screenGeometryProvider_, axClient,
        WindowManagerPlatform{platform.accessibility(), platform.workspace(), platform.workspaceNotificationCenter(),
                              platform.defaultNotificationCenter(), platform.bundle(), platform.runLoop(),
                              platform.log()});
    const auto registrar =
        std::make_shared<CarbonHotKeyRegistrar>(platform.hotKeyService(), platform.runLoop(), platform.log());
    shortcutManager_ =
        std::make_shared<ShortcutManager>(preferencesStore_, windowManager_, registrar,
                                          ShortcutManagerPlatform{platform.userNotificationCenter(), platform.bundle(),
                                                                  platform.runLoop(), platform.log()});
    shortcutRecorderPanel_ = std::make_unique<ShortcutRecorderPanel>(platform.recorderPanelHost(), platform.runLoop());
    settingsWindowController_ = std::make_shared<SettingsWindowController>(
        preferencesStore_, permissionsManager_, shortcutManager_,
        SettingsPlatform{platform.loginItemService(), platform.application(), platform.defaultNotificationCenter(),
                         platform.userDefaults(), platform.workspace(), platform.bundle(), platform.runLoop(),
                         platform.log(), *shortcutRecorderPanel_},
        std::move(makeSettingsWindow));
    makeMenuBar(platform);
    wire(platform);
}

void AppDelegate::makeMenuBar(Platform& platform) {
    menuBarController_ = std::make_shared<MenuBarController>(
        MenuBarServices{.permissionsManager = permissionsManager_,
                        .preferencesStore = preferencesStore_,
                        .screenGeometryProvider = screenGeometryProvider_,
                        .windowManager = windowManager_,
                        .shortcutManager = shortcutManager_,
                        .settingsWindowController = settingsWindowController_},
        MenuBarPlatform{platform.statusBar(), platform.workspace(), platform.application(), platform.bundle(),
                        platform.runLoop(), platform.log()});
}

/// The callbacks that point back hold what they call weakly.
void AppDelegate::wire(Platform& platform) {
    const auto showIssue = [weakMenu = std::weak_ptr(menuBarController_)](std::string_view message) {
        if (const auto menu = weakMenu.lock()) menu->showIssue(message);
    };
    // Where no status bar is, the log is all that tells of a failure.
    windowManager_->setOnFailure([showIssue, logger = Logger(platform.log(), "windows")](std::string_view message) {
        logger.error("{}", message);
        showIssue(message);
    });
    settingsWindowController_->setOnFailure(showIssue);
    shortcutRecorderPanel_->setOnRecordingStateChange(
        [weakManager = std::weak_ptr(shortcutManager_)](bool isRecording) {
            if (const auto manager = weakManager.lock()) manager->setRecordingSuspended(isRecording);
        });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    shortcutManager_->start();
    menuBarController_->install();
}

/// A recording that runs ends with the delegate. Where the toolkit ends the process, what draws the windows is gone
/// already, and nothing may be told to it any more.
void AppDelegate::applicationWillTerminate() {
    shortcutManager_->stop();
    preferencesStore_->savePending();
    settingsWindowController_->savePending();
}

void AppDelegate::applicationShouldHandleReopen(const std::optional<std::string>& /*activationToken*/) {
    settingsWindowController_->show();
}

}  // namespace velmorand

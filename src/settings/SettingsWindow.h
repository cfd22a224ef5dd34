#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velmorand {

class Application;
class Bundle;
class Log;
class LoginItemService;
class NotificationCenter;
class PermissionsManager;
class PreferencesStore;
class RunLoop;
class ShortcutManager;
class ShortcutRecorderPanel;
class UserDefaults;
class Workspace;

/// The services whose state the settings window shows and changes.
struct SettingsServices {
    std::shared_ptr<PreferencesStore> preferencesStore;
    std::shared_ptr<PermissionsManager> permissionsManager;
    std::shared_ptr<ShortcutManager> shortcutManager;
};

/// What the settings window needs of the platform. All must outlive the window.
struct SettingsPlatform {
    LoginItemService& loginItemService;
    Application& application;
    NotificationCenter& defaultNotificationCenter;
    UserDefaults& userDefaults;
    Workspace& workspace;
    const Bundle& bundle;
    RunLoop& runLoop;
    Log& log;
    /// The one of the process.
    ShortcutRecorderPanel& shortcutRecorderPanel;
};

/// Told in one sentence for the user what did not work.
using SettingsFailureHandler = std::function<void(std::string_view message)>;

/// The program's window: the way from the executable into the module that has it. Main thread only.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;
    SettingsWindow(const SettingsWindow&) = delete;
    SettingsWindow& operator=(const SettingsWindow&) = delete;

    /// Shows the window before all others and gives it the keyboard, as the user left it.
    virtual void bringToFront() = 0;

    /// Stores where the window is, if that waits to be stored.
    virtual void savePending() = 0;

protected:
    SettingsWindow() = default;
};

/// Makes the window, not yet shown; fails with the reason, one sentence for the log.
using SettingsWindowMaker = std::function<std::expected<std::unique_ptr<SettingsWindow>, std::string>(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure)>;

}  // namespace velmorand

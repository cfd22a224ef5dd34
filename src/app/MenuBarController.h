#pragma once

#include "app/MenuContent.h"
#include "platform/Logger.h"
#include "platform/RunLoop.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

class Application;
class Bundle;
class PermissionsManager;
class PreferencesStore;
class ScreenGeometryProvider;
class SettingsWindowController;
class ShortcutManager;
class WindowManager;
class Workspace;
struct RunningApplication;

/// The services that the menu shows and works on.
struct MenuBarServices {
    std::shared_ptr<PermissionsManager> permissionsManager;
    std::shared_ptr<PreferencesStore> preferencesStore;
    std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider;
    std::shared_ptr<WindowManager> windowManager;
    std::shared_ptr<ShortcutManager> shortcutManager;
    std::shared_ptr<SettingsWindowController> settingsWindowController;
};

/// What the menu bar controller uses of the platform, which outlives it.
struct MenuBarPlatform {
    StatusBar& statusBar;
    Workspace& workspace;
    Application& application;
    const Bundle& bundle;
    RunLoop& runLoop;
    Log& log;
};

/// The program's only surface that is always visible: one status item and its menu, which is made anew each time it
/// opens, from what can be done at that moment. Main thread only. It must be owned by a `std::shared_ptr`.
class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
public:
    MenuBarController(MenuBarServices services, const MenuBarPlatform& platform);
    ~MenuBarController();

    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;

    /// Puts the status item with its menu into the status bar.
    void install();

    /// Shows a failure: a warning for a moment in place of the icon, and a line at the top of the menu for a while.
    void showIssue(std::string_view message);

    /// What can be done, as it was when the menu was made last.
    [[nodiscard]] const MenuCapabilitySnapshot& menuCapabilities() const { return menuCapabilities_; }
    /// The items of the menu as it was made last.
    [[nodiscard]] const std::vector<MenuItem>& menu() const { return menu_; }

private:
    struct Issue {
        std::string message;
        Date date;
    };

    void applyNormalIcon();
    [[nodiscard]] bool hasButton() const;
    [[nodiscard]] std::optional<StatusImage> normalImage() const;

    void menuNeedsUpdate();
    void rebuildMenu();
    [[nodiscard]] MenuCapabilitySnapshot snapshot(const std::optional<RunningApplication>& frontmost) const;
    [[nodiscard]] bool isEligible(const std::optional<RunningApplication>& frontmost) const;
    [[nodiscard]] bool isIgnored(const std::string& bundleIdentifier) const;
    [[nodiscard]] std::vector<std::string> problems() const;
    [[nodiscard]] std::optional<MenuApplication> ignorableApplication(
        const std::optional<RunningApplication>& frontmost) const;

    void choose(const MenuItem& sender);
    void performAction(const MenuItem& sender);
    void refreshPermissions();
    void quit();

    MenuBarServices services_;
    std::vector<MenuItem> menu_;
    std::unique_ptr<StatusItem> statusItem_;
    std::optional<Issue> lastIssue_;
    RunLoop::Timer iconResetTask_;
    MenuCapabilitySnapshot menuCapabilities_;
    MenuBarPlatform platform_;
    Logger logger_;
};

}  // namespace velmorand

#pragma once

#include "platform/Application.h"
#include "platform/Logger.h"
#include "settings/SettingsWindow.h"

#include <memory>
#include <optional>
#include <string>

namespace velmorand {

class MenuBarController;
class PermissionsManager;
class Platform;
class PreferencesStore;
class ScreenGeometryProvider;
class SettingsWindowController;
class ShortcutManager;
class ShortcutRecorderPanel;
class WindowManager;

/// Builds every service once, in a fixed order, and holds it for the life of the process. Nothing else creates
/// services. Main thread only.
class AppDelegate final : public ApplicationDelegate {
public:
    /// `platform` must outlive the delegate. The settings window is made when it is first wanted.
    AppDelegate(Platform& platform, SettingsWindowMaker makeSettingsWindow);
    ~AppDelegate() override;

    /// Starts the hot keys, then shows the status item. Asks for nothing.
    void applicationDidFinishLaunching() override;

    /// Gives the hot keys back and stores what waits to be stored.
    void applicationWillTerminate() override;

    /// Shows the settings.
    void applicationShouldHandleReopen(const std::optional<std::string>& activationToken) override;

    [[nodiscard]] const std::shared_ptr<PreferencesStore>& preferencesStore() const { return preferencesStore_; }
    [[nodiscard]] const std::shared_ptr<WindowManager>& windowManager() const { return windowManager_; }
    [[nodiscard]] ShortcutManager& shortcutManager() { return *shortcutManager_; }
    [[nodiscard]] MenuBarController& menuBarController() { return *menuBarController_; }

    /// The one recorder of the process; the hot keys rest while it records.
    [[nodiscard]] ShortcutRecorderPanel& shortcutRecorderPanel() { return *shortcutRecorderPanel_; }

private:
    void makeMenuBar(Platform& platform);
    void wire(Platform& platform);

    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<PermissionsManager> permissionsManager_;
    std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider_;
    std::shared_ptr<WindowManager> windowManager_;
    std::shared_ptr<ShortcutManager> shortcutManager_;
    std::unique_ptr<ShortcutRecorderPanel> shortcutRecorderPanel_;
    std::shared_ptr<SettingsWindowController> settingsWindowController_;
    std::shared_ptr<MenuBarController> menuBarController_;
};

}  // namespace velmorand

#pragma once

#include "platform/Logger.h"
#include "settings/SettingsWindow.h"

#include <memory>
#include <string_view>
#include <utility>

namespace velmorand {

/// Shows the settings window. It is made when it is first wanted, kept for the rest of the process, and brought to the
/// front from then on. Main thread only.
class SettingsWindowController {
public:
    /// `makeWindow` is called at most once successfully. What `platform` refers to must outlive the controller.
    SettingsWindowController(std::shared_ptr<PreferencesStore> preferencesStore,
                             std::shared_ptr<PermissionsManager> permissionsManager,
                             std::shared_ptr<ShortcutManager> shortcutManager, const SettingsPlatform& platform,
                             SettingsWindowMaker makeWindow);
    ~SettingsWindowController();

    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    /// Brings the window to the front, and makes it the first time. What prevents that is logged and told; the next
    /// call tries again.
    void show();

    /// Stores what the window has not stored yet.
    void savePending();

    /// Told in one sentence why the window cannot be shown, and what could not be done in it.
    void setOnFailure(SettingsFailureHandler onFailure) { onFailure_ = std::move(onFailure); }

private:
    [[nodiscard]] bool makeWindow();

    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<PermissionsManager> permissionsManager_;
    std::shared_ptr<ShortcutManager> shortcutManager_;
    std::unique_ptr<SettingsWindow> window_;
    SettingsFailureHandler onFailure_;
    SettingsPlatform platform_;
    SettingsWindowMaker make_;
    Logger logger_;
};

}  // namespace velmorand

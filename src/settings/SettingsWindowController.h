#pragma once

#include "platform/Logger.h"

#include <functional>
#include <memory>
#include <string_view>

namespace velmorand {

class PermissionsManager;
class PreferencesStore;
class ShortcutManager;

/// Shows the settings window, whose module is not in the process before. Main thread only.
class SettingsWindowController {
public:
    /// `log` must outlive the controller.
    SettingsWindowController(std::shared_ptr<PreferencesStore> preferencesStore,
                             std::shared_ptr<PermissionsManager> permissionsManager,
                             std::shared_ptr<ShortcutManager> shortcutManager, Log& log);
    ~SettingsWindowController();

    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    /// Brings the window to the front, and makes it the first time. What prevents that is logged and told.
    void show();

    /// Told in one sentence why the window cannot be shown.
    void setOnFailure(std::function<void(std::string_view message)> onFailure) { onFailure_ = std::move(onFailure); }

private:
    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<PermissionsManager> permissionsManager_;
    std::shared_ptr<ShortcutManager> shortcutManager_;
    std::function<void(std::string_view)> onFailure_;
    Logger logger_;
};

}  // namespace velmorand

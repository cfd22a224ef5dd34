#pragma once

#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"
#include "support/NotedSettingsWindows.h"

#include <string>
#include <vector>

namespace velmorand {

/// The services behind the settings window on a simulated desktop.
class SettingsFixture : public DesktopFixture {
protected:
    [[nodiscard]] SettingsServices services() { return {preferencesStore, permissionsManager, shortcutManager}; }
    [[nodiscard]] SettingsPlatform settingsPlatform() { return settingsPlatformOf(platform, recorder); }

    /// The user comes back to the program from another one.
    void becomeActive() {
        platform.defaultNotificationCenter().post({NotificationName::applicationBecameActive, std::nullopt});
    }

    ShortcutRecorderPanel recorder{platform.recorderPanelHost(), platform.runLoop()};
    /// What the user was told, in order.
    std::vector<std::string> failures;
};

}  // namespace velmorand

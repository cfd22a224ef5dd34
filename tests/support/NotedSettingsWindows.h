#pragma once

#include "settings/SettingsWindow.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {

/// Makes settings windows that nobody sees and notes what is asked of them. It must outlive them.
class NotedSettingsWindows {
public:
    /// What was asked, in order: "made", "front", "saved", "gone".
    std::vector<std::string> notes;
    /// When not empty, no window can be made, for this reason.
    std::string failure;
    /// What the last window was made with.
    SettingsServices services;
    SettingsFailureHandler onFailure;

    [[nodiscard]] SettingsWindowMaker maker() {
        return [this](const SettingsServices& given, const SettingsPlatform&,
                      SettingsFailureHandler handler) -> std::expected<std::unique_ptr<SettingsWindow>, std::string> {
            if (!failure.empty()) return std::unexpected(failure);
            services = given;
            onFailure = std::move(handler);
            return std::make_unique<Window>(notes);
        };
    }

private:
    class Window final : public SettingsWindow {
    public:
        explicit Window(std::vector<std::string>& notes) : notes_(notes) { notes_.emplace_back("made"); }
        ~Window() override { notes_.emplace_back("gone"); }
        void bringToFront() override { notes_.emplace_back("front"); }
        void savePending() override { notes_.emplace_back("saved"); }

    private:
        std::vector<std::string>& notes_;
    };
};

/// What a settings window needs of this platform.
template <typename Platform>
[[nodiscard]] SettingsPlatform settingsPlatformOf(Platform& platform, ShortcutRecorderPanel& shortcutRecorderPanel) {
    return {platform.loginItemService(), platform.application(), platform.defaultNotificationCenter(),
            platform.userDefaults(),     platform.workspace(),   platform.bundle(),
            platform.runLoop(),          platform.log(),         shortcutRecorderPanel};
}

}  // namespace velmorand

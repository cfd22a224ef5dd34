#pragma once

#include "desktop/harness/Pager.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/survey/SurveyWindows.h"

namespace velmorand::desktop {

/// A desktop of two displays of different size without a panel, and on it the running program.
class SurveyDesktop {
public:
    /// Returns when \p program has registered all its shortcuts.
    [[nodiscard]] static std::expected<std::unique_ptr<SurveyDesktop>, HarnessError> open(
        const std::filesystem::path& program, const WindowManagerOptions& windowManager);

    /// The displays, from left to right, in root coordinates.
    [[nodiscard]] static std::vector<PixelRect> workAreas();
    [[nodiscard]] const WindowManagerOptions& windowManager() const { return windowManager_; }

    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] Pager& pager() { return pager_; }
    [[nodiscard]] TestKeyboard& keyboard() { return keyboard_; }
    [[nodiscard]] ChildProcess& program() { return *program_; }

    /// Opens a window in the place of the one that was opened last, and returns when it is on screen and stays where it
    /// is.
    [[nodiscard]] std::expected<xcb_window_t, HarnessError> show(SurveyWindow window);

    /// As the window manager tells it: "3.6.1".
    [[nodiscard]] std::string windowManagerVersion();
    /// What everything that runs there wrote last.
    [[nodiscard]] std::string logTails() const;

private:
    SurveyDesktop(std::unique_ptr<TestDesktop> desktop, TestKeyboard keyboard, WindowManagerOptions windowManager)
        : windowManager_(windowManager),
          desktop_(std::move(desktop)),
          pager_(desktop_->observer()),
          keyboard_(keyboard) {}

    WindowManagerOptions windowManager_;
    std::unique_ptr<TestDesktop> desktop_;
    Pager pager_;
    TestKeyboard keyboard_;
    std::optional<ChildProcess> client_;
    std::optional<ChildProcess> program_;
};

}  // namespace velmorand::desktop

#pragma once

#include "desktop/survey/SurveyDesktop.h"
#include "desktop/survey/SurveyJudgement.h"

#include <functional>

namespace velmorand::desktop {

/// In which state a window is when a shortcut is pressed.
enum class SurveyStart { normal, maximized };

/// Presses every shortcut on one window.
class SurveyRun {
public:
    /// Gets every press with its outcome.
    using Report = std::function<void(const SurveyPress&, const SurveyOutcome&)>;

    /// \p desktop, which shows \p window, must outlive the run. Tries whether the window can be placed by hand: a tiling
    /// window manager leaves some windows to float.
    SurveyRun(SurveyDesktop& desktop, xcb_window_t window);

    /// False when the window cannot be brought into that state at all; then nothing is pressed. Fails when the desktop
    /// does not do its part otherwise.
    [[nodiscard]] std::expected<bool, HarnessError> play(SurveyStart start, const Report& report);

private:
    [[nodiscard]] std::expected<void, HarnessError> prepare(SurveyStart start, const PixelRect& frame);
    [[nodiscard]] bool staysWhereItIs();
    void unmaximize();
    [[nodiscard]] std::expected<void, HarnessError> place(const PixelRect& frame);
    [[nodiscard]] bool maximize();
    [[nodiscard]] std::expected<void, HarnessError> activate();
    /// Where the window is to be put by hand: \p frame as far as it lets itself be sized.
    [[nodiscard]] PixelRect possibleFrame(PixelRect frame);
    [[nodiscard]] SurveyPress press(const DemoAction& action, const PixelRect& wanted);
    [[nodiscard]] PixelRect frame();

    SurveyDesktop& desktop_;
    xcb_window_t window_;
    /// Of the window, which does not change them.
    SizeLimits limits_;
    std::optional<SizeSteps> steps_;
    bool isTiled_ = false;
    /// It was maximised and does not get out of it.
    bool isKeptMaximized_ = false;
};

}  // namespace velmorand::desktop

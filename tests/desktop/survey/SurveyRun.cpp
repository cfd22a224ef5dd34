#include "desktop/survey/SurveyRun.h"

#include "desktop/demo/DemoModel.h"

#include <fmt/format.h>

#include <algorithm>

namespace velmorand::desktop {

namespace {

/// No action puts a window there, from either of them.
constexpr PixelRect firstPlace{1500, 140, 960, 720};
constexpr PixelRect secondPlace{1420, 90, 900, 700};
/// Longer than the program may wait for a window manager.
constexpr std::chrono::seconds pressTime{4};
/// For what a window manager does at once, or never.
constexpr std::chrono::seconds stateTime{1};
constexpr std::chrono::milliseconds placeTime{300};

bool isMaximized(const WindowStates& states) {
    return states.maximizedHorizontally || states.maximizedVertically;
}

}  // namespace

SurveyRun::SurveyRun(SurveyDesktop& desktop, xcb_window_t window)
    : desktop_(desktop),
      window_(window),
      limits_(desktop.observer().sizeLimits(window)),
      steps_(desktop.observer().sizeSteps(window)) {
    desktop_.observer().connection().watch(window);
    isTiled_ = desktop_.windowManager().isTiling && staysWhereItIs();
}

std::expected<bool, HarnessError> SurveyRun::play(SurveyStart start, const Report& report) {
    if (start == SurveyStart::maximized && !maximize()) return false;
    for (const auto& action : demoActions()) {
        DemoModel model(SurveyDesktop::workAreas());
        if (action.kind == DemoKind::restore) {
            // There must be something to restore: where the window was before another action.
            const auto& earlier = demoAction("left");
            if (auto prepared = prepare(SurveyStart::normal, secondPlace); !prepared)
                return std::unexpected(prepared.error());
            const auto wanted = model.wanted(0, earlier, frame()).value_or(PixelRect{});
            const auto done = press(earlier, wanted);
            model.remember(0, earlier, done.before, done.after);
        }
        if (auto prepared = prepare(start, firstPlace); !prepared) return std::unexpected(prepared.error());
        const auto pressed = press(action, model.wanted(0, action, frame()).value_or(PixelRect{}));
        report(pressed, judge(pressed));
    }
    return true;
}

std::expected<void, HarnessError> SurveyRun::prepare(SurveyStart start, const PixelRect& frame) {
    if (auto active = activate(); !active) return active;
    unmaximize();
    if (!isTiled_ && !isKeptMaximized_) {
        if (auto placed = place(frame); !placed) return placed;
    }
    if (start == SurveyStart::normal || isKeptMaximized_ || maximize()) return {};
    return std::unexpected(HarnessError{"the window was not maximised again"});
}

void SurveyRun::unmaximize() {
    if (isKeptMaximized_ || !isMaximized(desktop_.observer().states(window_))) return;
    isKeptMaximized_ = !desktop_.pager().unmaximize(window_, stateTime);
}

bool SurveyRun::staysWhereItIs() {
    const auto before = frame();
    desktop_.pager().requestFrame(window_, possibleFrame(firstPlace));
    return !desktop_.observer().waitUntil([&] { return frame() != before; }, placeTime);
}

std::expected<void, HarnessError> SurveyRun::place(const PixelRect& frame) {
    auto& observer = desktop_.observer();
    const int step = steps_ ? std::max(steps_->width, steps_->height) : 0;
    const int tolerance = std::max(step, frameTolerance);
    // A toolkit that has just been put back to normal may take its time to declare its shadow; it is placed again then.
    for (int attempt = 0; attempt < 3; ++attempt) {
        const auto wanted = possibleFrame(frame);
        desktop_.pager().requestFrame(window_, wanted);
        const auto isThere = [&] {
            const auto seen = observer.visibleFrame(window_);
            return seen && framesAgree(*seen, wanted, tolerance);
        };
        if (observer.waitUntil(isThere, placeTime)) return {};
    }
    const auto placed = desktop_.pager().place(window_, possibleFrame(frame), tolerance, stateTime);
    if (placed) return {};
    return std::unexpected(placed.error());
}

bool SurveyRun::maximize() {
    if (!desktop_.pager().maximize(window_, stateTime)) return false;
    const auto settled = desktop_.observer().waitForSettledFrame(window_, [](const PixelRect&) { return true; });
    return settled.has_value();
}

std::expected<void, HarnessError> SurveyRun::activate() {
    if (desktop_.observer().activeWindow() == window_) return {};
    return desktop_.pager().activate(window_);
}

PixelRect SurveyRun::possibleFrame(PixelRect frame) {
    if (!limits_.isFixed()) return frame;
    const auto now = this->frame();
    return {frame.x, frame.y, now.width, now.height};
}

SurveyPress SurveyRun::press(const DemoAction& action, const PixelRect& wanted) {
    auto& observer = desktop_.observer();
    SurveyPress press{.action = &action,
                      .before = frame(),
                      .wanted = wanted,
                      .statesBefore = observer.states(window_),
                      .limits = limits_,
                      .steps = steps_,
                      .isTiled = isTiled_};
    const auto logStart = desktop_.program().logSize();
    desktop_.keyboard().press(action.modifiers, action.key);
    observer.waitUntil(
        [&] {
            press.log = desktop_.program().log(logStart);
            return isOver(press.log) || !desktop_.program().isRunning();
        },
        pressTime);
    const bool anywhere = tellsOfFailure(press.log);
    const auto accepted = [&](const PixelRect& seen) {
        return anywhere || framesAgree(seen, press.wanted, frameTolerance);
    };
    press.after = observer.waitForSettledFrame(window_, accepted, stateTime).value_or(PixelRect{});
    press.statesAfter = observer.states(window_);
    // Only now: the report of a failure comes after the last frame.
    press.log = desktop_.program().log(logStart);
    if (const auto client = observer.clientRect(window_)) {
        press.around = {client->x - press.after.x, press.after.right() - client->right(), client->y - press.after.y,
                        press.after.bottom() - client->bottom()};
    }
    return press;
}

PixelRect SurveyRun::frame() {
    return desktop_.observer().visibleFrame(window_).value_or(PixelRect{});
}

}  // namespace velmorand::desktop

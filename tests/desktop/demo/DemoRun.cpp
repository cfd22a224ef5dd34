#include "desktop/demo/DemoRun.h"

#include "desktop/demo/DemoJudgement.h"

#include <fmt/format.h>

#include <algorithm>

namespace velmorand::desktop {

namespace {

/// Longer than the program may wait for a window manager.
constexpr std::chrono::seconds landingTime{4};
/// The program looks at a window once more after it has moved it; the next step must not move it away under that look.
constexpr std::chrono::milliseconds calm{150};

}  // namespace

std::expected<DemoRow, HarnessError> DemoRun::perform(const DemoStep& step) {
    if (auto prepared = prepare(step); !prepared) return std::unexpected(prepared.error());
    const auto& action = demoAction(step.action);
    const auto window = static_cast<int>(step.window);
    const auto before = desktop_.frameOf(step.window);
    if (!before) return std::unexpected(HarnessError{fmt::format("the {} window is gone", nameOf(step.window))});
    const auto wanted = model_.wanted(window, action, *before);
    if (!wanted) return std::unexpected(HarnessError{fmt::format("nothing to {} yet", step.action)});

    const auto logStart = desktop_.program().logSize();
    desktop_.keyboard().press(action.modifiers, action.key);
    DemoRow row{.step = step, .before = *before, .wanted = *wanted, .after = *before};
    const auto accepted = [&](const PixelRect& frame) {
        const auto seen = desktop_.fromRoot(frame);
        return framesAgree(seen, row.wanted, frameTolerance) || isRounded(row, seen);
    };
    if (!desktop_.observer().waitForSettledFrame(desktop_.idOf(step.window), accepted, landingTime)) {
        return std::unexpected(HarnessError{fmt::format("the {} window has gone", nameOf(step.window))});
    }
    const auto settled = desktop_.frameOf(step.window);
    desktop_.observer().waitUntil([&] { return desktop_.frameOf(step.window) != settled; }, calm);
    row.after = desktop_.frameOf(step.window).value_or(PixelRect{});
    judge(row, logStart);
    model_.remember(window, action, row.before, row.after);
    return row;
}

std::expected<void, HarnessError> DemoRun::takePicture(std::string_view name) {
    return desktop_.observer().screenshot(pictures_ / fmt::format("{:02}-{}.png", takenPictures_++, name));
}

std::expected<void, HarnessError> DemoRun::prepare(const DemoStep& step) {
    const auto window = desktop_.idOf(step.window);
    if (step.start) {
        const auto steps = desktop_.observer().sizeSteps(window).value_or(SizeSteps{});
        const int tolerance = std::max({steps.width, steps.height, frameTolerance});
        const auto placed = desktop_.pager().place(window, desktop_.toRoot(*step.start), tolerance);
        if (!placed) return std::unexpected(placed.error());
    }
    return desktop_.pager().activate(window);
}

bool DemoRun::isRounded(const DemoRow& row, const PixelRect& frame) {
    const auto steps = desktop_.observer().sizeSteps(desktop_.idOf(row.step.window));
    return steps && isRoundedToSteps(row.wanted, frame, *steps);
}

void DemoRun::judge(DemoRow& row, std::uintmax_t logStart) {
    const auto hasReported = [&] { return desktop_.program().log(logStart).contains(notLandedReport); };
    if (!desktop_.program().isRunning()) {
        row.remark = "the program has ended";
    } else if (framesAgree(row.before, row.wanted, frameTolerance)) {
        row.remark = "was there before";
    } else if (framesAgree(row.after, row.wanted, frameTolerance)) {
        if (hasReported()) {
            row.remark = "reported as not moved";
        } else {
            row.verdict = DemoVerdict::landed;
        }
    } else if (!isRounded(row, row.after)) {
        row.remark = row.after == row.before ? "did not move" : "moved elsewhere";
    } else if (!desktop_.observer().waitUntil(hasReported, landingTime)) {
        row.remark = "rounded to its size steps, but not reported";
    } else {
        row.verdict = DemoVerdict::rounded;
        row.remark = "rounded to its size steps";
    }
}

}  // namespace velmorand::desktop

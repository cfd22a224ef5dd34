#include "desktop/survey/SurveyJudgement.h"

#include "desktop/demo/DemoJudgement.h"
#include "desktop/survey/SurveyDesktop.h"

#include <algorithm>

namespace velmorand::desktop {

namespace {

constexpr std::string_view noTargetReport = "No focused window is available.";
constexpr std::string_view failureMark = "velmorand [windows] error: ";
constexpr std::string_view endMark = "velmorand [ax] info: final frame ";

bool isMaximized(const WindowStates& states) {
    return states.maximizedHorizontally && states.maximizedVertically;
}

bool contains(const PixelRect& outer, const PixelRect& inner) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.right() <= outer.right() &&
           inner.bottom() <= outer.bottom();
}

bool isOnOneDisplay(const PixelRect& frame) {
    return std::ranges::any_of(SurveyDesktop::workAreas(),
                               [&](const PixelRect& display) { return contains(display, frame); });
}

/// The wanted frame, in the least size that the client wants to have.
PixelRect inMinimumSize(const SurveyPress& press) {
    auto frame = press.wanted;
    const auto& around = press.around;
    frame.width = std::max(frame.width, press.limits.minimumWidth + around.left + around.right);
    frame.height = std::max(frame.height, press.limits.minimumHeight + around.top + around.bottom);
    return frame;
}

/// Why the window manager did not let the window go where it belongs; empty when nothing known explains it.
std::string hindrance(const SurveyPress& press) {
    const bool hasMoved = press.after != press.before;
    if (press.isTiled && !hasMoved) return "the window manager places tiled windows itself";
    if (!hasMoved && isMaximized(press.statesBefore) && isMaximized(press.statesAfter)) {
        return "the window manager puts maximised windows back to normal for itself only";
    }
    const auto smallest = inMinimumSize(press);
    if (smallest == press.wanted) return {};
    if (framesAgree(press.after, smallest, frameTolerance)) return "the window manager keeps the window's minimum size";
    const PixelRect sameSize{smallest.x, smallest.y, press.after.width, press.after.height};
    if (framesAgree(sameSize, smallest, frameTolerance) && isOnOneDisplay(press.after)) {
        return "the window manager keeps the window's minimum size, and all of the window on the display";
    }
    return {};
}

SurveyOutcome missed(std::string_view why) {
    return {SurveyVerdict::missed, std::string(why)};
}

}  // namespace

bool isOver(std::string_view log) {
    return log.contains(endMark) || tellsOfFailure(log);
}

bool tellsOfFailure(std::string_view log) {
    return log.contains(failureMark);
}

SurveyOutcome judge(const SurveyPress& press) {
    if (!isOver(press.log)) return missed("the program did nothing");
    if (press.log.contains(noTargetReport)) {
        if (!press.limits.isFixed()) return missed("the program took it for no target");
        if (press.after != press.before) return missed("moved although it was refused");
        return {SurveyVerdict::refused, "the program takes only windows that can be resized"};
    }
    const bool landed = framesAgree(press.after, press.wanted, frameTolerance);
    if (landed && tellsOfFailure(press.log)) return missed("landed, but the program says it did not");
    const bool wasThere = framesAgree(press.before, press.wanted, frameTolerance);
    if (landed && !wasThere && isMaximized(press.statesAfter)) return missed("landed, but still counts as maximised");
    if (landed) return {SurveyVerdict::landed, {}};

    if (!press.log.contains(notLandedReport)) {
        return missed(tellsOfFailure(press.log) ? "the program says something else than that it did not land"
                                                : "the program says it landed");
    }
    if (press.steps && isRoundedToSteps(press.wanted, press.after, *press.steps)) return {SurveyVerdict::rounded, {}};
    if (auto why = hindrance(press); !why.empty()) return {SurveyVerdict::refused, std::move(why)};
    return missed(press.after == press.before ? "did not move" : "moved elsewhere");
}

}  // namespace velmorand::desktop

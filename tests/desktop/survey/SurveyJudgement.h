#pragma once

#include "desktop/demo/DemoActions.h"
#include "desktop/harness/XObserver.h"

#include <string>

namespace velmorand::desktop {

enum class SurveyVerdict {
    landed,
    /// At its place, and short of its size by less than one of its steps, and the program says so.
    rounded,
    /// It is not where it belongs for a reason that is not the program's, and the program says so.
    refused,
    missed
};

/// A press of a shortcut, and what was seen of it. Frames are in root coordinates.
struct SurveyPress {
    const DemoAction* action = nullptr;
    PixelRect before = {};
    PixelRect wanted = {};
    PixelRect after = {};
    WindowStates statesBefore = {};
    WindowStates statesAfter = {};
    /// The decorations less the shadow, around the client, afterwards.
    Extents around = {};
    SizeLimits limits = {};
    std::optional<SizeSteps> steps = {};
    bool isTiled = false;
    /// What the program wrote about it.
    std::string log = {};
};

struct SurveyOutcome {
    SurveyVerdict verdict = SurveyVerdict::missed;
    /// Why it was refused or missed.
    std::string reason = {};
};

/// Whether the log of a press tells how it ended.
[[nodiscard]] bool isOver(std::string_view log);
/// Whether it tells that the window is not where it belongs.
[[nodiscard]] bool tellsOfFailure(std::string_view log);

[[nodiscard]] SurveyOutcome judge(const SurveyPress& press);

}  // namespace velmorand::desktop

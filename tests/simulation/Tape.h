#pragma once

#include "base/Rect.h"
#include "platform/Accessibility.h"
#include "platform/RunLoop.h"
#include "platform/Workspace.h"
#include "platform/simulated/SimulatedDesktop.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmorand::simulation {

/// Both clocks at one instant.
struct Moment {
    MonotonicTime time;
    Date date;
};

/// What an accessibility call was about.
using Element = std::variant<std::int32_t, SimulatedWindowID>;

enum class CallKind : std::uint8_t { trusted, prompt, copy, write, settable };

/// One accessibility call and what came of it.
struct TapedCall {
    CallKind kind = {};
    Element element = {};
    std::string_view attribute = {};
    /// Of a write.
    AXBoxedValue written = {};
    std::optional<AXError> error = {};
    /// Of a copy.
    AXAttributeValue answer = {};
    /// Of a question for trust or whether something is settable.
    bool yes = false;
    Moment begin = {};
    Moment end = {};
};

/// The window manager begins an action; where every window is then.
struct TapedPerform {
    std::string rawValue;
    Moment at;
    std::map<SimulatedWindowID, Rect> frames;
};

/// The program asked for the frontmost application.
struct TapedFrontmost {
    std::optional<RunningApplication> application;
};

/// The program asked whether the user wants less motion.
struct TapedReduceMotion {
    bool reduces = false;
};

/// The user was told that something failed.
struct TapedFailure {
    std::string message;
};

/// What `perform` answered to the one who called it: nothing, or the description of the refusal.
struct TapedOutcome {
    std::optional<std::string> refusal;
};

/// The desktop told that an application ended.
struct TapedTermination {
    std::int32_t pid = 0;
};

/// The desktop told that the displays changed.
struct TapedScreenChange {};

/// Something happened to the desktop in the middle of a call.
struct TapedInterruption {};

using TapedEvent = std::variant<TapedCall, TapedPerform, TapedFrontmost, TapedReduceMotion, TapedFailure, TapedOutcome,
                                TapedTermination, TapedScreenChange, TapedInterruption>;

/// Everything that happened between the program and its surroundings during one step, in order.
using Tape = std::vector<TapedEvent>;

/// One line for people.
[[nodiscard]] std::string describe(const TapedEvent& event);
[[nodiscard]] std::string describe(const Element& element);

}  // namespace velmorand::simulation

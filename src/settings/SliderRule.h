#pragma once

#include "preferences/PreferencesState.h"

#include <string>
#include <string_view>

namespace velmorand {

/// The values a slider can give, and how they are written.
struct SliderRule {
    PreferencesLimit limit;
    /// The step is one of this many parts of 1.
    int stepsPerUnit = 1;
    /// After the number and a space.
    std::string_view unit;

    [[nodiscard]] double step() const { return 1.0 / stepsPerUnit; }

    /// The step that is nearest to the value, within the limits. The value is a number.
    [[nodiscard]] double rounded(double value) const;

    /// The value with as many decimals as the step has, with a point in every language: "0.15 s".
    [[nodiscard]] std::string text(double value) const;
};

inline constexpr SliderRule animationDurationRule{animationDurationLimit, 100, "s"};
inline constexpr SliderRule outerPaddingRule{outerPaddingLimit, 1, "px"};
inline constexpr SliderRule innerGapRule{innerGapLimit, 1, "px"};

}  // namespace velmorand

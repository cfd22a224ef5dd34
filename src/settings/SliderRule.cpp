#include "settings/SliderRule.h"

#include <fmt/format.h>

#include <cmath>

namespace velmorand {

double SliderRule::rounded(double value) const {
    return limit.limited(std::round(value * stepsPerUnit) / stepsPerUnit);
}

std::string SliderRule::text(double value) const {
    return fmt::format("{:.{}f} {}", value, stepsPerUnit == 1 ? 0 : 2, unit);
}

}  // namespace velmorand

#pragma once

#include "desktop/demo/DemoModel.h"
#include "desktop/harness/XObserver.h"

#include <string_view>

namespace velmorand::desktop {

/// What the program says when a window did not end where it was sent.
inline constexpr std::string_view notLandedReport = "The window did not move to the requested position.";

/// Whether \p seen is exactly at its place, and short of its size by less than one step.
[[nodiscard]] bool isRoundedToSteps(const PixelRect& wanted, const PixelRect& seen, const SizeSteps& steps);

}  // namespace velmorand::desktop

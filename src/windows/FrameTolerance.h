#pragma once

#include "base/Rect.h"

namespace velmorand {

/// How far each of left edge, top edge, width and height may be off for two frames to count as the same, in
/// points, inclusive.
inline constexpr double frameTolerance = 2.0;

/// Whether two frames are the same within the tolerance.
[[nodiscard]] bool framesMatch(const Rect& a, const Rect& b);

}  // namespace velmorand

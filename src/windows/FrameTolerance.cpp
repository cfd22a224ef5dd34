#include "windows/FrameTolerance.h"

#include <cmath>

namespace velmorand {

bool framesMatch(const Rect& a, const Rect& b) {
    const auto near = [](double first, double second) { return std::abs(first - second) <= frameTolerance; };
    return near(a.minX(), b.minX()) && near(a.minY(), b.minY()) && near(a.width, b.width) && near(a.height, b.height);
}

}  // namespace velmorand

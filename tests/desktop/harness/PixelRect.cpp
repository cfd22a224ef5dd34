#include "desktop/harness/PixelRect.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

namespace velmorand::desktop {

PixelRect PixelRect::relativeTo(int originX, int originY) const {
    return {x - originX, y - originY, width, height};
}

std::string PixelRect::text() const {
    return fmt::format("{}x{}{:+}{:+}", width, height, x, y);
}

bool framesAgree(const PixelRect& first, const PixelRect& second, int tolerance) {
    const auto near = [tolerance](int a, int b) { return std::abs(a - b) <= tolerance; };
    return near(first.x, second.x) && near(first.y, second.y) && near(first.width, second.width) &&
           near(first.height, second.height);
}

PixelRect united(const PixelRect& first, const PixelRect& second) {
    const int left = std::min(first.x, second.x);
    const int top = std::min(first.y, second.y);
    return {left, top, std::max(first.right(), second.right()) - left, std::max(first.bottom(), second.bottom()) - top};
}

}  // namespace velmorand::desktop

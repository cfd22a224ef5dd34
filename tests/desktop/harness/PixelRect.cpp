#include "desktop/harness/PixelRect.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
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

double progressOf(const PixelRect& frame, const PixelRect& start, const PixelRect& target) {
    const std::array from{start.x, start.y, start.width, start.height};
    const std::array to{target.x, target.y, target.width, target.height};
    const std::array now{frame.x, frame.y, frame.width, frame.height};
    std::size_t longest = 0;
    for (std::size_t index = 1; index < from.size(); ++index) {
        if (std::abs(to[index] - from[index]) > std::abs(to[longest] - from[longest])) longest = index;
    }
    return static_cast<double>(now[longest] - from[longest]) / (to[longest] - from[longest]);
}

PixelRect united(const PixelRect& first, const PixelRect& second) {
    const int left = std::min(first.x, second.x);
    const int top = std::min(first.y, second.y);
    return {left, top, std::max(first.right(), second.right()) - left, std::max(first.bottom(), second.bottom()) - top};
}

}  // namespace velmorand::desktop

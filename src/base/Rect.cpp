#include "base/Rect.h"

#include <fmt/format.h>

#include <algorithm>

namespace velmorand {

Rect Rect::standardized() const {
    return {width < 0 ? x + width : x, height < 0 ? y + height : y, width < 0 ? -width : width,
            height < 0 ? -height : height};
}

std::optional<Rect> intersection(const Rect& a, const Rect& b) {
    const Rect first = a.standardized();
    const Rect second = b.standardized();
    const double minX = std::max(first.minX(), second.minX());
    const double minY = std::max(first.minY(), second.minY());
    const double maxX = std::min(first.maxX(), second.maxX());
    const double maxY = std::min(first.maxY(), second.maxY());
    if (!(maxX > minX) || !(maxY > minY)) return std::nullopt;
    return Rect::fromEdges(minX, minY, maxX, maxY);
}

bool intersects(const Rect& a, const Rect& b) {
    return intersection(a, b).has_value();
}

std::string describe(const Rect& rect) {
    return fmt::format("({}, {}, {}, {})", rect.x, rect.y, rect.width, rect.height);
}

}  // namespace velmorand

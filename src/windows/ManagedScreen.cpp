#include "windows/ManagedScreen.h"

#include "base/Hash.h"

#include <algorithm>
#include <cmath>

namespace velmorand {
namespace {

double overlapArea(const Rect& a, const Rect& b) {
    const auto common = intersection(a, b);
    return common ? common->width * common->height : 0;
}

double distance(const Rect& rect, Point point) {
    const double dx = std::max({rect.minX() - point.x, point.x - rect.maxX(), 0.0});
    const double dy = std::max({rect.minY() - point.y, point.y - rect.maxY(), 0.0});
    return std::sqrt(dx * dx + dy * dy);
}

}  // namespace

std::optional<ManagedScreen> screenForFrame(const Rect& frame, std::span<const ManagedScreen> screens) {
    if (screens.empty()) return std::nullopt;

    // max_element and min_element answer the first of equals, so ties go to the earlier screen.
    const auto mostOverlapping = std::ranges::max_element(
        screens, {}, [&](const ManagedScreen& screen) { return overlapArea(screen.axVisibleFrame, frame); });
    if (intersects(mostOverlapping->axVisibleFrame, frame)) return *mostOverlapping;

    const Point center{frame.midX(), frame.midY()};
    return *std::ranges::min_element(
        screens, {}, [&](const ManagedScreen& screen) { return distance(screen.axVisibleFrame, center); });
}

std::optional<std::size_t> indexOfScreen(const ManagedScreen& screen, std::span<const ManagedScreen> screens) {
    const auto found = std::ranges::find(screens, screen);
    if (found == screens.end()) return std::nullopt;
    return static_cast<std::size_t>(found - screens.begin());
}

Rect centered(const Size& size, const Rect& area, bool limited) {
    const double width = limited ? std::min(size.width, area.width) : size.width;
    const double height = limited ? std::min(size.height, area.height) : size.height;
    return {area.minX() + (area.width - width) * 0.5, area.minY() + (area.height - height) * 0.5, width, height};
}

Rect clamped(const Rect& rect, const Rect& area) {
    const double width = std::min(rect.width, area.width);
    const double height = std::min(rect.height, area.height);
    return {std::min(std::max(rect.minX(), area.minX()), area.maxX() - width),
            std::min(std::max(rect.minY(), area.minY()), area.maxY() - height), width, height};
}

}  // namespace velmorand

std::size_t std::hash<velmorand::ManagedScreen>::operator()(const velmorand::ManagedScreen& screen) const noexcept {
    std::size_t seed = 0;
    velmorand::hashCombine(seed, screen.id);
    velmorand::hashCombine(seed, screen.name);
    for (const velmorand::Rect& rect : {screen.axFrame.standardized(), screen.axVisibleFrame.standardized()}) {
        velmorand::hashCombine(seed, rect.x);
        velmorand::hashCombine(seed, rect.y);
        velmorand::hashCombine(seed, rect.width);
        velmorand::hashCombine(seed, rect.height);
    }
    return seed;
}

#include "platform/linux/x11/X11FrameGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmorand {
namespace {

/// No decoration is larger; a client may have written anything.
constexpr std::uint32_t largestExtent = 512;

/// The X protocol carries positions as 16-bit signed and sizes as 16-bit unsigned numbers.
constexpr double smallestPosition = -32768;
constexpr double largestPosition = 32767;
constexpr double largestSize = 32767;

}  // namespace

X11Extents decodeExtents(const X11PropertyValue& property, std::uint32_t cardinalType) {
    const auto items = decodeItems(property, cardinalType);
    const bool plausible = items && items->size() == 4 &&
                           std::ranges::all_of(*items, [](std::uint32_t item) { return item <= largestExtent; });
    if (!plausible) return {};
    const auto& sides = *items;
    return {static_cast<double>(sides[0]), static_cast<double>(sides[1]), static_cast<double>(sides[2]),
            static_cast<double>(sides[3])};
}

X11Extents extentsAround(const Rect& client, const Rect& outer) {
    const X11Extents extents{client.minX() - outer.minX(), outer.maxX() - client.maxX(), client.minY() - outer.minY(),
                             outer.maxY() - client.maxY()};
    const std::array sides{extents.left, extents.right, extents.top, extents.bottom};
    const bool plausible = std::ranges::all_of(sides, [](double side) { return side >= 0 && side <= largestExtent; });
    return plausible ? extents : X11Extents{};
}

Rect X11FrameGeometry::visible() const {
    return Rect::fromEdges(client.minX() - frame.left + shadow.left, client.minY() - frame.top + shadow.top,
                           client.maxX() + frame.right - shadow.right, client.maxY() + frame.bottom - shadow.bottom);
}

Rect X11FrameGeometry::clientFor(const Rect& visible) const {
    const double minX = std::round(visible.minX()) + frame.left - shadow.left;
    const double minY = std::round(visible.minY()) + frame.top - shadow.top;
    const double maxX = std::round(visible.maxX()) - frame.right + shadow.right;
    const double maxY = std::round(visible.maxY()) - frame.bottom + shadow.bottom;
    return {std::clamp(minX, smallestPosition, largestPosition), std::clamp(minY, smallestPosition, largestPosition),
            std::clamp(maxX - minX, 1.0, largestSize), std::clamp(maxY - minY, 1.0, largestSize)};
}

X11FrameGeometry X11FrameGeometry::sanitized() const {
    X11FrameGeometry geometry = *this;
    const bool fits = shadow.left + shadow.right < client.width && shadow.top + shadow.bottom < client.height;
    if (!fits) geometry.shadow = {};
    return geometry;
}

}  // namespace velmorand

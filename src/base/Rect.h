#pragma once

#include "base/Point.h"
#include "base/Size.h"

#include <optional>
#include <string>

namespace velmorand {

/// A rectangle in points. It is half-open: maxX and maxY lie just outside it. Comparison is exact; where a
/// tolerance is wanted, the function that applies it says so in its name.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;

    [[nodiscard]] static constexpr Rect fromEdges(double minX, double minY, double maxX, double maxY) {
        return {minX, minY, maxX - minX, maxY - minY};
    }

    [[nodiscard]] constexpr double minX() const { return x; }
    [[nodiscard]] constexpr double minY() const { return y; }
    [[nodiscard]] constexpr double maxX() const { return x + width; }
    [[nodiscard]] constexpr double maxY() const { return y + height; }
    [[nodiscard]] constexpr double midX() const { return x + width * 0.5; }
    [[nodiscard]] constexpr double midY() const { return y + height * 0.5; }
    [[nodiscard]] constexpr Point origin() const { return {x, y}; }
    [[nodiscard]] constexpr Size size() const { return {width, height}; }

    /// True when no point lies inside: a width or height of 0.
    [[nodiscard]] constexpr bool isEmpty() const { return width == 0 || height == 0; }

    /// The same area with a negative width or height folded into the origin.
    [[nodiscard]] Rect standardized() const;
};

/// The common area of two rectangles, absent when they share no area. Sharing an edge is not enough, and an
/// empty rectangle shares an area with nothing.
[[nodiscard]] std::optional<Rect> intersection(const Rect& a, const Rect& b);

/// Whether two rectangles share any area.
[[nodiscard]] bool intersects(const Rect& a, const Rect& b);

/// "(x, y, width, height)" for log lines, with as many digits as the values need.
[[nodiscard]] std::string describe(const Rect& rect);

}  // namespace velmorand

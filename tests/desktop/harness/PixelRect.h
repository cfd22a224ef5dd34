#pragma once

#include <ostream>
#include <string>

namespace velmorand::desktop {

/// A rectangle of whole pixels, y down, half-open (its right edge is x + width). Unless a declaration says otherwise
/// its origin is the top-left corner of the X root window. It is deliberately not a type of the program under test.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const PixelRect&, const PixelRect&) = default;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    /// The same rectangle seen from an origin that lies at (\p originX, \p originY).
    [[nodiscard]] PixelRect relativeTo(int originX, int originY) const;
    /// "1600x1000+1280+24", with signs as X geometries have them.
    [[nodiscard]] std::string text() const;
};

/// Whether x, y, width and height each differ by at most \p tolerance pixels.
[[nodiscard]] bool framesAgree(const PixelRect& first, const PixelRect& second, int tolerance);

/// How much of the way from \p start to \p target a frame has gone, by the number that has the longest way to go.
[[nodiscard]] double progressOf(const PixelRect& frame, const PixelRect& start, const PixelRect& target);

/// The smallest rectangle that contains both.
[[nodiscard]] PixelRect united(const PixelRect& first, const PixelRect& second);

/// What a side of a window adds (or, for shadows, hides), in pixels.
struct Extents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    friend bool operator==(const Extents&, const Extents&) = default;
};

inline std::ostream& operator<<(std::ostream& stream, const PixelRect& rect) {
    return stream << rect.text();
}

}  // namespace velmorand::desktop

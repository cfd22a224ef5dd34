#pragma once

#include "desktop/harness/PixelRect.h"
#include "desktop/harness/XConnection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmorand::desktop {

/// A part of the screen as it looked at one moment.
struct ScreenArea {
    /// In root coordinates.
    PixelRect rect = {};
    /// Row by row, 0xRRGGBB.
    std::vector<std::uint32_t> pixels = {};

    friend bool operator==(const ScreenArea&, const ScreenArea&) = default;
};

/// Reads the area, which must lie within the root window; without pixels when the server does not give them.
[[nodiscard]] ScreenArea readScreenArea(XConnection& connection, const PixelRect& rect);

/// The smallest rectangle that holds every pixel in which two looks at the same area differ; absent when none does.
[[nodiscard]] std::optional<PixelRect> changedPart(const ScreenArea& before, const ScreenArea& after);

}  // namespace velmorand::desktop

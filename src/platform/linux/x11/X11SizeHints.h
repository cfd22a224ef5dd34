#pragma once

#include "base/Rect.h"
#include "platform/linux/x11/X11FrameGeometry.h"
#include "platform/linux/x11/X11Property.h"

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>

namespace velmorand {

/// What a client says about the size and the place of its window (`WM_NORMAL_HINTS`). Sizes are the client's, without
/// decorations, in pixels.
struct X11SizeHints {
    std::optional<Size> smallest;
    std::optional<Size> largest;
    /// The size that steps are counted from.
    Size base;
    Size step{1, 1};
    /// Which point of the window a requested position means, as the X protocol numbers it.
    std::uint32_t gravity = XCB_GRAVITY_NORTH_WEST;

    /// Whether there is one size only.
    [[nodiscard]] bool isFixed() const { return smallest && largest && *smallest == *largest; }

    /// Whether the size lies within the limits. Steps do not count: they round a size, but do not refuse it.
    [[nodiscard]] bool allows(const Size& size) const;

    /// The size as a window manager rounds it: down to a whole number of steps.
    [[nodiscard]] Size rounded(const Size& size) const;

    bool operator==(const X11SizeHints&) const = default;
};

/// Hints that are absent or malformed say nothing; a limit that no window can have is left out.
[[nodiscard]] X11SizeHints decodeSizeHints(const X11PropertyValue& property, std::uint32_t sizeHintsType);

/// The position to ask for in a configure request so that the client comes to lie at `client`, in root coordinates: the
/// window manager places the frame so that its reference point, which `gravity` names, is where the bare client's would
/// have been (ICCCM, 4.1.2.3).
[[nodiscard]] Point positionForGravity(const Rect& client, const X11Extents& frame, std::uint32_t gravity);

}  // namespace velmorand

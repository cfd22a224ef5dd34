#pragma once

#include "base/Rect.h"
#include "platform/linux/x11/X11Property.h"

#include <cstdint>

namespace velmorand {

/// How far something reaches beyond, or into, a rectangle on each side, in pixels.
struct X11Extents {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;

    bool operator==(const X11Extents&) const = default;
};

/// The extents of a property with exactly four plausible numbers, in the order of the desktop's conventions (left,
/// right, top, bottom); zeros for anything else.
[[nodiscard]] X11Extents decodeExtents(const X11PropertyValue& property, std::uint32_t cardinalType);

/// How far `outer`, the window that a window manager put around a client, reaches beyond it; zeros when that is no
/// plausible decoration.
[[nodiscard]] X11Extents extentsAround(const Rect& client, const Rect& outer);

/// How the rectangle of a client window becomes what the user sees of it. Decorations that the window manager adds
/// lie outside the client, shadows that the client draws itself lie inside it.
struct X11FrameGeometry {
    Rect client;        ///< the client window in root coordinates
    X11Extents frame;   ///< what the window manager adds (`_NET_FRAME_EXTENTS`)
    X11Extents shadow;  ///< what the client draws around itself (`_GTK_FRAME_EXTENTS`)

    /// What the user sees, in root coordinates.
    [[nodiscard]] Rect visible() const;

    /// The client rectangle that makes the window look like `visible`, on whole pixels and within the range that
    /// the X protocol can carry.
    [[nodiscard]] Rect clientFor(const Rect& visible) const;

    /// The same window with shadows that do not fit into it ignored.
    [[nodiscard]] X11FrameGeometry sanitized() const;

    bool operator==(const X11FrameGeometry&) const = default;
};

}  // namespace velmorand

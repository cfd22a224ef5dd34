#pragma once

#include "base/Rect.h"
#include "platform/linux/x11/X11Property.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmorand {

/// One monitor, in root coordinates.
struct X11Monitor {
    std::uint32_t number = 0;  ///< its name's atom
    std::string name;
    Rect frame;
    bool primary = false;

    bool operator==(const X11Monitor&) const = default;
};

/// The band that a panel reserves along an edge of the root window, in root coordinates.
struct X11Strut {
    enum class Edge : std::uint8_t { left, right, top, bottom };

    Edge edge{};
    Rect band;
    /// The panel's own rectangle.
    Rect panel;

    bool operator==(const X11Strut&) const = default;
};

/// The bands of a panel's strut property. `partial` holds twelve numbers, `whole` (used when `partial` is absent)
/// four. `root` is the size of the root window, from whose right and bottom edges those bands are measured.
[[nodiscard]] std::vector<X11Strut> decodeStruts(const X11PropertyValue& partial, const X11PropertyValue& whole,
                                                 std::uint32_t cardinalType, const Size& root, const Rect& panel);

/// The part of `monitor`, one of `monitors`, that panels leave free. A band is ignored where it would leave next to
/// nothing of the monitor, and where it only crosses the monitor on its way from the root's edge to a panel on
/// another one.
[[nodiscard]] Rect workArea(const X11Monitor& monitor, std::span<const X11Monitor> monitors,
                            std::span<const X11Strut> struts);

/// The monitors without empty ones and without those that show the same area as an earlier one; the primary first,
/// then from left to right and top to bottom.
[[nodiscard]] std::vector<X11Monitor> arranged(std::vector<X11Monitor> monitors);

}  // namespace velmorand

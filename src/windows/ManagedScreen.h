#pragma once

#include "base/Rect.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace velmorand {

/// A display in the accessibility space.
struct ManagedScreen {
    /// The display's number.
    std::uint32_t id = 0;
    /// The display's localised name.
    std::string name;
    /// The whole display.
    Rect axFrame;
    /// The part of the display that panels leave free.
    Rect axVisibleFrame;

    bool operator==(const ManagedScreen&) const = default;
};

/// The screen that a window with this frame belongs to: the one whose visible frame overlaps it most, else the
/// one whose visible frame is nearest to its centre; of equals the earlier. Absent only for an empty list.
/// Visible frames decide on purpose: a window that lies only over a panel does not lie on that panel's screen.
[[nodiscard]] std::optional<ManagedScreen> screenForFrame(const Rect& frame, std::span<const ManagedScreen> screens);

/// The first position of an equal record; absent when there is none.
[[nodiscard]] std::optional<std::size_t> indexOfScreen(const ManagedScreen& screen,
                                                       std::span<const ManagedScreen> screens);

/// A rectangle of this size in the middle of `area`; when `limited`, not larger than the area.
[[nodiscard]] Rect centered(const Size& size, const Rect& area, bool limited);

/// `rect` made no larger than `area` and moved into it. Where both cannot hold, the right and bottom bounds win.
[[nodiscard]] Rect clamped(const Rect& rect, const Rect& area);

}  // namespace velmorand

template <>
struct std::hash<velmorand::ManagedScreen> {
    std::size_t operator()(const velmorand::ManagedScreen& screen) const noexcept;
};

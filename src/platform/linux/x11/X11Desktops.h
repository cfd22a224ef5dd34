#pragma once

#include <cstdint>
#include <optional>

namespace velmorand {

/// Whether a window is on the current desktop, from its `_NET_WM_DESKTOP` and the root window's
/// `_NET_CURRENT_DESKTOP`. A window that names none is on every desktop, and without a current desktop all count.
[[nodiscard]] inline bool isOnDesktop(std::optional<std::uint32_t> ofWindow, std::optional<std::uint32_t> current) {
    constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
    return !ofWindow || *ofWindow == allDesktops || !current || *ofWindow == *current;
}

}  // namespace velmorand

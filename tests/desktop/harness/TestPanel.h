#pragma once

#include "desktop/harness/PixelRect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// An edge of the root window.
enum class RootEdge { left, right, top, bottom };

/// A panel of a program without a toolkit: a window of the dock type that stays where it puts itself.
struct TestPanel {
    /// By which it is found; should be unique on its desktop.
    std::string title = "Panel";
    /// In root coordinates.
    PixelRect frame = {};
    /// _NET_WM_STRUT_PARTIAL, twelve numbers, and the older _NET_WM_STRUT, four. Empty ones are not written.
    std::vector<std::uint32_t> partialStrut = {};
    std::vector<std::uint32_t> strut = {};
    /// Absent to leave it to the window manager.
    std::optional<std::uint32_t> desktop = {};
};

/// The twelve numbers that reserve everything from the root window's edge to the inner side of a panel in \p frame,
/// along the panel's length. \p root is the whole root window.
[[nodiscard]] std::vector<std::uint32_t> partialStrut(RootEdge edge, const PixelRect& frame, const PixelRect& root);
/// The four numbers that do the same along the whole edge.
[[nodiscard]] std::vector<std::uint32_t> wholeStrut(RootEdge edge, const PixelRect& frame, const PixelRect& root);

/// Returns the command that opens the panel, for TestDesktop::start().
[[nodiscard]] std::vector<std::string> panelWindow(const TestPanel& panel);

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/PixelRect.h"

#include <optional>
#include <span>
#include <string_view>

namespace velmorand::desktop {

/// The three kinds of windows that are arranged.
enum class DemoWindow { terminal, clientSide, serverSide };

/// "terminal", "client-side", "server-side".
[[nodiscard]] std::string_view nameOf(DemoWindow window);

/// One key press.
struct DemoStep {
    DemoWindow window;
    /// Name of the action.
    std::string_view action;
    /// Where the window is put by hand before, from the primary display's top-left corner; otherwise it stays where the
    /// last action left it.
    std::optional<PixelRect> start = {};
    /// Name of the picture that is taken afterwards; empty for none.
    std::string_view picture = {};
};

/// What the demo shows, in order: every action at least once, every kind of action on every window.
[[nodiscard]] std::span<const DemoStep> demoScript();

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/XObserver.h"

#include <span>
#include <string_view>

namespace velmorand::desktop {

enum class WindowManagerKind { none, openbox, xfwm4, fluxbox, icewm, marco, i3, awesome, kwin };

/// "openbox" and so on.
[[nodiscard]] std::string_view nameOf(WindowManagerKind kind);
/// All but `none`.
[[nodiscard]] std::span<const WindowManagerKind> windowManagerKinds();
/// The one of that name; absent when there is none.
[[nodiscard]] std::optional<WindowManagerKind> windowManagerNamed(std::string_view name);

struct WindowManagerOptions {
    WindowManagerKind kind = WindowManagerKind::openbox;
    /// Whether xfwm4, marco or kwin runs its compositing manager; the others have none.
    bool isCompositing = false;
    /// Whether i3 tiles the windows, as it is made to, instead of leaving them to float; the others never tile.
    bool isTiling = false;
};

/// How a window manager is started.
struct WindowManagerCommand {
    std::vector<std::string> arguments = {};
    /// Beside or instead of those of the session.
    Environment variables = {};
};

/// \p options must not ask for `none`. The settings files that the command names are those of \p session.
[[nodiscard]] WindowManagerCommand commandOf(const WindowManagerOptions& options, const Environment& session);

/// Whether it takes only the outputs of the X server for displays, not monitors that exist by name only.
[[nodiscard]] bool needsOutputsForDisplays(WindowManagerKind kind);

/// Waits until the window manager that was started with \p options has told all it offers and handles requests.
[[nodiscard]] bool waitForWindowManager(XObserver& observer, const WindowManagerOptions& options,
                                        std::chrono::milliseconds timeout);

}  // namespace velmorand::desktop

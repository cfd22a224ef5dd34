#include "desktop/harness/WindowManagers.h"

#include "desktop/harness/WindowManagerSettings.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

namespace velmorand::desktop {

namespace {

using enum WindowManagerKind;

constexpr std::array kinds{openbox, xfwm4, fluxbox, icewm, marco, i3, awesome, kwin};

/// What it lists last of all that the tests need, or at the same moment.
std::string_view lastAnnouncement(const WindowManagerOptions& options) {
    const bool hasCompositor = options.kind == xfwm4 || options.kind == marco || options.kind == kwin;
    // A compositing window manager says only after its start that clients may draw shadows.
    if (hasCompositor && options.isCompositing) return "_GTK_FRAME_EXTENTS";
    return options.kind == awesome ? "_NET_WM_STATE" : "_NET_MOVERESIZE_WINDOW";
}

bool composites(const WindowManagerOptions& options) {
    return lastAnnouncement(options) == "_GTK_FRAME_EXTENTS";
}

}  // namespace

std::string_view nameOf(WindowManagerKind kind) {
    switch (kind) {
        case none: return "none";
        case openbox: return "openbox";
        case xfwm4: return "xfwm4";
        case fluxbox: return "fluxbox";
        case icewm: return "icewm";
        case marco: return "marco";
        case i3: return "i3";
        case awesome: return "awesome";
        case kwin: return "kwin";
    }
    std::unreachable();
}

std::span<const WindowManagerKind> windowManagerKinds() {
    return kinds;
}

std::optional<WindowManagerKind> windowManagerNamed(std::string_view name) {
    const auto* found = std::ranges::find(kinds, name, [](WindowManagerKind kind) { return nameOf(kind); });
    return found == kinds.end() ? std::nullopt : std::optional(*found);
}

WindowManagerCommand commandOf(const WindowManagerOptions& options, const Environment& session) {
    switch (options.kind) {
        case none: break;
        case openbox: return {{"openbox", "--sm-disable"}};
        case xfwm4: return {{"xfwm4", options.isCompositing ? "--compositor=on" : "--compositor=off", "--vblank=off"}};
        case fluxbox: return {{"fluxbox", "-no-slit"}};
        case icewm: return {{"icewm"}};
        case marco: return {{"marco", "--sm-disable", options.isCompositing ? "--composite" : "--no-composite"}};
        case i3: return {{"i3", "-c", i3SettingsFile(session, options.isTiling)}};
        case awesome: return {{"awesome", "-c", awesomeSettingsFile(session)}};
        case kwin:
            // Drawn by the processor, like everything on these desktops.
            return {{"kwin_x11"},
                    {{"KWIN_COMPOSE", options.isCompositing ? "O2" : "N"}, {"LIBGL_ALWAYS_SOFTWARE", "1"}}};
    }
    assert(false);
    std::unreachable();
}

bool needsOutputsForDisplays(WindowManagerKind kind) {
    return kind == xfwm4 || kind == kwin || kind == awesome;
}

bool waitForWindowManager(XObserver& observer, const WindowManagerOptions& options, std::chrono::milliseconds timeout) {
    const Deadline deadline(timeout);
    const auto isAnnounced = [&] {
        return observer.windowManagerName().has_value() && observer.isSupported(lastAnnouncement(options)) &&
               (!composites(options) || observer.isComposited());
    };
    return observer.waitUntil(isAnnounced, timeout) && observer.waitForWindowManager(deadline.remaining());
}

}  // namespace velmorand::desktop

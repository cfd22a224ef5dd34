#pragma once

#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11FrameGeometry.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11SizeHints.h"

#include <cstdint>
#include <expected>

namespace velmorand {

/// The kinds of windows that the desktop's conventions know and this program tells apart.
enum class X11WindowType : std::uint8_t {
    normal,
    dialog,
    utility,
    desktop,
    dock,
    toolbar,
    menu,
    splash,
    notification,
    other,
};

/// What can be known of one window at one moment, in root coordinates.
struct X11WindowFacts {
    X11FrameGeometry geometry;
    X11SizeHints sizeHints;
    X11WindowType type = X11WindowType::normal;
    bool overrideRedirect = false;
    bool viewable = false;
    bool iconic = false;
    bool hidden = false;
    bool shaded = false;
    bool fullScreen = false;
    bool maximizedHorizontally = false;
    bool maximizedVertically = false;
    /// Whether the client says what shadow it draws, be it none at the moment.
    bool declaresShadow = false;
    bool allowsMove = true;
    bool allowsResize = true;

    [[nodiscard]] bool isMaximized() const { return maximizedHorizontally || maximizedVertically; }
    /// Several window managers say of a shaded window, whose title bar is on screen, that it is iconic or hidden too.
    [[nodiscard]] bool isMinimized() const { return (iconic || hidden) && !shaded; }
    /// Whether the user can have it as the window in front of others: no panel, menu or notification.
    [[nodiscard]] bool isOrdinary() const;
};

/// Reads everything about a window in one round trip. Fails when the window is gone or nobody answers in time.
[[nodiscard]] std::expected<X11WindowFacts, X11Failure> readWindowFacts(X11Connection& connection,
                                                                        const X11Atoms& atoms, xcb_window_t window,
                                                                        Deadline deadline);

/// The type that a window claims: the first of its list that is known; a window without one is a dialog when it
/// belongs to another window and normal otherwise.
[[nodiscard]] X11WindowType decodeWindowType(const X11PropertyValue& property, const X11Atoms& atoms, bool isTransient);

/// What the window manager put around the window: how far the outermost window that holds it, below the root window,
/// reaches beyond `client`. For window managers that do not write it down; others may keep invisible borders there.
[[nodiscard]] std::expected<X11Extents, X11Failure> measureDecorations(X11Connection& connection, xcb_window_t window,
                                                                       const Rect& client, Deadline deadline);

}  // namespace velmorand

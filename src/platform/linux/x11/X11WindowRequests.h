#pragma once

#include "base/Rect.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11WindowManager.h"

#include <cstdint>

namespace velmorand {

/// What the window manager is asked to do with other clients' windows, as a pager on the user's behalf asks. Nothing
/// here waits.
class X11WindowRequests {
public:
    /// Both must outlive it.
    X11WindowRequests(X11Connection& connection, const X11Atoms& atoms) : connection_(connection), atoms_(atoms) {}

    /// Asks for this rectangle of the client, in root coordinates, with one request. `facts` were read of the window
    /// in the state in which it is placed.
    void place(xcb_window_t window, const X11WindowFacts& facts, const Rect& client, X11PlacementMethod method);

    void maximize(xcb_window_t window) { changeMaximized(window, addState); }
    void unmaximize(xcb_window_t window) { changeMaximized(window, removeState); }
    void unshade(xcb_window_t window);

private:
    /// Of the desktop's conventions (`_NET_WM_STATE`).
    static constexpr std::uint32_t removeState = 0;
    static constexpr std::uint32_t addState = 1;

    void changeMaximized(xcb_window_t window, std::uint32_t change);
    void sendToRoot(xcb_window_t window, X11AtomName message, const xcb_client_message_data_t& data);

    X11Connection& connection_;
    const X11Atoms& atoms_;
};

}  // namespace velmorand

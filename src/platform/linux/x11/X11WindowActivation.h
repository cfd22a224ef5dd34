#pragma once

#include <xcb/xproto.h>

namespace velmorand {

class X11Connection;

/// Has the window manager give the keyboard to this window, as the user wanted. The toolkit's own request carries the time
/// of the last event that it has seen, and is refused where the user has typed elsewhere since. Waits for the server a
/// bounded time; without a window manager nothing happens. `time` is of an event of the user's, where one is known.
void activateWindow(X11Connection& connection, xcb_window_t window, xcb_timestamp_t time = XCB_CURRENT_TIME);

}  // namespace velmorand

#include "desktop/harness/KeyboardProbe.h"

namespace velmorand::desktop {

bool keyboardIsFree(XConnection& connection) {
    const auto grabbed = connection.reply<xcb_grab_keyboard_reply_t>(xcb_grab_keyboard(
        connection.raw(), 0, connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    const bool isFree = grabbed && grabbed->status == XCB_GRAB_STATUS_SUCCESS;
    if (isFree) xcb_ungrab_keyboard(connection.raw(), XCB_CURRENT_TIME);
    connection.synchronise();
    return isFree;
}

}  // namespace velmorand::desktop

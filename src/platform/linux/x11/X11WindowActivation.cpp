#include "platform/linux/x11/X11WindowActivation.h"

#include "platform/linux/x11/X11Connection.h"

#include <string_view>

namespace velmorand {
namespace {

constexpr std::string_view message = "_NET_ACTIVE_WINDOW";
/// The source of a request that is the user's own, and not refused.
constexpr std::uint32_t fromPager = 2;

}  // namespace

void activateWindow(X11Connection& connection, xcb_window_t window, xcb_timestamp_t time) {
    const auto deadline = std::chrono::steady_clock::now() + X11Connection::startTimeout;
    const auto asked = xcb_intern_atom(connection.raw(), 1, static_cast<std::uint16_t>(message.size()), message.data());
    const auto type = connection.reply<xcb_intern_atom_reply_t>(asked, deadline);
    if (!type || (*type)->atom == XCB_ATOM_NONE) return;
    const xcb_client_message_event_t event{.response_type = XCB_CLIENT_MESSAGE,
                                           .format = 32,
                                           .sequence = 0,
                                           .window = window,
                                           .type = (*type)->atom,
                                           .data = {.data32 = {fromPager, time, 0, 0, 0}}};
    xcb_send_event(connection.raw(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    connection.flush();
}

}  // namespace velmorand

#include "platform/linux/x11/X11WindowRequests.h"

#include "platform/linux/x11/X11SizeHints.h"

#include <array>
#include <utility>

namespace velmorand {
namespace {

/// Of the desktop's conventions (`_NET_MOVERESIZE_WINDOW`, `_NET_WM_STATE`). With static gravity the position is the
/// client's own, whatever surrounds it.
constexpr std::uint32_t allFourFields = 0xFU << 8U;
constexpr std::uint32_t fromPager = 2;

std::uint32_t asWord(double value) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
}

}  // namespace

void X11WindowRequests::place(xcb_window_t window, const X11WindowFacts& facts, const Rect& client,
                              X11PlacementMethod method) {
    switch (method) {
        case X11PlacementMethod::moveResizeMessage:
            sendToRoot(window, X11AtomName::netMoveResizeWindow,
                       {.data32 = {XCB_GRAVITY_STATIC | allFourFields | fromPager << 12U, asWord(client.x),
                                   asWord(client.y), asWord(client.width), asWord(client.height)}});
            return;
        case X11PlacementMethod::configureRequest: {
            const Point position = positionForGravity(client, facts.geometry.frame, facts.sizeHints.gravity);
            const std::array<std::uint32_t, 4> values{asWord(position.x), asWord(position.y), asWord(client.width),
                                                      asWord(client.height)};
            xcb_configure_window(connection_.raw(), window,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                     XCB_CONFIG_WINDOW_HEIGHT,
                                 values.data());
            return;
        }
    }
    std::unreachable();
}

void X11WindowRequests::changeMaximized(xcb_window_t window, std::uint32_t change) {
    sendToRoot(window, X11AtomName::netWMState,
               {.data32 = {change, atoms_[X11AtomName::netWMStateMaximizedVertically],
                           atoms_[X11AtomName::netWMStateMaximizedHorizontally], fromPager, 0}});
}

void X11WindowRequests::unshade(xcb_window_t window) {
    sendToRoot(window, X11AtomName::netWMState,
               {.data32 = {removeState, atoms_[X11AtomName::netWMStateShaded], XCB_ATOM_NONE, fromPager, 0}});
}

void X11WindowRequests::sendToRoot(xcb_window_t window, X11AtomName message, const xcb_client_message_data_t& data) {
    const xcb_client_message_event_t event{.response_type = XCB_CLIENT_MESSAGE,
                                           .format = 32,
                                           .sequence = 0,
                                           .window = window,
                                           .type = atoms_[message],
                                           .data = data};
    xcb_send_event(connection_.raw(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

}  // namespace velmorand

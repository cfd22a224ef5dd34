#include "desktop/harness/StartupListener.h"

#include <utility>

namespace velmorand::desktop {

std::expected<StartupListener, HarnessError> StartupListener::connect(const std::string& displayName) {
    auto connection = XConnection::open(displayName);
    if (!connection) return std::unexpected(connection.error());
    StartupListener listener(std::move(*connection));
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(listener.connection_.raw(), listener.connection_.root(), XCB_CW_EVENT_MASK, &mask);
    listener.connection_.synchronise();
    return listener;
}

const std::vector<std::string>& StartupListener::heard() {
    connection_.synchronise();
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(connection_.raw()))) {
        if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE)
            take(reinterpret_cast<const xcb_client_message_event_t&>(*event));
    }
    return heard_;
}

void StartupListener::take(const xcb_client_message_event_t& piece) {
    const bool isFirst = piece.type == connection_.atom("_NET_STARTUP_INFO_BEGIN");
    if (piece.format != 8 || (!isFirst && piece.type != connection_.atom("_NET_STARTUP_INFO"))) return;
    std::string& text = begun_[piece.window];
    if (isFirst) text.clear();
    text.append(reinterpret_cast<const char*>(piece.data.data8), sizeof piece.data.data8);
    const auto end = text.find('\0');
    if (end == std::string::npos) return;
    heard_.push_back(text.substr(0, end));
    begun_.erase(piece.window);
}

}  // namespace velmorand::desktop

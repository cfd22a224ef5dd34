#include "platform/linux/x11/X11StartupNotification.h"

#include "platform/linux/x11/X11Connection.h"

#include <array>
#include <cstring>
#include <span>
#include <string>

namespace velmorand {
namespace {

/// How the desktop's startup-notification protocol sends a text: in pieces that are told apart from those of other
/// senders by the window they name.
constexpr std::string_view firstPieceType = "_NET_STARTUP_INFO_BEGIN";
constexpr std::string_view nextPieceType = "_NET_STARTUP_INFO";

std::string removal(std::string_view startupId) {
    std::string text = "remove: ID=\"";
    for (const char character : startupId) {
        if (character == '"' || character == '\\') text += '\\';
        text += character;
    }
    return text + '"';
}

xcb_intern_atom_cookie_t ask(X11Connection& connection, std::string_view name) {
    return xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t atom(X11Connection& connection, xcb_intern_atom_cookie_t cookie, Deadline deadline) {
    const auto reply = connection.reply<xcb_intern_atom_reply_t>(cookie, deadline);
    return reply ? (*reply)->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/// A window that is never shown.
xcb_window_t makeWindow(X11Connection& connection) {
    const xcb_window_t window = xcb_generate_id(connection.raw());
    const std::uint32_t isUnmanaged = 1;
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
    return window;
}

void sendPiece(X11Connection& connection, xcb_window_t window, xcb_atom_t type, std::span<const char> piece) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = type;
    std::memcpy(event.data.data8, piece.data(), piece.size());
    xcb_send_event(connection.raw(), 0, connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                   reinterpret_cast<const char*>(&event));
}

}  // namespace

void completeStartup(X11Connection& connection, std::string_view startupId) {
    const auto deadline = std::chrono::steady_clock::now() + X11Connection::startTimeout;
    const auto firstAsked = ask(connection, firstPieceType);
    const auto nextAsked = ask(connection, nextPieceType);
    const xcb_atom_t first = atom(connection, firstAsked, deadline);
    const xcb_atom_t next = atom(connection, nextAsked, deadline);
    if (first == XCB_ATOM_NONE || next == XCB_ATOM_NONE) return;

    const std::string text = removal(startupId);
    std::span<const char> left(text.c_str(), text.size() + 1);  // the zero is the end of the text for who listens
    const xcb_window_t window = makeWindow(connection);
    for (xcb_atom_t type = first; !left.empty(); type = next) {
        const auto piece = left.first(std::min(left.size(), sizeof(xcb_client_message_data_t)));
        sendPiece(connection, window, type, piece);
        left = left.subspan(piece.size());
    }
    // Answered after all that was sent before it.
    [[maybe_unused]] const auto done =
        connection.check({xcb_destroy_window_checked(connection.raw(), window)}, deadline);
}

}  // namespace velmorand

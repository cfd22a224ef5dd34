#include "desktop/x11/PanelWindow.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr std::uint16_t width = 480;
constexpr std::uint16_t height = 300;
constexpr std::uint32_t takesInput = 1;

}  // namespace

PanelWindow::PanelWindow(XConnection& connection, std::string_view title, RunLoop& runLoop)
    : connection_(connection), runLoop_(runLoop), window_(xcb_generate_id(connection_.raw())) {
    xcb_connection_t* raw = connection_.raw();
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto setWords = [&](std::string_view name, xcb_atom_t type, const auto& words) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window_, connection_.atom(name), type, 32,
                            static_cast<std::uint32_t>(words.size()), words.data());
    };
    setWords("WM_HINTS", XCB_ATOM_WM_HINTS, std::array<std::uint32_t, 9>{takesInput, 1});
    setWords("WM_PROTOCOLS", XCB_ATOM_ATOM, std::array{connection_.atom("WM_DELETE_WINDOW")});
    setWords("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, std::array{connection_.atom("_NET_WM_WINDOW_TYPE_DIALOG")});
    setWords("_NET_WM_PID", XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
    for (const std::string_view name : {"_NET_WM_NAME", "WM_NAME"}) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window_, connection_.atom(name),
                            connection_.atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()), title.data());
    }
    connection_.synchronise();
}

PanelWindow::~PanelWindow() {
    if (!connection_.isAlive()) return;
    xcb_destroy_window(connection_.raw(), window_);
    connection_.synchronise();
}

void PanelWindow::show(std::function<void()> closed) {
    closed_ = std::move(closed);
    listening_ = runLoop_.every(std::chrono::milliseconds(5), [this] { takeInEvents(); });
    xcb_map_window(connection_.raw(), window_);
    connection_.synchronise();
}

/// A window manager asks for nothing else.
void PanelWindow::takeInEvents() {
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(connection_.raw()))) {
        if ((event->response_type & 0x7FU) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.data.data32[0] != connection_.atom("WM_DELETE_WINDOW")) continue;
        const auto closed = std::move(closed_);
        closed();  // it may end this window
        return;
    }
}

}  // namespace velmorand::desktop

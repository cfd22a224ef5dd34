#pragma once

#include "desktop/harness/HarnessError.h"

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <expected>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply of the X server; empty when the request failed or the server did not answer.
template <class Reply>
using XReply = std::unique_ptr<Reply, FreeDeleter>;

/// A property as the server holds it.
struct XProperty {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 0;
    std::vector<std::uint8_t> bytes;
};

/// A connection of the tests to the X server, independent of the program under test. No call blocks for longer than
/// \ref patience; a server that has gone answers with absent values.
class XConnection {
public:
    /// \p displayName as in DISPLAY.
    [[nodiscard]] static std::expected<XConnection, HarnessError> open(const std::string& displayName);

    [[nodiscard]] xcb_connection_t* raw() const { return connection_.get(); }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] bool isAlive() const;

    /// Waits for the reply to the request that \p cookie stands for:
    /// reply<xcb_get_geometry_reply_t>(xcb_get_geometry(…)).
    template <class Reply, class Cookie>
    [[nodiscard]] XReply<Reply> reply(Cookie cookie) {
        return XReply<Reply>(static_cast<Reply*>(rawReply(cookie.sequence)));
    }
    /// Returns when the server has processed every earlier request of this connection.
    void synchronise();

    /// The atom of that name, made when there is none.
    [[nodiscard]] xcb_atom_t atom(std::string_view name);
    /// Empty for no atom.
    [[nodiscard]] std::string atomName(xcb_atom_t atom);

    /// At most 64 KiB of it.
    [[nodiscard]] std::optional<XProperty> property(xcb_window_t window, std::string_view name);
    /// The values of a property of format 32; empty when it is absent or of another format.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, std::string_view name);
    /// The bytes of a property of format 8; absent when it is absent or of another format.
    [[nodiscard]] std::optional<std::string> text(xcb_window_t window, std::string_view name);

    /// Sends a client message about \p window to the root window, where the window manager hears it.
    void sendToWindowManager(xcb_window_t window, std::string_view message, std::array<std::uint32_t, 5> data);

    /// Asks for property, structure and (of the root window) child events of \p window, once.
    void watch(xcb_window_t window);
    /// Returns after the next event, at the latest after \p timeout. Events themselves are dropped.
    void waitForEvent(std::chrono::milliseconds timeout);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    XConnection(std::unique_ptr<xcb_connection_t, Disconnect> connection, const xcb_screen_t* screen)
        : connection_(std::move(connection)), screen_(screen) {}

    [[nodiscard]] void* rawReply(unsigned sequence);
    bool dropEvents();

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_screen_t* screen_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::map<xcb_window_t, bool> watched_;
};

}  // namespace velmorand::desktop

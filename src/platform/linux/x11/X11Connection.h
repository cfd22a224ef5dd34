#pragma once

#include "base/Subscription.h"
#include "platform/linux/WindowSystem.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmorand {

/// Frees what the X library allocates.
struct X11Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11Free>;

using X11Event = X11Reply<xcb_generic_event_t>;

/// Why a request has no reply.
enum class X11Failure : std::uint8_t {
    error,    ///< the server refused it, such as for a window that is gone
    timeout,  ///< no answer before the deadline
    lost,     ///< the connection is broken
};

/// Our own connection to the X server. Every wait is bounded by a deadline. Events that arrive during a wait are
/// kept and handled in the next turn, never inside the wait. Main thread only.
class X11Connection {
public:
    /// Connects to the display that the environment names; fails with one line for the user.
    [[nodiscard]] static std::expected<std::unique_ptr<X11Connection>, std::string> open();
    /// The bound of what is asked once at the start, for a machine that is busy then.
    static constexpr std::chrono::seconds startTimeout{5};
    ~X11Connection();

    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// For requests without a reply. The pointer stays this object's.
    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    /// Which of the display's screens this is, from 0 on.
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    [[nodiscard]] const xcb_setup_t& setup() const { return *xcb_get_setup(connection_); }

    /// Has the server tell of these events of a window, besides those that others on this connection have asked for:
    /// the server itself would put the last wish in the place of all earlier ones. One that concerns a window which is
    /// gone has no effect.
    void requestEvents(xcb_window_t window, std::uint32_t events);

    /// The file to watch; it never blocks.
    [[nodiscard]] int file() const { return xcb_get_file_descriptor(connection_); }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection_) != 0; }
    void flush() const { xcb_flush(connection_); }

    /// Waits for the reply to a request that was sent before. Several requests may be sent before the first is
    /// waited for; they then cost one round trip together.
    template <typename Reply, typename Cookie>
    [[nodiscard]] std::expected<X11Reply<Reply>, X11Failure> reply(Cookie cookie, Deadline deadline) {
        auto raw = waitForReply(cookie.sequence, deadline);
        if (!raw) return std::unexpected(raw.error());
        return X11Reply<Reply>(static_cast<Reply*>(raw->release()));
    }

    /// Gives up a reply that is not wanted any more.
    template <typename Cookie>
    void discard(Cookie cookie) {
        xcb_discard_reply(connection_, cookie.sequence);
    }

    /// What the server says of an extension; null when it has no such extension or does not answer. No request of an
    /// extension may be made before this has answered: the library would wait for the same answer without a bound, and
    /// would end the connection where there is no such extension.
    [[nodiscard]] const xcb_query_extension_reply_t* extension(xcb_extension_t& id, Deadline deadline);

    /// The error codes of checked requests without a reply, in order; 0 for one that succeeded.
    [[nodiscard]] std::expected<std::vector<std::uint8_t>, X11Failure> check(
        const std::vector<xcb_void_cookie_t>& cookies, Deadline deadline);

    /// Waits until an event satisfies `wanted`, which sees each event when it has arrived and the listeners have
    /// heard of it. That event too is handled in the next turn.
    [[nodiscard]] std::expected<void, X11Failure> waitForEvent(
        const std::function<bool(const xcb_generic_event_t&)>& wanted, Deadline deadline);

    /// Takes in what has arrived without waiting: listeners hear of it, handlers in the next turn.
    void takeInEvents();

    /// Handles the events taken in so far and those that have arrived. Called by the main loop when the file is
    /// readable and before it sleeps. Answers whether more arrived meanwhile: they belong to the next turn.
    [[nodiscard]] bool handleEvents();

    using EventCallback = std::function<void(const xcb_generic_event_t&)>;

    /// Hears of every event, and of every error of a request nobody waits for, the moment it arrives, also inside a
    /// wait. For bookkeeping only: it must make no request that waits.
    [[nodiscard]] Subscription listen(EventCallback callback);
    /// Handles every event in a turn of the main loop.
    [[nodiscard]] Subscription handle(EventCallback callback);

private:
    struct Callbacks;

    X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber);
    [[nodiscard]] std::expected<X11Reply<void>, X11Failure> waitForReply(unsigned int sequence, Deadline deadline);
    [[nodiscard]] std::optional<X11Failure> waitForData(Deadline deadline);
    void takeIn(X11Event event);
    void forgetRequestedEvents(const xcb_generic_event_t& event);

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    int screenNumber_;
    std::unordered_map<xcb_window_t, std::uint32_t> requestedEvents_;
    std::deque<X11Event> arrived_;
    std::shared_ptr<Callbacks> listeners_;
    std::shared_ptr<Callbacks> handlers_;
};

/// The accessibility error that a failed request on a window means.
[[nodiscard]] AXError asAXError(X11Failure failure);

/// The event's type without the mark of a sent event; 0 for an error.
[[nodiscard]] inline std::uint8_t eventType(const xcb_generic_event_t& event) {
    return event.response_type & 0x7fU;
}

/// Whether another client made the event up (`SendEvent`); what the server itself tells is not marked so.
[[nodiscard]] inline bool isSentEvent(const xcb_generic_event_t& event) {
    return (event.response_type & 0x80U) != 0;
}

}  // namespace velmorand

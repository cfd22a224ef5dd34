#include "platform/linux/x11/X11Connection.h"

#include <fmt/format.h>
#include <poll.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace velmorand {

namespace {

/// A client that makes events as fast as they are taken must not keep us at it.
constexpr std::size_t mostEventsAtOnce = 4096;

}  // namespace

struct X11Connection::Callbacks {
    struct Entry {
        EventCallback callback;
        bool active = true;
    };

    std::vector<std::shared_ptr<Entry>> entries;

    static Subscription add(const std::shared_ptr<Callbacks>& callbacks, EventCallback callback) {
        auto entry = std::make_shared<Entry>(std::move(callback));
        callbacks->entries.push_back(entry);
        return Subscription([weak = std::weak_ptr(callbacks), entry] {
            entry->active = false;
            if (const auto alive = weak.lock()) std::erase(alive->entries, entry);
        });
    }

    void call(const xcb_generic_event_t& event) const {
        const auto round = entries;
        for (const auto& entry : round) {
            if (entry->active) entry->callback(event);
        }
    }
};

std::expected<std::unique_ptr<X11Connection>, std::string> X11Connection::open() {
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        const char* display = std::getenv("DISPLAY");
        if (display == nullptr || *display == '\0')
            return std::unexpected("Cannot start without an X server: DISPLAY is not set.");
        return std::unexpected(fmt::format("Cannot connect to the X server at \"{}\".", display));
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    const int last = screens.rem - 1;
    screenNumber = std::clamp(screenNumber, 0, std::max(last, 0));
    for (int i = 0; i < screenNumber; ++i) xcb_screen_next(&screens);
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data, screenNumber));
}

X11Connection::X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber)
    : connection_(connection),
      screen_(screen),
      screenNumber_(screenNumber),
      listeners_(std::make_shared<Callbacks>()),
      handlers_(std::make_shared<Callbacks>()) {}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

std::optional<X11Failure> X11Connection::waitForData(Deadline deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return X11Failure::timeout;
    pollfd waiting{.fd = file(), .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, static_cast<int>(left.count())) < 0 && errno != EINTR) return X11Failure::lost;
    if (isLost()) return X11Failure::lost;
    return std::nullopt;
}

std::expected<X11Reply<void>, X11Failure> X11Connection::waitForReply(unsigned int sequence, Deadline deadline) {
    flush();
    for (;;) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        const bool answered = xcb_poll_for_reply(connection_, sequence, &reply, &error) != 0;
        const X11Reply<xcb_generic_error_t> ownedError(error);
        X11Reply<void> ownedReply(reply);
        if (ownedReply) return ownedReply;
        if (ownedError) return std::unexpected(X11Failure::error);
        if (isLost()) return std::unexpected(X11Failure::lost);
        if (answered) return std::unexpected(X11Failure::error);
        if (const auto failure = waitForData(deadline)) {
            xcb_discard_reply(connection_, sequence);
            return std::unexpected(*failure);
        }
    }
}

const xcb_query_extension_reply_t* X11Connection::extension(xcb_extension_t& id, Deadline deadline) {
    xcb_prefetch_extension_data(connection_, &id);
    // Once a later request is answered, the answer has arrived, and the library does not wait for it.
    const auto later = reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection_), deadline);
    if (!later) return nullptr;
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection_, &id);
    return data != nullptr && data->present != 0 ? data : nullptr;
}

std::expected<std::vector<std::uint8_t>, X11Failure> X11Connection::check(const std::vector<xcb_void_cookie_t>& cookies,
                                                                          Deadline deadline) {
    // Once a later request is answered, the errors of these have arrived if there are any.
    const auto later = reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection_), deadline);
    if (!later) {
        for (const xcb_void_cookie_t cookie : cookies) discard(cookie);
        return std::unexpected(later.error());
    }
    std::vector<std::uint8_t> codes;
    for (const xcb_void_cookie_t cookie : cookies) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
        codes.push_back(error ? error->error_code : std::uint8_t{0});
    }
    return codes;
}

void X11Connection::requestEvents(xcb_window_t window, std::uint32_t events) {
    std::uint32_t& all = requestedEvents_[window];
    all |= events;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &all);
}

/// The server uses the number of a window that is gone for another one some day.
void X11Connection::forgetRequestedEvents(const xcb_generic_event_t& event) {
    if (event.response_type == 0) {
        const auto& error = reinterpret_cast<const xcb_value_error_t&>(event);
        if (error.error_code == XCB_WINDOW) requestedEvents_.erase(error.bad_value);
    } else if (event.response_type == XCB_DESTROY_NOTIFY) {
        requestedEvents_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    }
}

void X11Connection::takeIn(X11Event event) {
    forgetRequestedEvents(*event);
    listeners_->call(*event);
    const bool isError = event->response_type == 0;  // of a request nobody waits for, such as on a closed window
    if (!isError) arrived_.push_back(std::move(event));
}

void X11Connection::takeInEvents() {
    for (std::size_t taken = 0; taken < mostEventsAtOnce; ++taken) {
        X11Event event{xcb_poll_for_event(connection_)};
        if (!event) return;
        takeIn(std::move(event));
    }
}

std::expected<void, X11Failure> X11Connection::waitForEvent(
    const std::function<bool(const xcb_generic_event_t&)>& wanted, Deadline deadline) {
    flush();
    for (;;) {
        while (X11Event event{xcb_poll_for_event(connection_)}) {
            const std::size_t before = arrived_.size();
            takeIn(std::move(event));
            if (arrived_.size() > before && wanted(*arrived_.back())) return {};
            if (std::chrono::steady_clock::now() >= deadline) return std::unexpected(X11Failure::timeout);
        }
        if (isLost()) return std::unexpected(X11Failure::lost);
        if (const auto failure = waitForData(deadline)) return std::unexpected(*failure);
    }
}

bool X11Connection::handleEvents() {
    flush();
    takeInEvents();
    for (std::size_t left = arrived_.size(); left > 0; --left) {
        const X11Event event = std::move(arrived_.front());
        arrived_.pop_front();
        handlers_->call(*event);
    }
    flush();
    takeInEvents();  // what arrived with the flush would else wait for the next event
    return !arrived_.empty();
}

Subscription X11Connection::listen(EventCallback callback) {
    return Callbacks::add(listeners_, std::move(callback));
}

Subscription X11Connection::handle(EventCallback callback) {
    return Callbacks::add(handlers_, std::move(callback));
}

AXError asAXError(X11Failure failure) {
    switch (failure) {
        case X11Failure::error: return AXError::invalidElement;
        case X11Failure::timeout:
        case X11Failure::lost: return AXError::cannotComplete;
    }
    std::unreachable();
}

}  // namespace velmorand

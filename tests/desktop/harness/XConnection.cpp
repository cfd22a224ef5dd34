#include "desktop/harness/XConnection.h"

#include "desktop/harness/Deadline.h"

#include <fmt/format.h>
#include <poll.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace velmorand::desktop {

namespace {

constexpr std::uint32_t propertyLimitInWords = 16 * 1024;

}  // namespace

std::expected<XConnection, HarnessError> XConnection::open(const std::string& displayName) {
    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(displayName.c_str(), &screenNumber));
    if (const int error = xcb_connection_has_error(connection.get()); error != 0) {
        return std::unexpected(HarnessError{fmt::format("no X connection to '{}' (error {})", displayName, error)});
    }
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; screen.rem > 1 && screenNumber > 0; --screenNumber) xcb_screen_next(&screen);
    return XConnection(std::move(connection), screen.data);
}

bool XConnection::isAlive() const {
    return xcb_connection_has_error(raw()) == 0;
}

void* XConnection::rawReply(unsigned sequence) {
    const Deadline deadline(patience);
    xcb_flush(raw());
    while (isAlive()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(raw(), sequence, &reply, &error) != 0) {
            std::free(error);
            return reply;
        }
        if (deadline.passed()) break;
        pollfd entry{xcb_get_file_descriptor(raw()), POLLIN, 0};
        poll(&entry, 1, static_cast<int>(deadline.remaining().count()));
    }
    xcb_discard_reply(raw(), sequence);
    return nullptr;
}

void XConnection::synchronise() {
    [[maybe_unused]] const auto answer = reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(raw()));
}

xcb_atom_t XConnection::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    const auto answer =
        reply<xcb_intern_atom_reply_t>(xcb_intern_atom(raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!answer) return XCB_ATOM_NONE;
    return atoms_.emplace(name, answer->atom).first->second;
}

std::string XConnection::atomName(xcb_atom_t atom) {
    const auto answer = reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(raw(), atom));
    if (!answer) return {};
    return {xcb_get_atom_name_name(answer.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(answer.get()))};
}

std::optional<XProperty> XConnection::property(xcb_window_t window, std::string_view name) {
    const auto answer = reply<xcb_get_property_reply_t>(
        xcb_get_property(raw(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, propertyLimitInWords));
    if (!answer || answer->type == XCB_ATOM_NONE) return std::nullopt;
    const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(answer.get()));
    return XProperty{answer->type, answer->format, {bytes, bytes + xcb_get_property_value_length(answer.get())}};
}

std::vector<std::uint32_t> XConnection::numbers(xcb_window_t window, std::string_view name) {
    const auto value = property(window, name);
    if (!value || value->format != 32 || value->bytes.empty()) return {};
    std::vector<std::uint32_t> numbers(value->bytes.size() / sizeof(std::uint32_t));
    std::memcpy(numbers.data(), value->bytes.data(), numbers.size() * sizeof(std::uint32_t));
    return numbers;
}

std::optional<std::string> XConnection::text(xcb_window_t window, std::string_view name) {
    const auto value = property(window, name);
    if (!value || value->format != 8) return std::nullopt;
    return std::string(value->bytes.begin(), value->bytes.end());
}

void XConnection::sendToWindowManager(xcb_window_t window, std::string_view message,
                                      std::array<std::uint32_t, 5> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(raw(), 0, root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(raw());
}

void XConnection::watch(xcb_window_t window) {
    if (!std::exchange(watched_[window], true)) {
        std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        if (window == root()) mask |= XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(raw(), window, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(raw());
    }
}

void XConnection::waitForEvent(std::chrono::milliseconds timeout) {
    xcb_flush(raw());
    // Events that arrived together with an earlier reply are already in memory, where poll() does not see them.
    if (dropEvents()) return;
    pollfd entry{xcb_get_file_descriptor(raw()), POLLIN, 0};
    const int descriptors = isAlive() ? 1 : 0;
    poll(&entry, static_cast<nfds_t>(descriptors), static_cast<int>(timeout.count()));
    dropEvents();
}

bool XConnection::dropEvents() {
    bool any = false;
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(raw()))) any = true;
    return any;
}

}  // namespace velmorand::desktop

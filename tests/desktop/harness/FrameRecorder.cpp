#include "desktop/harness/FrameRecorder.h"

#include "desktop/harness/Deadline.h"

#include <poll.h>

#include <algorithm>
#include <memory>

namespace velmorand::desktop {
namespace {

constexpr std::chrono::milliseconds interval{2};
constexpr std::uint32_t allFourNumbers = 0xfU << 8U;

}  // namespace

std::expected<FrameRecorder, HarnessError> FrameRecorder::attach(const std::string& displayName, xcb_window_t window) {
    auto connection = XConnection::open(displayName);
    if (!connection) return std::unexpected(connection.error());
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection->raw(), connection->root(), XCB_CW_EVENT_MASK, &mask);
    [[maybe_unused]] const auto known = connection->atom("_NET_MOVERESIZE_WINDOW");
    connection->synchronise();
    return FrameRecorder(std::move(*connection), window);
}

bool FrameRecorder::recordUntil(const std::function<bool()>& finished, std::chrono::milliseconds timeout) {
    const Deadline deadline(timeout);
    while (!deadline.passed()) {
        pollfd entry{xcb_get_file_descriptor(connection_.raw()), POLLIN, 0};
        poll(&entry, 1, static_cast<int>(interval.count()));
        takeRequests();
        if (finished()) {
            // What was sent before is on its way.
            connection_.synchronise();
            takeRequests();
            return true;
        }
    }
    return false;
}

void FrameRecorder::takeRequests() {
    const auto now = std::chrono::steady_clock::now();
    const xcb_atom_t moveAndResize = connection_.atom("_NET_MOVERESIZE_WINDOW");
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(connection_.raw()),
                                                                                  &std::free}) {
        if ((event->response_type & 0x7fU) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.window != window_ || message.type != moveAndResize) continue;
        const auto* data = message.data.data32;
        const auto number = [data](int at) { return static_cast<int>(data[at]); };
        requests_.push_back({.at = now,
                             .clientRect = {number(1), number(2), number(3), number(4)},
                             .isWhole = (data[0] & allFourNumbers) == allFourNumbers});
    }
}

}  // namespace velmorand::desktop

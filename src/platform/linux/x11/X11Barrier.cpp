#include "platform/linux/x11/X11Barrier.h"

namespace velmorand {
namespace {

/// The helper's widths tell barriers apart; they only have to differ from each other for a while.
constexpr std::uint32_t helperWidths = 1000;

std::uint32_t helperWidth(std::uint32_t barrier) {
    return 1 + barrier % helperWidths;
}

}  // namespace

X11Barrier::X11Barrier(X11Connection& connection)
    : connection_(connection), helper_(xcb_generate_id(connection.raw())) {
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, helper_, connection.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    listener_ = connection.listen([this](const xcb_generic_event_t& event) { note(event); });
}

X11Barrier::~X11Barrier() {
    xcb_destroy_window(connection_.raw(), helper_);
}

bool X11Barrier::isOwed() {
    connection_.takeInEvents();
    return answered_ != sent_;
}

void X11Barrier::windowManagerChanged() {
    answered_ = sent_;
}

/// Twice, because some window managers apply a geometry only at the end of the turn in which they read it.
std::expected<void, AXError> X11Barrier::wait(Deadline deadline) {
    if (auto first = pass(deadline); !first) return first;
    return pass(deadline);
}

std::expected<void, AXError> X11Barrier::pass(Deadline deadline) {
    const std::uint32_t width = helperWidth(++sent_);
    xcb_configure_window(connection_.raw(), helper_, XCB_CONFIG_WINDOW_WIDTH, &width);
    const auto passed =
        connection_.waitForEvent([this](const xcb_generic_event_t&) { return answered_ == sent_; }, deadline);
    if (!passed) return std::unexpected(AXError::cannotComplete);
    return {};
}

/// Answers come in order, so one answers every barrier before it too.
void X11Barrier::note(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_CONFIGURE_NOTIFY || isSentEvent(event)) return;
    const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (change.window != helper_) return;
    for (std::uint32_t barrier = answered_ + 1; barrier <= sent_; ++barrier) {
        if (helperWidth(barrier) != change.width) continue;
        answered_ = barrier;
        return;
    }
}

}  // namespace velmorand

#include "platform/linux/x11/X11FrameWriter.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

using std::chrono::steady_clock;

/// Of the desktop's conventions (`_NET_MOVERESIZE_WINDOW`, `_NET_WM_STATE`).
constexpr std::uint32_t staticGravity = 10;
constexpr std::uint32_t allFourFields = 0xFU << 8U;
constexpr std::uint32_t fromPager = 2;
constexpr std::uint32_t removeState = 0;

/// How long after un-maximising a change of the shadow still belongs to it, and how long a read waits for one.
/// Clients were seen to declare it 2 to 28 ms after the change of state.
constexpr std::chrono::milliseconds shadowMayComeLate{250};
constexpr std::chrono::milliseconds readWaitsForShadow{60};

/// The helper's widths tell barriers apart; they only have to differ from each other for a while.
constexpr std::uint32_t helperWidths = 1000;

std::uint32_t helperWidth(std::uint32_t barrier) {
    return 1 + barrier % helperWidths;
}

/// Some window managers place a client that once had a border of its own (they take it off) lower and further right by
/// that border, whose width no property tells. It is small, and the same on both axes.
constexpr double largestClientBorder = 4;

bool isClientBorder(Point offset) {
    return offset.x == offset.y && offset.x > 0 && offset.x <= largestClientBorder;
}

std::uint32_t asWord(double value) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
}

}  // namespace

X11FrameWriter::X11FrameWriter(X11Connection& connection, const X11Atoms& atoms)
    : connection_(connection), atoms_(atoms), helper_(xcb_generate_id(connection.raw())) {
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, helper_, connection.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    listener_ = connection.listen([this](const xcb_generic_event_t& event) { noteEvent(event); });
    handler_ = connection.handle([this](const xcb_generic_event_t& event) { reassert(event); });
}

X11FrameWriter::~X11FrameWriter() {
    xcb_destroy_window(connection_.raw(), helper_);
}

bool X11FrameWriter::isWaitingForWindowManager() {
    connection_.takeInEvents();
    return barriersAnswered_ != barriersSent_;
}

std::expected<Rect, AXError> X11FrameWriter::place(xcb_window_t window, const Rect& visible, Deadline deadline) {
    if (isWaitingForWindowManager()) return std::unexpected(AXError::cannotComplete);
    auto facts = readWindowFacts(connection_, atoms_, window, deadline);
    if (!facts) return std::unexpected(asAXError(facts.error()));
    if (facts->fullScreen) return std::unexpected(AXError::attributeUnsupported);

    if (freshlyNormal_ && freshlyNormal_->window == window) freshlyNormal_->visible = visible;
    const bool leavesState = facts->isMaximized() || facts->shaded;
    if (!leavesState && facts->geometry.visible() == visible) return visible;
    if (leavesState) {
        const bool mayDeclareShadow = facts->declaresShadow;
        if (auto normal = putBackToNormal(window, *facts, deadline); !normal) return std::unexpected(normal.error());
        facts = readWindowFacts(connection_, atoms_, window, deadline);
        if (!facts) return std::unexpected(asAXError(facts.error()));
        const auto now = steady_clock::now();
        freshlyNormal_ =
            FreshlyNormal{window, visible, now + shadowMayComeLate, mayDeclareShadow ? now + readWaitsForShadow : now};
    }

    const Rect client = facts->geometry.clientFor(visible);
    const auto settled = placeClient(window, client, deadline);
    if (!settled) return settled;
    const Point offset{settled->x - visible.x, settled->y - visible.y};
    if (!isClientBorder(offset)) return settled;
    return placeClient(window, {client.x - offset.x, client.y - offset.y, client.width, client.height}, deadline);
}

std::expected<Rect, AXError> X11FrameWriter::placeClient(xcb_window_t window, const Rect& client, Deadline deadline) {
    sendPlacement(window, client);
    if (auto acted = waitForWindowManager(deadline); !acted) return std::unexpected(acted.error());
    const auto settled = readWindowFacts(connection_, atoms_, window, deadline);
    if (!settled) return std::unexpected(asAXError(settled.error()));
    return settled->geometry.visible();
}

std::expected<X11WindowFacts, AXError> X11FrameWriter::facts(xcb_window_t window, Reading reading, Deadline deadline) {
    if (reading == Reading::settled) waitForShadow(window, deadline);
    const auto facts = readWindowFacts(connection_, atoms_, window, deadline);
    if (!facts) return std::unexpected(asAXError(facts.error()));
    return *facts;
}

std::expected<void, AXError> X11FrameWriter::putBackToNormal(xcb_window_t window, const X11WindowFacts& facts,
                                                             Deadline deadline) {
    if (facts.isMaximized()) {
        sendStateRemoval(window, atoms_[X11AtomName::netWMStateMaximizedVertically],
                         atoms_[X11AtomName::netWMStateMaximizedHorizontally]);
    }
    if (facts.shaded) sendStateRemoval(window, atoms_[X11AtomName::netWMStateShaded], XCB_ATOM_NONE);
    return waitForWindowManager(deadline);
}

/// Twice, because some window managers apply a geometry only at the end of the turn in which they read it.
std::expected<void, AXError> X11FrameWriter::waitForWindowManager(Deadline deadline) {
    if (auto first = barrier(deadline); !first) return first;
    return barrier(deadline);
}

/// The window manager gets this request for a window it does not manage behind ours, and lets it pass: when the
/// helper has its new width, what was sent before has been read.
std::expected<void, AXError> X11FrameWriter::barrier(Deadline deadline) {
    const std::uint32_t width = helperWidth(++barriersSent_);
    xcb_configure_window(connection_.raw(), helper_, XCB_CONFIG_WINDOW_WIDTH, &width);
    const auto answered = connection_.waitForEvent(
        [this](const xcb_generic_event_t&) { return barriersAnswered_ == barriersSent_; }, deadline);
    if (!answered) return std::unexpected(AXError::cannotComplete);
    return {};
}

void X11FrameWriter::sendPlacement(xcb_window_t window, const Rect& client) {
    sendToRoot(window, atoms_[X11AtomName::netMoveResizeWindow],
               {.data32 = {staticGravity | allFourFields | fromPager << 12U, asWord(client.x), asWord(client.y),
                           asWord(client.width), asWord(client.height)}});
}

void X11FrameWriter::sendStateRemoval(xcb_window_t window, xcb_atom_t first, xcb_atom_t second) {
    sendToRoot(window, atoms_[X11AtomName::netWMState], {.data32 = {removeState, first, second, fromPager, 0}});
}

void X11FrameWriter::sendToRoot(xcb_window_t window, xcb_atom_t message, const xcb_client_message_data_t& data) {
    const xcb_client_message_event_t event{.response_type = XCB_CLIENT_MESSAGE,
                                           .format = 32,
                                           .sequence = 0,
                                           .window = window,
                                           .type = message,
                                           .data = data};
    xcb_send_event(connection_.raw(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

void X11FrameWriter::waitForShadow(xcb_window_t window, Deadline deadline) {
    connection_.takeInEvents();
    if (!freshlyNormal_ || freshlyNormal_->window != window || freshlyNormal_->shadowDeclared) return;
    const Deadline until = std::min(deadline, freshlyNormal_->readUntil);
    if (steady_clock::now() >= until) return;
    // A client that stays silent costs the wait once; afterwards a change is followed by its event alone.
    [[maybe_unused]] const auto declared = connection_.waitForEvent(
        [this](const xcb_generic_event_t&) { return freshlyNormal_ && freshlyNormal_->shadowDeclared; }, until);
}

bool X11FrameWriter::isShadowDeclaration(const xcb_generic_event_t& event, const FreshlyNormal& placed) const {
    if (eventType(event) != XCB_PROPERTY_NOTIFY) return false;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    return change.window == placed.window && change.atom == atoms_[X11AtomName::gtkFrameExtents];
}

void X11FrameWriter::noteEvent(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_DESTROY_NOTIFY && !isSentEvent(event) && freshlyNormal_ &&
        reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == freshlyNormal_->window)
        freshlyNormal_.reset();
    if (eventType(event) == XCB_CONFIGURE_NOTIFY && !isSentEvent(event)) {
        const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (change.window == helper_) noteBarrierAnswer(change.width);
    }
    if (freshlyNormal_ && isShadowDeclaration(event, *freshlyNormal_)) freshlyNormal_->shadowDeclared = true;
}

/// Answers come in order, so one answers every barrier before it too.
void X11FrameWriter::noteBarrierAnswer(std::uint32_t width) {
    for (std::uint32_t barrier = barriersAnswered_ + 1; barrier <= barriersSent_; ++barrier) {
        if (helperWidth(barrier) != width) continue;
        barriersAnswered_ = barrier;
        return;
    }
}

void X11FrameWriter::windowManagerChanged() {
    barriersAnswered_ = barriersSent_;
}

/// The frame was placed with the shadow known then; it is placed once more with the one declared since.
void X11FrameWriter::reassert(const xcb_generic_event_t& event) {
    if (!freshlyNormal_ || !isShadowDeclaration(event, *freshlyNormal_) || isWaitingForWindowManager()) return;
    const FreshlyNormal placed = *freshlyNormal_;
    const auto now = steady_clock::now();
    if (now > placed.until) {
        freshlyNormal_.reset();
        return;
    }
    // A declaration may also say what was known already; only one that matters uses the re-assertion up.
    const auto facts = readWindowFacts(connection_, atoms_, placed.window, now + readWaitsForShadow);
    if (!facts || facts->isMaximized() || facts->fullScreen || facts->geometry.visible() == placed.visible) return;
    freshlyNormal_.reset();
    sendPlacement(placed.window, facts->geometry.clientFor(placed.visible));
}

}  // namespace velmorand

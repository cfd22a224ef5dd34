#include "platform/linux/x11/X11FrameWriter.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace velmorand {
namespace {

using std::chrono::steady_clock;

/// How long after un-maximising a change of the shadow still belongs to it, and how long a read waits for one.
/// Clients were seen to declare it 2 to 28 ms after the change of state.
constexpr std::chrono::milliseconds shadowMayComeLate{250};
constexpr std::chrono::milliseconds readWaitsForShadow{60};

/// Some clients declare their shadow in two steps; after this long without another one it is the last.
constexpr std::chrono::milliseconds shadowSettles{10};

/// Some window managers place a client that once had a border of its own (they take it off) lower and further right by
/// that border, whose width no property tells. It is small, and the same on both axes.
constexpr double largestClientBorder = 4;

/// Whether nothing but the shadow, and the client by as much, is different from what it was. A window that is anywhere
/// else was put there by somebody.
bool hasChangedItsShadow(const X11FrameGeometry& landed, const X11FrameGeometry& seen) {
    const X11Extents& now = seen.shadow;
    const X11Extents& before = landed.shadow;
    if (now == before) return false;
    const double most = std::max({std::abs(now.left - before.left), std::abs(now.right - before.right),
                                  std::abs(now.top - before.top), std::abs(now.bottom - before.bottom)});
    const auto isNear = [most](double one, double other) { return std::abs(one - other) <= most; };
    return isNear(seen.client.minX(), landed.client.minX()) && isNear(seen.client.minY(), landed.client.minY()) &&
           isNear(seen.client.maxX(), landed.client.maxX()) && isNear(seen.client.maxY(), landed.client.maxY());
}

/// Whether the window stayed where it was placed and has the size again that it had before it was maximised.
bool hasTakenNormalSize(const X11FrameGeometry& landed, const X11FrameGeometry& seen, const Size& normalSize) {
    return seen.visible().origin() == landed.visible().origin() && seen.visible().size() == normalSize;
}

/// Whether the window looks like `visible`, apart from what its size steps take off.
bool isWhereItBelongs(const X11WindowFacts& facts, const Rect& visible) {
    const Rect wanted = facts.geometry.clientFor(visible);
    const Rect& client = facts.geometry.client;
    return wanted.origin() == client.origin() && facts.sizeHints.rounded(wanted.size()) == client.size();
}

Rect onWholePixels(const Rect& frame) {
    return Rect::fromEdges(std::round(frame.minX()), std::round(frame.minY()), std::round(frame.maxX()),
                           std::round(frame.maxY()));
}

bool isClientBorder(Point offset) {
    return offset.x == offset.y && offset.x > 0 && offset.x <= largestClientBorder;
}

}  // namespace

bool isKeptByItsShadow(const X11WindowFacts& before, const X11WindowFacts& after, const Rect& visible) {
    const X11Extents& shadow = after.geometry.shadow;
    const Rect seen = after.geometry.visible();
    if (shadow == X11Extents{} || isWhereItBelongs(after, visible) || after.isMaximized()) return false;
    if (!before.sizeHints.allows(before.geometry.clientFor(visible).size())) return false;
    const double across = shadow.left + shadow.right;
    const double down = shadow.top + shadow.bottom;
    return std::abs(seen.minX() - visible.minX()) <= across && std::abs(seen.maxX() - visible.maxX()) <= across &&
           std::abs(seen.minY() - visible.minY()) <= down && std::abs(seen.maxY() - visible.maxY()) <= down;
}

bool isIgnored(const X11WindowFacts& before, const X11WindowFacts& after, const Rect& visible) {
    if (after.geometry != before.geometry || after.isMaximized()) return false;
    return !isWhereItBelongs(before, visible) && before.sizeHints.allows(before.geometry.clientFor(visible).size());
}

X11FrameWriter::X11FrameWriter(X11Connection& connection, const X11Atoms& atoms, X11WindowManager& manager)
    : connection_(connection),
      atoms_(atoms),
      manager_(manager),
      barrier_(connection),
      requests_(connection, atoms),
      listener_(connection.listen([this](const xcb_generic_event_t& event) { noteEvent(event); })),
      handler_(connection.handle([this](const xcb_generic_event_t& event) { reassert(event); })) {}

void X11FrameWriter::windowManagerChanged() {
    barrier_.windowManagerChanged();
    lastRefusal_.reset();
    freshlyNormal_.reset();
}

std::expected<Rect, AXError> X11FrameWriter::place(xcb_window_t window, const Rect& frame, Deadline deadline) {
    const Rect visible = onWholePixels(frame);
    if (isWaitingForWindowManager()) return std::unexpected(AXError::cannotComplete);
    auto facts = read(window, deadline);
    if (!facts) return std::unexpected(facts.error());
    if (facts->fullScreen) return std::unexpected(AXError::attributeUnsupported);

    if (freshlyNormal_ && freshlyNormal_->window == window) freshlyNormal_->visible = visible;
    const bool leavesState = facts->isMaximized() || facts->shaded;
    if (!leavesState && facts->geometry.visible() == visible) return visible;
    if (leavesState) facts = putBackToNormal(window, *facts, visible, deadline);
    if (!facts) return std::unexpected(facts.error());

    auto settled = placeOnce(window, *facts, visible, manager_.placementMethod(), deadline);
    if (settled && isKeptByItsShadow(*facts, *settled, visible))
        settled = placeWithShadowToldAgain(window, *settled, visible, deadline);
    if (settled && isIgnored(*facts, *settled, visible)) settled = placeInOtherWays(window, *facts, visible, deadline);
    if (!settled) return std::unexpected(settled.error());
    if (freshlyNormal_ && freshlyNormal_->window == window) freshlyNormal_->landed = settled->geometry;
    return settled->geometry.visible();
}

X11FrameWriter::FactsOrError X11FrameWriter::facts(xcb_window_t window, Reading reading, Deadline deadline) {
    if (reading == Reading::settled) waitForShadow(window, deadline);
    return read(window, deadline);
}

X11FrameWriter::FactsOrError X11FrameWriter::read(xcb_window_t window, Deadline deadline) {
    auto facts = readWindowFacts(connection_, atoms_, window, deadline);
    if (!facts) return std::unexpected(asAXError(facts.error()));
    if (manager_.tellsFrameExtents()) return *facts;
    const auto decorations = measureDecorations(connection_, window, facts->geometry.client, deadline);
    if (!decorations) return std::unexpected(asAXError(decorations.error()));
    facts->geometry.frame = *decorations;
    facts->sizeHints.gravity =
        XCB_GRAVITY_STATIC;  // such window managers place the client itself, whatever the hints say
    return *facts;
}

X11FrameWriter::FactsOrError X11FrameWriter::putBackToNormal(xcb_window_t window, const X11WindowFacts& facts,
                                                             const Rect& visible, Deadline deadline) {
    if (facts.isMaximized()) requests_.unmaximize(window);
    if (facts.shaded) requests_.unshade(window);
    if (auto acted = barrier_.wait(deadline); !acted) return std::unexpected(acted.error());
    const auto normal = read(window, deadline);
    if (!normal) return normal;
    const auto now = steady_clock::now();
    freshlyNormal_ = FreshlyNormal{.window = window,
                                   .normalSize = normal->geometry.visible().size(),
                                   .visible = visible,
                                   .landed = {},
                                   .until = now + shadowMayComeLate,
                                   .readUntil = facts.declaresShadow ? now + readWaitsForShadow : now};
    return normal;
}

X11FrameWriter::FactsOrError X11FrameWriter::placeOnce(xcb_window_t window, const X11WindowFacts& facts,
                                                       const Rect& visible, X11PlacementMethod method,
                                                       Deadline deadline) {
    const Rect client = facts.geometry.clientFor(visible);
    const auto settled = request(window, facts, client, method, deadline);
    if (!settled) return settled;
    const Rect seen = settled->geometry.visible();
    const Point offset{seen.x - visible.x, seen.y - visible.y};
    if (!isClientBorder(offset)) return settled;
    return request(window, facts, {client.x - offset.x, client.y - offset.y, client.width, client.height}, method,
                   deadline);
}

X11FrameWriter::FactsOrError X11FrameWriter::request(xcb_window_t window, const X11WindowFacts& facts,
                                                     const Rect& client, X11PlacementMethod method, Deadline deadline) {
    requests_.place(window, facts, client, method);
    if (auto acted = barrier_.wait(deadline); !acted) return std::unexpected(acted.error());
    return read(window, deadline);
}

/// Some window managers miss the first declaration of a shadow and keep such a window on screen with all of its shadow.
/// Adding nothing to the property changes nothing, but makes everyone who watches it read it anew.
X11FrameWriter::FactsOrError X11FrameWriter::placeWithShadowToldAgain(xcb_window_t window, const X11WindowFacts& facts,
                                                                      const Rect& visible, Deadline deadline) {
    const bool wasDeclared = freshlyNormal_ && freshlyNormal_->shadowDeclared;  // which our own event says nothing of
    xcb_change_property(connection_.raw(), XCB_PROP_MODE_APPEND, window, atoms_[X11AtomName::gtkFrameExtents],
                        XCB_ATOM_CARDINAL, 32, 0, nullptr);
    auto settled = placeOnce(window, facts, visible, manager_.placementMethod(), deadline);
    if (freshlyNormal_ && freshlyNormal_->window == window) freshlyNormal_->shadowDeclared = wasDeclared;
    return settled;
}

/// A window in a tile that no property tells of leaves it by being maximised and put back; a window manager that does
/// not act on one kind of request may act on the other. A tiling window manager does neither: the window stays.
X11FrameWriter::FactsOrError X11FrameWriter::placeInOtherWays(xcb_window_t window, const X11WindowFacts& facts,
                                                              const Rect& visible, Deadline deadline) {
    const Refusal refusal{window, facts.geometry.visible(), visible};
    if (lastRefusal_ == refusal) return facts;  // nothing has changed since
    const X11PlacementMethod method = manager_.placementMethod();

    FactsOrError settled = facts;
    if (method == X11PlacementMethod::moveResizeMessage && manager_.maximizesWindows()) {
        settled = placeAfterMaximizing(window, facts, visible, deadline);
        if (!settled || settled->geometry != facts.geometry) return settled;
    }
    settled = placeOnce(window, facts, visible, otherThan(method), deadline);
    if (!settled) return settled;
    if (isIgnored(facts, *settled, visible)) lastRefusal_ = refusal;
    if (isWhereItBelongs(*settled, visible)) manager_.setPlacementMethod(otherThan(method));
    return settled;
}

X11FrameWriter::FactsOrError X11FrameWriter::placeAfterMaximizing(xcb_window_t window, const X11WindowFacts& facts,
                                                                  const Rect& visible, Deadline deadline) {
    requests_.maximize(window);
    requests_.unmaximize(window);
    const auto normal = putBackToNormal(window, facts, visible, deadline);
    if (!normal) return normal;
    return placeOnce(window, *normal, visible, manager_.placementMethod(), deadline);
}

void X11FrameWriter::waitForShadow(xcb_window_t window, Deadline deadline) {
    connection_.takeInEvents();
    if (!freshlyNormal_ || freshlyNormal_->window != window || freshlyNormal_->shadowDeclared) return;
    const Deadline until = std::min(deadline, freshlyNormal_->readUntil);
    if (steady_clock::now() >= until) return;
    const auto isDeclaration = [this](const xcb_generic_event_t& event) {
        return freshlyNormal_ && isShadowDeclaration(event, *freshlyNormal_);
    };
    // A client that stays silent costs the wait once; afterwards a change is followed by its event alone.
    bool another = connection_.waitForEvent(isDeclaration, until).has_value();
    while (another)
        another =
            connection_.waitForEvent(isDeclaration, std::min(until, steady_clock::now() + shadowSettles)).has_value();
}

bool X11FrameWriter::isShadowDeclaration(const xcb_generic_event_t& event, const FreshlyNormal& placed) const {
    if (eventType(event) != XCB_PROPERTY_NOTIFY) return false;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    return change.window == placed.window && change.atom == atoms_[X11AtomName::gtkFrameExtents];
}

bool X11FrameWriter::concerns(const xcb_generic_event_t& event, const FreshlyNormal& placed) const {
    if (isShadowDeclaration(event, placed)) return true;
    return eventType(event) == XCB_CONFIGURE_NOTIFY &&
           reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == placed.window;
}

void X11FrameWriter::noteEvent(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_DESTROY_NOTIFY && !isSentEvent(event)) {
        const xcb_window_t gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (freshlyNormal_ && freshlyNormal_->window == gone) freshlyNormal_.reset();
        if (lastRefusal_ && lastRefusal_->window == gone) lastRefusal_.reset();
    }
    if (freshlyNormal_ && isShadowDeclaration(event, *freshlyNormal_)) freshlyNormal_->shadowDeclared = true;
}

/// The frame was placed with what was known then; it is placed once more after what the client has changed since.
void X11FrameWriter::reassert(const xcb_generic_event_t& event) {
    if (!freshlyNormal_ || !concerns(event, *freshlyNormal_) || isWaitingForWindowManager()) return;
    const FreshlyNormal placed = *freshlyNormal_;
    const auto now = steady_clock::now();
    if (now > placed.until) {
        freshlyNormal_.reset();
        return;
    }
    // An event may also tell of the placement itself, or of what was known already; that uses nothing up.
    const auto facts = read(placed.window, now + readWaitsForShadow);
    if (!facts || facts->isMaximized() || facts->fullScreen) return;
    const X11FrameGeometry& seen = facts->geometry;
    if (!placed.landed) return;
    const X11FrameGeometry landed = *placed.landed;
    if (seen.visible() == placed.visible || seen == landed) return;
    const bool isOfItsOwn = isShadowDeclaration(event, placed) ? hasChangedItsShadow(landed, seen)
                                                               : hasTakenNormalSize(landed, seen, placed.normalSize);
    if (!isOfItsOwn) return;
    freshlyNormal_.reset();
    requests_.place(placed.window, *facts, facts->geometry.clientFor(placed.visible), manager_.placementMethod());
}

}  // namespace velmorand

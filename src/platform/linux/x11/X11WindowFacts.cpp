#include "platform/linux/x11/X11WindowFacts.h"

#include "platform/linux/x11/X11PropertyReader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmorand {
namespace {

/// The conventions' value of WM_STATE for a minimised window (`IconicState`).
constexpr std::uint32_t iconicState = 3;

/// Window managers put one or two windows around a client; a deeper nest is none of theirs.
constexpr int deepestNest = 8;

struct TypeRow {
    X11AtomName atom;
    X11WindowType type;
};

constexpr std::array<TypeRow, 12> typeRows{{
    {X11AtomName::netWMWindowTypeNormal, X11WindowType::normal},
    {X11AtomName::netWMWindowTypeDialog, X11WindowType::dialog},
    {X11AtomName::netWMWindowTypeUtility, X11WindowType::utility},
    {X11AtomName::netWMWindowTypeDesktop, X11WindowType::desktop},
    {X11AtomName::netWMWindowTypeDock, X11WindowType::dock},
    {X11AtomName::netWMWindowTypeToolbar, X11WindowType::toolbar},
    {X11AtomName::netWMWindowTypeMenu, X11WindowType::menu},
    {X11AtomName::netWMWindowTypeDropdownMenu, X11WindowType::menu},
    {X11AtomName::netWMWindowTypePopupMenu, X11WindowType::menu},
    {X11AtomName::netWMWindowTypeTooltip, X11WindowType::notification},
    {X11AtomName::netWMWindowTypeNotification, X11WindowType::notification},
    {X11AtomName::netWMWindowTypeSplash, X11WindowType::splash},
}};

/// Everything that is asked about a window, under way at the same time.
class FactsRequest {
public:
    FactsRequest(X11Connection& connection, const X11Atoms& atoms, xcb_window_t window)
        : connection_(connection),
          atoms_(atoms),
          attributes_(xcb_get_window_attributes(connection.raw(), window)),
          geometry_(xcb_get_geometry(connection.raw(), window)),
          position_(xcb_translate_coordinates(connection.raw(), window, connection.root(), 0, 0)),
          wmState_(numbers(window, atoms[X11AtomName::wmState])),
          states_(numbers(window, atoms[X11AtomName::netWMState])),
          types_(numbers(window, atoms[X11AtomName::netWMWindowType])),
          transientFor_(numbers(window, XCB_ATOM_WM_TRANSIENT_FOR)),
          frameExtents_(numbers(window, atoms[X11AtomName::netFrameExtents])),
          shadowExtents_(numbers(window, atoms[X11AtomName::gtkFrameExtents])),
          allowedActions_(numbers(window, atoms[X11AtomName::netWMAllowedActions])),
          normalHints_(numbers(window, XCB_ATOM_WM_NORMAL_HINTS)) {}

    std::expected<X11WindowFacts, X11Failure> collect(Deadline deadline) {
        auto facts = collectGeometry(deadline);
        collectStates(facts, deadline);
        const bool isTransient = decodeFirstItem(read(transientFor_, deadline), XCB_ATOM_WINDOW).value_or(0) != 0;
        facts.type = decodeWindowType(read(types_, deadline), atoms_, isTransient);
        facts.geometry.frame = decodeExtents(read(frameExtents_, deadline), XCB_ATOM_CARDINAL);
        const X11PropertyValue shadow = read(shadowExtents_, deadline);
        facts.declaresShadow = shadow.type != XCB_ATOM_NONE;
        facts.geometry.shadow = decodeExtents(shadow, XCB_ATOM_CARDINAL);
        facts.geometry = facts.geometry.sanitized();
        collectAllowances(facts, deadline);
        if (failure_) return std::unexpected(*failure_);
        return facts;
    }

private:
    [[nodiscard]] X11PropertyRequest numbers(xcb_window_t window, xcb_atom_t property) const {
        return requestProperty(connection_, window, property, x11_property_limit::numbers);
    }

    /// Every reply is collected also after a failure, so that none is left behind.
    template <typename Reply, typename Cookie>
    X11Reply<Reply> take(Cookie cookie, Deadline deadline) {
        auto reply = connection_.reply<Reply>(cookie, deadline);
        if (reply) return std::move(*reply);
        failure_ = failure_.value_or(reply.error());
        return nullptr;
    }

    X11PropertyValue read(X11PropertyRequest request, Deadline deadline) {
        auto value = readProperty(connection_, request, deadline);
        if (value) return std::move(*value);
        failure_ = failure_.value_or(value.error());
        return {};
    }

    X11WindowFacts collectGeometry(Deadline deadline) {
        X11WindowFacts facts;
        const auto attributes = take<xcb_get_window_attributes_reply_t>(attributes_, deadline);
        const auto geometry = take<xcb_get_geometry_reply_t>(geometry_, deadline);
        const auto position = take<xcb_translate_coordinates_reply_t>(position_, deadline);
        if (attributes) {
            facts.overrideRedirect = attributes->override_redirect != 0;
            facts.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        }
        if (geometry && position) {
            facts.geometry.client = {static_cast<double>(position->dst_x), static_cast<double>(position->dst_y),
                                     static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
        }
        return facts;
    }

    void collectStates(X11WindowFacts& facts, Deadline deadline) {
        const xcb_atom_t wmState = atoms_[X11AtomName::wmState];
        facts.iconic = decodeFirstItem(read(wmState_, deadline), wmState) == iconicState;
        const auto states = decodeItems(read(states_, deadline), XCB_ATOM_ATOM).value_or(std::vector<std::uint32_t>{});
        const auto has = [&](X11AtomName name) { return std::ranges::count(states, atoms_[name]) > 0; };
        facts.hidden = has(X11AtomName::netWMStateHidden);
        facts.shaded = has(X11AtomName::netWMStateShaded);
        facts.fullScreen = has(X11AtomName::netWMStateFullscreen);
        facts.maximizedHorizontally = has(X11AtomName::netWMStateMaximizedHorizontally);
        facts.maximizedVertically = has(X11AtomName::netWMStateMaximizedVertically);
    }

    void collectAllowances(X11WindowFacts& facts, Deadline deadline) {
        const auto actions = decodeItems(read(allowedActions_, deadline), XCB_ATOM_ATOM);
        const bool listsActions = actions && !actions->empty();  // some window managers list none
        const auto allows = [&](X11AtomName name) {
            return !listsActions || std::ranges::count(*actions, atoms_[name]) > 0;
        };
        facts.sizeHints = decodeSizeHints(read(normalHints_, deadline), XCB_ATOM_WM_SIZE_HINTS);
        // Some window managers withdraw the actions of a maximised window, but it is put back to normal first.
        facts.allowsMove = facts.isMaximized() || allows(X11AtomName::netWMActionMove);
        facts.allowsResize =
            (facts.isMaximized() || allows(X11AtomName::netWMActionResize)) && !facts.sizeHints.isFixed();
    }

    X11Connection& connection_;
    const X11Atoms& atoms_;
    xcb_get_window_attributes_cookie_t attributes_;
    xcb_get_geometry_cookie_t geometry_;
    xcb_translate_coordinates_cookie_t position_;
    X11PropertyRequest wmState_;
    X11PropertyRequest states_;
    X11PropertyRequest types_;
    X11PropertyRequest transientFor_;
    X11PropertyRequest frameExtents_;
    X11PropertyRequest shadowExtents_;
    X11PropertyRequest allowedActions_;
    X11PropertyRequest normalHints_;
    std::optional<X11Failure> failure_;
};

}  // namespace

bool X11WindowFacts::isOrdinary() const {
    switch (type) {
        case X11WindowType::normal:
        case X11WindowType::dialog:
        case X11WindowType::utility:
        case X11WindowType::toolbar:
        case X11WindowType::desktop:
        case X11WindowType::other: return !overrideRedirect;
        case X11WindowType::dock:
        case X11WindowType::menu:
        case X11WindowType::splash:
        case X11WindowType::notification: return false;
    }
    std::unreachable();
}

std::expected<X11WindowFacts, X11Failure> readWindowFacts(X11Connection& connection, const X11Atoms& atoms,
                                                          xcb_window_t window, Deadline deadline) {
    return FactsRequest(connection, atoms, window).collect(deadline);
}

X11WindowType decodeWindowType(const X11PropertyValue& property, const X11Atoms& atoms, bool isTransient) {
    const auto claimed = decodeItems(property, XCB_ATOM_ATOM).value_or(std::vector<std::uint32_t>{});
    for (const std::uint32_t atom : claimed) {
        const auto row = std::ranges::find(typeRows, atom, [&](const TypeRow& known) { return atoms[known.atom]; });
        if (row != typeRows.end()) return row->type;
    }
    if (!claimed.empty()) return X11WindowType::other;
    return isTransient ? X11WindowType::dialog : X11WindowType::normal;
}

std::expected<X11Extents, X11Failure> measureDecorations(X11Connection& connection, xcb_window_t window,
                                                         const Rect& client, Deadline deadline) {
    xcb_window_t outermost = window;
    for (int depth = 0; depth < deepestNest; ++depth) {
        const auto tree =
            connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), outermost), deadline);
        if (!tree) return std::unexpected(tree.error());
        if ((*tree)->parent == connection.root() || (*tree)->parent == XCB_WINDOW_NONE) break;
        outermost = (*tree)->parent;
    }
    if (outermost == window) return X11Extents{};
    const auto geometry =
        connection.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection.raw(), outermost), deadline);
    if (!geometry) return std::unexpected(geometry.error());
    const double borders = 2.0 * (*geometry)->border_width;
    return extentsAround(client, {static_cast<double>((*geometry)->x), static_cast<double>((*geometry)->y),
                                  (*geometry)->width + borders, (*geometry)->height + borders});
}

}  // namespace velmorand

#include "platform/linux/x11/X11Panels.h"

#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11PropertyReader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmorand {

struct X11Panels::Candidate {
    xcb_window_t window;
    X11PropertyRequest partial;
    X11PropertyRequest whole;
    X11PropertyRequest desktop;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t position;
};

const std::vector<X11Strut>& X11Panels::struts(const Size& root, bool showsOneDesktop, Deadline deadline) {
    // What a panel changed before its events were asked for, nobody would tell of: a new one is read again.
    while (readPanels(root, showsOneDesktop, deadline)) {}
    return struts_;
}

bool X11Panels::readPanels(const Size& root, bool showsOneDesktop, Deadline deadline) {
    std::vector<Candidate> candidates;
    for (const xcb_window_t window : windowsThatMayBePanels(deadline)) candidates.push_back(ask(window));
    const auto currentDesktop =
        decodeFirstItem(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netCurrentDesktop],
                                        x11_property_limit::numbers, deadline),
                        XCB_ATOM_CARDINAL);

    std::set<xcb_window_t> panels;
    std::vector<X11Strut> struts;
    for (const Candidate& candidate : candidates) {
        const auto panel = answer(candidate, root, deadline);
        if (!panel) continue;
        watch(candidate.window);
        panels.insert(candidate.window);
        if (!panel->viewable || (showsOneDesktop && !isOnDesktop(panel->desktop, currentDesktop))) continue;
        struts.insert(struts.end(), panel->struts.begin(), panel->struts.end());
    }
    const bool isComplete = std::chrono::steady_clock::now() < deadline && !connection_.isLost();
    if (!isComplete) return false;
    const bool hasNewOnes = !std::ranges::includes(panels_, panels);
    panels_ = std::move(panels);
    struts_ = std::move(struts);
    return hasNewOnes;
}

bool X11Panels::concerns(const xcb_generic_event_t& event) const {
    switch (eventType(event)) {
        // A panel that was dropped from the list since is not known as one any more.
        case XCB_MAP_NOTIFY:
        case XCB_UNMAP_NOTIFY:
        case XCB_DESTROY_NOTIFY: return true;
        case XCB_CONFIGURE_NOTIFY:
            return panels_.contains(reinterpret_cast<const xcb_configure_notify_event_t&>(event).window);
        case XCB_PROPERTY_NOTIFY: break;
        default: return false;
    }
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const std::array ofPanels{atoms_[X11AtomName::netWMStrut], atoms_[X11AtomName::netWMStrutPartial],
                              atoms_[X11AtomName::netWMDesktop]};
    const std::array ofRoot{atoms_[X11AtomName::netClientList], atoms_[X11AtomName::netWorkArea],
                            atoms_[X11AtomName::netCurrentDesktop], atoms_[X11AtomName::netSupportingWMCheck]};
    const bool isOfRoot = change.window == connection_.root();
    return std::ranges::count(ofPanels, change.atom) > 0 || (isOfRoot && std::ranges::count(ofRoot, change.atom) > 0);
}

/// Some window managers keep panels out of their list; those panels are children of the root window, or of a frame
/// that is.
std::vector<xcb_window_t> X11Panels::windowsThatMayBePanels(Deadline deadline) {
    const auto tree = xcb_query_tree(connection_.raw(), connection_.root());
    std::vector<xcb_window_t> windows =
        decodeWindowList(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netClientList],
                                         x11_property_limit::windows, deadline),
                         XCB_ATOM_WINDOW);
    const auto ofRoot = children(tree, deadline);
    const auto ofFrames = framed(ofRoot, windows, deadline);
    windows.insert(windows.end(), ofRoot.begin(), ofRoot.end());
    windows.insert(windows.end(), ofFrames.begin(), ofFrames.end());
    std::ranges::sort(windows);
    const auto repeated = std::ranges::unique(windows);
    windows.erase(repeated.begin(), repeated.end());
    return windows;
}

/// What is in frames that hold no listed window.
std::vector<xcb_window_t> X11Panels::framed(std::span<const xcb_window_t> frames, std::span<const xcb_window_t> listed,
                                            Deadline deadline) {
    const auto isListed = [listed](xcb_window_t window) { return std::ranges::count(listed, window) > 0; };
    std::vector<xcb_query_tree_cookie_t> trees;
    for (const xcb_window_t frame : frames) {
        if (!isListed(frame)) trees.push_back(xcb_query_tree(connection_.raw(), frame));
    }
    std::vector<xcb_window_t> windows;
    for (const xcb_query_tree_cookie_t tree : trees) {
        const auto inside = children(tree, deadline);
        if (std::ranges::none_of(inside, isListed)) windows.insert(windows.end(), inside.begin(), inside.end());
    }
    return windows;
}

std::vector<xcb_window_t> X11Panels::children(xcb_query_tree_cookie_t cookie, Deadline deadline) {
    const auto tree = connection_.reply<xcb_query_tree_reply_t>(cookie, deadline);
    if (!tree) return {};
    const xcb_window_t* first = xcb_query_tree_children(tree->get());
    return {first, first + xcb_query_tree_children_length(tree->get())};
}

X11Panels::Candidate X11Panels::ask(xcb_window_t window) {
    const auto numbers = [this, window](X11AtomName property) {
        return requestProperty(connection_, window, atoms_[property], x11_property_limit::numbers);
    };
    return {window,
            numbers(X11AtomName::netWMStrutPartial),
            numbers(X11AtomName::netWMStrut),
            numbers(X11AtomName::netWMDesktop),
            xcb_get_window_attributes(connection_.raw(), window),
            xcb_get_geometry(connection_.raw(), window),
            xcb_translate_coordinates(connection_.raw(), window, connection_.root(), 0, 0)};
}

std::optional<X11Panels::Panel> X11Panels::answer(const Candidate& candidate, const Size& root, Deadline deadline) {
    const auto partial = readProperty(connection_, candidate.partial, deadline);
    const auto whole = readProperty(connection_, candidate.whole, deadline);
    const auto desktop = readProperty(connection_, candidate.desktop, deadline);
    const auto attributes = connection_.reply<xcb_get_window_attributes_reply_t>(candidate.attributes, deadline);
    const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(candidate.geometry, deadline);
    const auto position = connection_.reply<xcb_translate_coordinates_reply_t>(candidate.position, deadline);
    if (!partial || !whole || !desktop || !attributes || !geometry || !position) return std::nullopt;
    const Rect frame{static_cast<double>((*position)->dst_x), static_cast<double>((*position)->dst_y),
                     static_cast<double>((*geometry)->width), static_cast<double>((*geometry)->height)};
    auto struts = decodeStruts(*partial, *whole, XCB_ATOM_CARDINAL, root, frame);
    if (struts.empty()) return std::nullopt;
    return Panel{std::move(struts), (*attributes)->map_state == XCB_MAP_STATE_VIEWABLE,
                 decodeFirstItem(*desktop, XCB_ATOM_CARDINAL)};
}

void X11Panels::watch(xcb_window_t panel) {
    connection_.requestEvents(panel, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

}  // namespace velmorand

#include "platform/linux/x11/X11Monitors.h"

#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11PropertyReader.h"

#include <xcb/randr.h>

#include <algorithm>
#include <array>

namespace velmorand {
X11Monitors::X11Monitors(X11Connection& connection, const X11Atoms& atoms)
    : connection_(connection),
      atoms_(atoms),
      rootSize_{static_cast<double>(connection.screen().width_in_pixels),
                static_cast<double>(connection.screen().height_in_pixels)} {
    const Deadline deadline = std::chrono::steady_clock::now() + X11Connection::startTimeout;
    if (const auto* extension = connection.extension(xcb_randr_id, deadline)) {
        randrEvents_ = extension->first_event;
        xcb_randr_select_input(connection.raw(), connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    listener_ = connection.listen([this](const xcb_generic_event_t& event) {
        if (eventType(event) == XCB_CONFIGURE_NOTIFY) {
            const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            if (change.window == connection_.root()) monitorsAreCurrent_ = false;
        } else if (randrEvents_ != 0 && (eventType(event) == randrEvents_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                         eventType(event) == randrEvents_ + XCB_RANDR_NOTIFY)) {
            monitorsAreCurrent_ = false;
        }
    });
}

bool X11Monitors::concerns(const xcb_generic_event_t& event) const {
    const std::uint8_t type = eventType(event);
    if (type == XCB_CONFIGURE_NOTIFY)
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root();
    if (randrEvents_ != 0 &&
        (type == randrEvents_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randrEvents_ + XCB_RANDR_NOTIFY))
        return true;
    if (type != XCB_PROPERTY_NOTIFY) return false;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    const std::array interesting{atoms_[X11AtomName::netWMStrut], atoms_[X11AtomName::netWMStrutPartial]};
    const std::array onRoot{atoms_[X11AtomName::netClientList], atoms_[X11AtomName::netWorkArea],
                            atoms_[X11AtomName::netCurrentDesktop]};
    return std::ranges::count(interesting, change.atom) > 0 ||
           (change.window == connection_.root() && std::ranges::count(onRoot, change.atom) > 0);
}

std::vector<DisplayDescription> X11Monitors::displays(Deadline deadline) {
    readMonitors(deadline);
    const std::vector<X11Strut> reserved = struts(deadline);
    std::vector<DisplayDescription> displays;
    if (monitors_.empty()) return displays;
    const Rect primary = monitors_.front().frame;
    // From root coordinates (y downward) to the window server's, whose origin is the primary's bottom-left corner.
    const auto converted = [&](const Rect& rect) {
        return Rect{rect.minX() - primary.minX(), primary.maxY() - rect.maxY(), rect.width, rect.height};
    };
    for (const X11Monitor& monitor : monitors_) {
        displays.push_back({monitor.number, monitor.name, converted(monitor.frame),
                            converted(workArea(monitor, monitors_, reserved))});
    }
    return displays;
}

Point X11Monitors::origin(Deadline deadline) {
    connection_.takeInEvents();
    if (!monitorsAreCurrent_) readMonitors(deadline);
    return monitors_.empty() ? Point{} : monitors_.front().frame.origin();
}

void X11Monitors::readMonitors(Deadline deadline) {
    monitorsAreCurrent_ = true;  // an event during the reading sets it back
    auto answer = askServer(deadline);
    if (!answer) {
        monitorsAreCurrent_ = false;  // the old ones count until the server answers
        return;
    }
    monitors_ = arranged(std::move(*answer));
    if (monitors_.empty())
        monitors_ = {{connection_.root(), "Screen", {0, 0, rootSize_.width, rootSize_.height}, true}};
}

std::expected<std::vector<X11Monitor>, X11Failure> X11Monitors::askServer(Deadline deadline) {
    const auto root =
        connection_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection_.raw(), connection_.root()), deadline);
    if (!root) return std::unexpected(root.error());
    rootSize_ = {static_cast<double>((*root)->width), static_cast<double>((*root)->height)};
    std::vector<X11Monitor> monitors;
    if (randrEvents_ == 0) return monitors;
    const auto reply = connection_.reply<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(connection_.raw(), connection_.root(), 1), deadline);
    if (!reply) return std::unexpected(reply.error());
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply->get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const xcb_randr_monitor_info_t& info = *each.data;
        monitors.push_back({info.name,
                            nameOf(info.name, deadline),
                            {static_cast<double>(info.x), static_cast<double>(info.y), static_cast<double>(info.width),
                             static_cast<double>(info.height)},
                            info.primary != 0});
    }
    return monitors;
}

std::string X11Monitors::nameOf(xcb_atom_t atom, Deadline deadline) {
    if (const auto known = names_.find(atom); known != names_.end()) return known->second;
    const auto reply =
        connection_.reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(connection_.raw(), atom), deadline);
    if (!reply) return {};
    const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply->get()));
    return names_.emplace(atom, std::string(xcb_get_atom_name_name(reply->get()), length)).first->second;
}

/// Some window managers keep panels out of their list; those panels are children of the root window.
std::vector<xcb_window_t> X11Monitors::windowsThatMayBePanels(Deadline deadline) {
    const auto children = xcb_query_tree(connection_.raw(), connection_.root());
    std::vector<xcb_window_t> windows =
        decodeWindowList(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netClientList],
                                         x11_property_limit::windows, deadline),
                         XCB_ATOM_WINDOW);
    if (const auto tree = connection_.reply<xcb_query_tree_reply_t>(children, deadline)) {
        const xcb_window_t* first = xcb_query_tree_children(tree->get());
        windows.insert(windows.end(), first, first + xcb_query_tree_children_length(tree->get()));
    }
    std::ranges::sort(windows);
    const auto repeated = std::ranges::unique(windows);
    windows.erase(repeated.begin(), repeated.end());
    return windows;
}

std::vector<X11Strut> X11Monitors::struts(Deadline deadline) {
    struct Candidate {
        X11PropertyRequest partial;
        X11PropertyRequest whole;
        X11PropertyRequest desktop;
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t position;
    };
    const auto numbers = [this](xcb_window_t window, X11AtomName property) {
        return requestProperty(connection_, window, atoms_[property], x11_property_limit::numbers);
    };
    std::vector<Candidate> candidates;
    for (const xcb_window_t window : windowsThatMayBePanels(deadline)) {
        candidates.push_back({numbers(window, X11AtomName::netWMStrutPartial), numbers(window, X11AtomName::netWMStrut),
                              numbers(window, X11AtomName::netWMDesktop),
                              xcb_get_window_attributes(connection_.raw(), window),
                              xcb_get_geometry(connection_.raw(), window),
                              xcb_translate_coordinates(connection_.raw(), window, connection_.root(), 0, 0)});
    }
    const auto currentDesktop =
        decodeFirstItem(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netCurrentDesktop],
                                        x11_property_limit::numbers, deadline),
                        XCB_ATOM_CARDINAL);

    std::vector<X11Strut> struts;
    for (const Candidate& candidate : candidates) {
        const auto partial = readProperty(connection_, candidate.partial, deadline);
        const auto whole = readProperty(connection_, candidate.whole, deadline);
        const auto desktopProperty = readProperty(connection_, candidate.desktop, deadline);
        const auto attributes = connection_.reply<xcb_get_window_attributes_reply_t>(candidate.attributes, deadline);
        const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(candidate.geometry, deadline);
        const auto position = connection_.reply<xcb_translate_coordinates_reply_t>(candidate.position, deadline);
        if (!partial || !whole || !desktopProperty || !attributes || !geometry || !position) continue;
        if ((*attributes)->map_state != XCB_MAP_STATE_VIEWABLE) continue;
        const auto desktop = decodeFirstItem(*desktopProperty, XCB_ATOM_CARDINAL);
        if (!isOnDesktop(desktop, currentDesktop)) continue;
        const Rect panel{static_cast<double>((*position)->dst_x), static_cast<double>((*position)->dst_y),
                         static_cast<double>((*geometry)->width), static_cast<double>((*geometry)->height)};
        const auto bands = decodeStruts(*partial, *whole, XCB_ATOM_CARDINAL, rootSize_, panel);
        struts.insert(struts.end(), bands.begin(), bands.end());
    }
    return struts;
}

}  // namespace velmorand

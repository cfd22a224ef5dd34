#include "platform/linux/x11/X11Monitors.h"

#include <xcb/randr.h>

#include <utility>

namespace velmorand {

X11Monitors::X11Monitors(X11Connection& connection, const X11Atoms& atoms)
    : connection_(connection),
      panels_(connection, atoms),
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
    if (type == XCB_CONFIGURE_NOTIFY &&
        reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root())
        return true;
    if (randrEvents_ != 0 &&
        (type == randrEvents_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randrEvents_ + XCB_RANDR_NOTIFY))
        return true;
    return panels_.concerns(event);
}

std::vector<DisplayDescription> X11Monitors::displays(bool showsOneDesktop, Deadline deadline) {
    readMonitors(deadline);
    const std::vector<X11Strut>& reserved = panels_.struts(rootSize_, showsOneDesktop, deadline);
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
    const Size rootSize{static_cast<double>((*root)->width), static_cast<double>((*root)->height)};
    std::vector<X11Monitor> monitors;
    if (randrEvents_ == 0) {
        rootSize_ = rootSize;
        return monitors;
    }
    const auto reply = connection_.reply<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(connection_.raw(), connection_.root(), 1), deadline);
    if (!reply) return std::unexpected(reply.error());
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply->get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const xcb_randr_monitor_info_t& info = *each.data;
        auto name = nameOf(info.name, deadline);
        if (!name) return std::unexpected(name.error());
        monitors.push_back({info.name,
                            std::move(*name),
                            {static_cast<double>(info.x), static_cast<double>(info.y), static_cast<double>(info.width),
                             static_cast<double>(info.height)},
                            info.primary != 0});
    }
    rootSize_ = rootSize;  // together with the monitors, or the panels would be measured from another edge
    return monitors;
}

std::expected<std::string, X11Failure> X11Monitors::nameOf(xcb_atom_t atom, Deadline deadline) {
    if (const auto known = names_.find(atom); known != names_.end()) return known->second;
    const auto reply =
        connection_.reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(connection_.raw(), atom), deadline);
    if (!reply) return std::unexpected(reply.error());
    const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply->get()));
    return names_.emplace(atom, std::string(xcb_get_atom_name_name(reply->get()), length)).first->second;
}

}  // namespace velmorand

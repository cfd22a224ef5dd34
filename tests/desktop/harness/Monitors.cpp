#include "desktop/harness/Monitors.h"

#include "desktop/harness/Outputs.h"

#include <fmt/format.h>
#include <sys/uio.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <array>

namespace velmorand::desktop {

namespace {

constexpr double millimetresPerPixel = 25.4 / 96.0;

/// Which output, if any, shows a monitor, by the monitor's name.
using Assignment = std::map<std::string, xcb_randr_output_t>;

/// Calls visit(info) for every monitor of the server.
template <class Visit>
void forEachMonitor(XConnection& connection, Visit visit) {
    const auto answer = connection.reply<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(connection.raw(), connection.root(), 1));
    if (!answer) return;
    auto entry = xcb_randr_get_monitors_monitors_iterator(answer.get());
    for (; entry.rem > 0; xcb_randr_monitor_info_next(&entry)) visit(*entry.data);
}

Assignment currentAssignment(XConnection& connection) {
    Assignment assignment;
    forEachMonitor(connection, [&](const xcb_randr_monitor_info_t& info) {
        if (info.nOutput > 0) assignment[connection.atomName(info.name)] = *xcb_randr_monitor_info_outputs(&info);
    });
    return assignment;
}

/// Monitors that stay keep their output, the others get free ones in order.
Assignment assignOutputs(XConnection& connection, std::span<const Monitor> monitors,
                         std::vector<xcb_randr_output_t> free) {
    Assignment assignment;
    if (free.size() == 1) {
        const auto primary = std::ranges::find_if(monitors, &Monitor::isPrimary);
        assignment[primary == monitors.end() ? monitors.front().name : primary->name] = free.front();
        return assignment;
    }
    const auto before = currentAssignment(connection);
    for (const auto& monitor : monitors) {
        if (const auto kept = before.find(monitor.name); kept != before.end()) {
            assignment.insert(*kept);
            std::erase(free, kept->second);
        }
    }
    for (const auto& monitor : monitors) {
        if (assignment.contains(monitor.name) || free.empty()) continue;
        assignment[monitor.name] = free.front();
        free.erase(free.begin());
    }
    return assignment;
}

xcb_randr_monitor_info_t monitorInfo(XConnection& connection, const Monitor& monitor, bool ownsOutput) {
    xcb_randr_monitor_info_t info{};
    info.name = connection.atom(monitor.name);
    info.primary = monitor.isPrimary ? 1 : 0;
    info.nOutput = ownsOutput ? 1 : 0;
    info.x = static_cast<std::int16_t>(monitor.rect.x);
    info.y = static_cast<std::int16_t>(monitor.rect.y);
    info.width = static_cast<std::uint16_t>(monitor.rect.width);
    info.height = static_cast<std::uint16_t>(monitor.rect.height);
    info.width_in_millimeters = static_cast<std::uint32_t>(monitor.rect.width * millimetresPerPixel);
    info.height_in_millimeters = static_cast<std::uint32_t>(monitor.rect.height * millimetresPerPixel);
    return info;
}

/// RRSetMonitor, put together here: the library's own function for it announces one part more than it fills in, and
/// takes the length of that part from whatever lies on the stack.
bool setMonitor(XConnection& connection, const Monitor& monitor, std::optional<xcb_randr_output_t> output) {
    xcb_randr_set_monitor_request_t header{};
    header.window = connection.root();
    auto info = monitorInfo(connection, monitor, output.has_value());
    auto outputId = output.value_or(XCB_NONE);
    // The first two parts belong to the library, which needs the room in front of the request.
    std::array<iovec, 5> parts{
        {{}, {}, {&header, sizeof header}, {&info, sizeof info}, {&outputId, output ? sizeof outputId : 0}}};
    const xcb_protocol_request_t request{3, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    const xcb_void_cookie_t cookie{xcb_send_request(connection.raw(), XCB_REQUEST_CHECKED, parts.data() + 2, &request)};
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection.raw(), cookie));
    return !error && connection.isAlive();
}

bool deleteMonitor(XConnection& connection, const std::string& name) {
    const auto cookie = xcb_randr_delete_monitor_checked(connection.raw(), connection.root(), connection.atom(name));
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection.raw(), cookie));
    return !error;
}

std::expected<void, HarnessError> apply(XConnection& connection, std::span<const Monitor> monitors) {
    const auto outputs = readOutputs(connection);
    const auto assignment = assignOutputs(connection, monitors, outputs);
    // The server refuses a monitor whose name exists, and shows the outputs of a deleted one by themselves.
    for (const auto& old : readMonitors(connection)) deleteMonitor(connection, old.name);
    if (outputs.size() > 1) {
        std::map<xcb_randr_output_t, PixelRect> places;
        for (const auto& monitor : monitors) places[assignment.at(monitor.name)] = monitor.rect;
        if (auto switched = switchOutputs(connection, places); !switched) return switched;
    }
    for (const auto& monitor : monitors) {
        const auto own = assignment.find(monitor.name);
        const auto output = own == assignment.end() ? std::nullopt : std::optional(own->second);
        if (!setMonitor(connection, monitor, output)) {
            return std::unexpected(HarnessError{
                fmt::format("the X server refuses the monitor '{}' {}", monitor.name, monitor.rect.text())});
        }
        if (output && monitor.isPrimary) {
            xcb_randr_set_output_primary(connection.raw(), connection.root(), *output);
        }
    }
    return {};
}

}  // namespace

std::vector<Monitor> readMonitors(XConnection& connection) {
    std::vector<Monitor> monitors;
    forEachMonitor(connection, [&](const xcb_randr_monitor_info_t& info) {
        monitors.push_back(
            {connection.atomName(info.name), {info.x, info.y, info.width, info.height}, info.primary != 0});
    });
    return monitors;
}

std::expected<void, HarnessError> applyMonitors(XConnection& connection, std::span<const Monitor> monitors) {
    if (monitors.empty()) return std::unexpected(HarnessError{"a desktop needs a monitor"});
    // Versions are negotiated per connection, and a server hides what is newer than the version asked for.
    if (!connection.reply<xcb_randr_query_version_reply_t>(xcb_randr_query_version(connection.raw(), 1, 5))) {
        return std::unexpected(HarnessError{"the X server has no RandR"});
    }
    // The others see one change, not its steps.
    xcb_grab_server(connection.raw());
    auto applied = apply(connection, monitors);
    xcb_ungrab_server(connection.raw());
    connection.synchronise();
    if (!applied) return applied;
    if (const auto now = readMonitors(connection); now.size() != monitors.size()) {
        return std::unexpected(HarnessError{fmt::format("{} monitors instead of {}", now.size(), monitors.size())});
    }
    return {};
}

}  // namespace velmorand::desktop

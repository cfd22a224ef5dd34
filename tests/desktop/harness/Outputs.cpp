#include "desktop/harness/Outputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace velmorand::desktop {

namespace {

using Resources = XReply<xcb_randr_get_screen_resources_current_reply_t>;

Resources readResources(XConnection& connection) {
    return connection.reply<xcb_randr_get_screen_resources_current_reply_t>(
        xcb_randr_get_screen_resources_current(connection.raw(), connection.root()));
}

/// The one controller that an output in memory can be driven by. Their order in the server's list is no guide: the
/// primary output's comes first.
std::optional<xcb_randr_crtc_t> controllerOf(XConnection& connection, xcb_randr_output_t output) {
    const auto information = connection.reply<xcb_randr_get_output_info_reply_t>(
        xcb_randr_get_output_info(connection.raw(), output, XCB_CURRENT_TIME));
    if (!information || information->num_crtcs == 0) return std::nullopt;
    return *xcb_randr_get_output_info_crtcs(information.get());
}

/// The mode of that size, known or new; absent when the server refuses it.
std::optional<xcb_randr_mode_t> modeOfSize(XConnection& connection, int width, int height) {
    const auto resources = readResources(connection);
    if (!resources) return std::nullopt;
    const auto name = fmt::format("velmorand-{}x{}", width, height);
    const auto* names = reinterpret_cast<const char*>(xcb_randr_get_screen_resources_current_names(resources.get()));
    const auto* modes = xcb_randr_get_screen_resources_current_modes(resources.get());
    for (int index = 0; index < resources->num_modes; ++index) {
        if (std::string_view(names, modes[index].name_len) == name) return modes[index].id;
        names += modes[index].name_len;
    }
    // Only the size means anything to an output in memory; the rest is what a plausible display would have.
    constexpr int horizontalBlank = 80;
    constexpr int verticalBlank = 20;
    constexpr int framesPerSecond = 60;
    xcb_randr_mode_info_t mode{};
    mode.width = static_cast<std::uint16_t>(width);
    mode.height = static_cast<std::uint16_t>(height);
    mode.hsync_start = static_cast<std::uint16_t>(width + 8);
    mode.hsync_end = static_cast<std::uint16_t>(width + 40);
    mode.htotal = static_cast<std::uint16_t>(width + horizontalBlank);
    mode.vsync_start = static_cast<std::uint16_t>(height + 4);
    mode.vsync_end = static_cast<std::uint16_t>(height + 12);
    mode.vtotal = static_cast<std::uint16_t>(height + verticalBlank);
    mode.dot_clock = static_cast<std::uint32_t>((width + horizontalBlank) * (height + verticalBlank) * framesPerSecond);
    mode.name_len = static_cast<std::uint16_t>(name.size());
    const auto created = connection.reply<xcb_randr_create_mode_reply_t>(xcb_randr_create_mode(
        connection.raw(), connection.root(), mode, static_cast<std::uint32_t>(name.size()), name.c_str()));
    return created ? std::optional(created->mode) : std::nullopt;
}

/// \p outputs is empty, with no mode, to switch the controller off.
bool configure(XConnection& connection, xcb_randr_crtc_t controller, const PixelRect& place, xcb_randr_mode_t mode,
               const std::vector<xcb_randr_output_t>& outputs) {
    const auto answer = connection.reply<xcb_randr_set_crtc_config_reply_t>(xcb_randr_set_crtc_config(
        connection.raw(), controller, XCB_CURRENT_TIME, XCB_CURRENT_TIME, static_cast<std::int16_t>(place.x),
        static_cast<std::int16_t>(place.y), mode, XCB_RANDR_ROTATION_ROTATE_0,
        static_cast<std::uint32_t>(outputs.size()), outputs.data()));
    return answer && answer->status == XCB_RANDR_SET_CONFIG_SUCCESS;
}

}  // namespace

std::vector<xcb_randr_output_t> readOutputs(XConnection& connection) {
    const auto resources = readResources(connection);
    if (!resources) return {};
    const auto* first = xcb_randr_get_screen_resources_current_outputs(resources.get());
    return {first, first + resources->num_outputs};
}

std::expected<void, HarnessError> switchOutputs(XConnection& connection,
                                                const std::map<xcb_randr_output_t, PixelRect>& wanted) {
    for (const auto output : readOutputs(connection)) {
        const auto controller = controllerOf(connection, output);
        const auto entry = wanted.find(output);
        if (entry == wanted.end()) {
            if (controller) configure(connection, *controller, {}, XCB_NONE, {});
            continue;
        }
        const auto& place = entry->second;
        const auto mode = modeOfSize(connection, place.width, place.height);
        if (mode) xcb_randr_add_output_mode(connection.raw(), output, *mode);
        if (!mode || !controller || !configure(connection, *controller, place, *mode, {output})) {
            return std::unexpected(HarnessError{fmt::format("an output cannot show {}", place.text())});
        }
    }
    // Only a full enquiry makes the server notice that its outputs are connected now.
    [[maybe_unused]] const auto probed = connection.reply<xcb_randr_get_screen_resources_reply_t>(
        xcb_randr_get_screen_resources(connection.raw(), connection.root()));
    return {};
}

}  // namespace velmorand::desktop

#include "desktop/x11/GrabbingClient.h"

#include <xcb/xinput.h>

#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr xcb_input_device_id_t allMasterDevices = XCB_INPUT_DEVICE_ALL_MASTER;
constexpr std::uint32_t keyEvents = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;

std::uint16_t coreMask(std::uint32_t mask) {
    return mask == GrabbingClient::anyModifier ? std::uint16_t{XCB_MOD_MASK_ANY} : static_cast<std::uint16_t>(mask);
}

std::uint32_t extensionMask(std::uint32_t mask) {
    return mask == GrabbingClient::anyModifier ? std::uint32_t{XCB_INPUT_MODIFIER_MASK_ANY} : mask;
}

bool isPress(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    if (type != XCB_GE_GENERIC) return type == XCB_KEY_PRESS;
    return reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type == XCB_INPUT_KEY_PRESS;
}

XConnection opened(const std::string& displayName) {
    auto connection = XConnection::open(displayName);
    if (!connection) throw std::runtime_error(connection.error().message);
    return std::move(*connection);
}

}  // namespace

GrabbingClient::GrabbingClient(const std::string& displayName) : connection_(opened(displayName)) {
    const auto version =
        connection_.reply<xcb_input_xi_query_version_reply_t>(xcb_input_xi_query_version(connection_.raw(), 2, 2));
    if (!version) throw std::runtime_error("the X server has no input extension");
}

bool GrabbingClient::grab(GrabKind kind, Key key, std::uint32_t mask) {
    const auto keycode = std::to_underlying(key);
    if (kind == GrabKind::core) {
        const auto request = xcb_grab_key_checked(connection_.raw(), 0, connection_.root(), coreMask(mask), keycode,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        connection_.synchronise();
        return XReply<xcb_generic_error_t>(xcb_request_check(connection_.raw(), request)) == nullptr;
    }
    const std::uint32_t inExtension = extensionMask(mask);
    const auto reply = connection_.reply<xcb_input_xi_passive_grab_device_reply_t>(xcb_input_xi_passive_grab_device(
        connection_.raw(), XCB_CURRENT_TIME, connection_.root(), XCB_CURSOR_NONE, keycode, allMasterDevices, 1, 1,
        XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &keyEvents, &inExtension));
    return reply && xcb_input_xi_passive_grab_device_modifiers_length(reply.get()) == 0;
}

void GrabbingClient::release(GrabKind kind, Key key, std::uint32_t mask) {
    const auto keycode = std::to_underlying(key);
    const std::uint32_t inExtension = extensionMask(mask);
    if (kind == GrabKind::core) {
        xcb_ungrab_key(connection_.raw(), keycode, connection_.root(), coreMask(mask));
    } else {
        xcb_input_xi_passive_ungrab_device(connection_.raw(), connection_.root(), keycode, allMasterDevices, 1,
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, &inExtension);
    }
    connection_.synchronise();
}

bool GrabbingClient::isFree(Key key) {
    bool free = true;
    for (const GrabKind kind : {GrabKind::core, GrabKind::inputExtension}) {
        free = grab(kind, key, anyModifier) && free;
        release(kind, key, anyModifier);
    }
    return free;
}

int GrabbingClient::takePresses() {
    connection_.synchronise();
    int presses = 0;
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(connection_.raw()))) {
        if (isPress(*event)) ++presses;
    }
    return presses;
}

}  // namespace velmorand::desktop

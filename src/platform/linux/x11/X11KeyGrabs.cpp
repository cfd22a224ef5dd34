#include "platform/linux/x11/X11KeyGrabs.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

/// Of the input extension: every master keyboard, and the events of a grab.
constexpr xcb_input_device_id_t allMasterDevices = XCB_INPUT_DEVICE_ALL_MASTER;
constexpr std::uint32_t keyEvents = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;

/// The core protocol's code for a grab that another client holds.
constexpr std::uint8_t badAccess = 10;

}  // namespace

X11KeyGrabs::~X11KeyGrabs() {
    keepOnly({});
    connection_.flush();
}

void X11KeyGrabs::setLockCombinations(std::vector<std::uint32_t> lockCombinations) {
    if (lockCombinations == lockCombinations_) return;
    keepOnly({});
    lockCombinations_ = std::move(lockCombinations);
}

OSStatus X11KeyGrabs::acquire(const X11KeyCombination& combination, Deadline deadline) {
    if (held_.contains(combination)) return noError;
    Masks masks = masksOf(combination);
    if (const OSStatus status = probeCoreGrab(combination.keycode, masks, deadline); status != noError) return status;
    if (const OSStatus status = establish(combination.keycode, masks, deadline); status != noError) return status;
    held_.emplace(combination, std::move(masks));
    return noError;
}

void X11KeyGrabs::keepOnly(const std::set<X11KeyCombination>& wanted) {
    std::erase_if(held_, [&](const auto& entry) {
        const auto& [combination, masks] = entry;
        if (wanted.contains(combination)) return false;
        release(combination.keycode, masks);
        return true;
    });
}

X11KeyGrabs::Masks X11KeyGrabs::masksOf(const X11KeyCombination& combination) const {
    Masks masks = lockCombinations_;
    for (std::uint32_t& withLocks : masks) withLocks |= combination.mask;
    return masks;
}

/// Asks for the combination by the older mechanism and gives it back: the two mechanisms do not see each other.
OSStatus X11KeyGrabs::probeCoreGrab(std::uint8_t keycode, const Masks& masks, Deadline deadline) {
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint32_t mask : masks) {
        requests.push_back(xcb_grab_key_checked(connection_.raw(), 0, connection_.root(),
                                                static_cast<std::uint16_t>(mask), keycode, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    }
    for (const std::uint32_t mask : masks)
        xcb_ungrab_key(connection_.raw(), keycode, connection_.root(), static_cast<std::uint16_t>(mask));
    const auto errors = connection_.check(requests, deadline);
    if (!errors) return hotKeyInternalError;
    if (std::ranges::count(*errors, badAccess) > 0) return hotKeyAlreadyTaken;
    const bool allFree = std::ranges::all_of(*errors, [](std::uint8_t error) { return error == 0; });
    return allFree ? noError : hotKeyInternalError;
}

OSStatus X11KeyGrabs::establish(std::uint8_t keycode, const Masks& masks, Deadline deadline) {
    const auto reply = connection_.reply<xcb_input_xi_passive_grab_device_reply_t>(
        xcb_input_xi_passive_grab_device(
            connection_.raw(), XCB_CURRENT_TIME, connection_.root(), XCB_CURSOR_NONE, keycode, allMasterDevices,
            static_cast<std::uint16_t>(masks.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &keyEvents, masks.data()),
        deadline);
    if (reply && xcb_input_xi_passive_grab_device_modifiers_length(reply->get()) == 0) return noError;
    // The reply lists the modifiers that failed; the others are ours now and are given back.
    release(keycode, masks);
    return reply ? hotKeyAlreadyTaken : hotKeyInternalError;
}

void X11KeyGrabs::release(std::uint8_t keycode, const Masks& masks) {
    xcb_input_xi_passive_ungrab_device(connection_.raw(), connection_.root(), keycode, allMasterDevices,
                                       static_cast<std::uint16_t>(masks.size()), XCB_INPUT_GRAB_TYPE_KEYCODE,
                                       masks.data());
}

}  // namespace velmorand

#include "platform/linux/x11/X11HotKeyService.h"

#include "platform/linux/x11/X11KeyCodes.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr std::chrono::milliseconds requestTimeout{750};

/// Of the input extension: every master keyboard, grabs by keycode, and the events of a grab.
constexpr xcb_input_device_id_t allMasterDevices = XCB_INPUT_DEVICE_ALL_MASTER;
constexpr std::uint32_t keyEvents = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
constexpr std::uint16_t wantedMajor = 2;
constexpr std::uint16_t wantedMinor = 2;

/// The core protocol's code for a grab that another client holds.
constexpr std::uint8_t badAccess = 10;

Deadline requestDeadline() {
    return std::chrono::steady_clock::now() + requestTimeout;
}

class X11HotKeyEvent final : public HotKeyEvent {
public:
    explicit X11HotKeyEvent(HotKeyID hotKeyID) : hotKeyID_(hotKeyID) {}

    [[nodiscard]] std::expected<HotKeyID, OSStatus> hotKeyID() const override { return hotKeyID_; }

private:
    HotKeyID hotKeyID_;
};

}  // namespace

X11HotKeyService::X11HotKeyService(X11Connection& connection) : connection_(connection) {
    const auto* extension = xcb_get_extension_data(connection.raw(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return;
    const auto version = connection.reply<xcb_input_xi_query_version_reply_t>(
        xcb_input_xi_query_version(connection.raw(), wantedMajor, wantedMinor), requestDeadline());
    hasInputExtension_ = version && (*version)->major_version >= wantedMajor;
    inputOpcode_ = extension->major_opcode;
    handler_ = connection.handle([this](const xcb_generic_event_t& event) { handle(event); });
}

X11HotKeyService::~X11HotKeyService() = default;

std::expected<HotKeyHandlerReference, OSStatus> X11HotKeyService::installHandler(HotKeyHandler handler) {
    if (!hasInputExtension_ || connection_.isLost()) return std::unexpected(hotKeyInternalError);
    const HotKeyHandlerReference reference{++lastReference_};
    handlers_.emplace(reference, std::move(handler));
    return reference;
}

void X11HotKeyService::removeHandler(HotKeyHandlerReference reference) {
    handlers_.erase(reference);
}

std::optional<X11ModifierMap> X11HotKeyService::readModifierMap(Deadline deadline) {
    const xcb_setup_t& setup = connection_.setup();
    const auto keyCount = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto modifiersRequest = xcb_get_modifier_mapping(connection_.raw());
    const auto keysymsRequest = xcb_get_keyboard_mapping(connection_.raw(), setup.min_keycode, keyCount);
    const auto modifiers = connection_.reply<xcb_get_modifier_mapping_reply_t>(modifiersRequest, deadline);
    const auto keysyms = connection_.reply<xcb_get_keyboard_mapping_reply_t>(keysymsRequest, deadline);
    if (!modifiers || !keysyms) return std::nullopt;
    return decodeModifierMap({xcb_get_modifier_mapping_keycodes(modifiers->get()),
                              static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers->get()))},
                             (*modifiers)->keycodes_per_modifier,
                             {xcb_get_keyboard_mapping_keysyms(keysyms->get()),
                              static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(keysyms->get()))},
                             (*keysyms)->keysyms_per_keycode, setup.min_keycode);
}

HotKeyRegistration X11HotKeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID hotKeyID) {
    const Deadline deadline = requestDeadline();
    if (!hasInputExtension_ || connection_.isLost()) return {hotKeyInternalError, std::nullopt};
    if (!modifiers_) modifiers_ = readModifierMap(deadline);
    if (!modifiers_) return {hotKeyInternalError, std::nullopt};
    const auto combination = combinationFor(keyCode, modifiers);
    if (!combination) return {hotKeyParameterError, std::nullopt};

    const bool isOurs =
        std::ranges::any_of(registrations_, [&](const auto& entry) { return entry.second.combination == combination; });
    if (isOurs) return {hotKeyAlreadyTaken, std::nullopt};
    Grab grab = grabFor(*combination);
    if (const OSStatus status = probeCoreGrab(grab, deadline); status != noError) return {status, std::nullopt};
    if (const OSStatus status = establish(grab, deadline); status != noError) return {status, std::nullopt};
    const HotKeyReference reference{++lastReference_};
    registrations_.emplace(reference, Registration{keyCode, modifiers, hotKeyID, combination, std::move(grab)});
    return {noError, reference};
}

std::optional<X11HotKeyService::Combination> X11HotKeyService::combinationFor(std::uint32_t keyCode,
                                                                              std::uint32_t modifiers) const {
    const auto keycode = xKeycodeFor(keyCode);
    const auto mask = modifiers_ ? modifiers_->maskFor(modifiers) : std::nullopt;
    if (!keycode || !mask) return std::nullopt;
    return Combination{*keycode, *mask};
}

X11HotKeyService::Grab X11HotKeyService::grabFor(const Combination& combination) const {
    Grab grab{combination.keycode, {}};
    if (modifiers_) grab.masks = modifiers_->lockCombinations();
    for (std::uint32_t& withLocks : grab.masks) withLocks |= combination.mask;
    return grab;
}

/// Keys are grabbed by their place, so another layout changes nothing; where the modifiers and locks went matters. The
/// server tells of a change also when only another device takes its turn, so an equal map must cost nothing more.
void X11HotKeyService::followKeyboard() {
    const Deadline deadline = requestDeadline();
    const auto current = readModifierMap(deadline);
    if (!current || current == modifiers_) return;
    for (const auto& [reference, registration] : registrations_) {
        if (registration.combination) release(registration.grab);
    }
    modifiers_ = current;
    for (auto& [reference, registration] : registrations_) {
        registration.combination = combinationFor(registration.keyCode, registration.modifiers);
        if (!registration.combination) continue;
        registration.grab = grabFor(*registration.combination);
        if (establish(registration.grab, deadline) != noError) registration.combination.reset();
    }
}

OSStatus X11HotKeyService::unregisterHotKey(HotKeyReference reference) {
    const auto node = registrations_.extract(reference);
    if (node.empty()) return hotKeyParameterError;
    if (node.mapped().combination) release(node.mapped().grab);
    connection_.flush();
    return noError;
}

/// Asks for the combination by the older mechanism and gives it back: the two mechanisms do not see each other.
OSStatus X11HotKeyService::probeCoreGrab(const Grab& grab, Deadline deadline) {
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint32_t mask : grab.masks) {
        requests.push_back(xcb_grab_key_checked(connection_.raw(), 0, connection_.root(),
                                                static_cast<std::uint16_t>(mask), grab.keycode, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    }
    for (const std::uint32_t mask : grab.masks) {
        xcb_ungrab_key(connection_.raw(), grab.keycode, connection_.root(), static_cast<std::uint16_t>(mask));
    }
    const auto errors = connection_.check(requests, deadline);
    if (!errors) return hotKeyInternalError;
    if (std::ranges::count(*errors, badAccess) > 0) return hotKeyAlreadyTaken;
    const bool allFree = std::ranges::all_of(*errors, [](std::uint8_t error) { return error == 0; });
    return allFree ? noError : hotKeyInternalError;
}

OSStatus X11HotKeyService::establish(const Grab& grab, Deadline deadline) {
    const auto reply = connection_.reply<xcb_input_xi_passive_grab_device_reply_t>(
        xcb_input_xi_passive_grab_device(
            connection_.raw(), XCB_CURRENT_TIME, connection_.root(), XCB_CURSOR_NONE, grab.keycode, allMasterDevices,
            static_cast<std::uint16_t>(grab.masks.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &keyEvents, grab.masks.data()),
        deadline);
    if (reply && xcb_input_xi_passive_grab_device_modifiers_length(reply->get()) == 0) return noError;
    // The reply lists the modifiers that failed; the others are ours now and are given back.
    release(grab);
    return reply ? hotKeyAlreadyTaken : hotKeyInternalError;
}

void X11HotKeyService::release(const Grab& grab) {
    xcb_input_xi_passive_ungrab_device(connection_.raw(), connection_.root(), grab.keycode, allMasterDevices,
                                       static_cast<std::uint16_t>(grab.masks.size()), XCB_INPUT_GRAB_TYPE_KEYCODE,
                                       grab.masks.data());
}

void X11HotKeyService::handle(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_MAPPING_NOTIFY && modifiers_) followKeyboard();
    if (eventType(event) != XCB_GE_GENERIC || !modifiers_) return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != inputOpcode_ || generic.event_type != XCB_INPUT_KEY_PRESS) return;
    const auto& press = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    if ((press.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0) return;

    const Combination pressed{static_cast<std::uint8_t>(press.detail), press.mods.effective & ~modifiers_->locks()};
    const auto found =
        std::ranges::find_if(registrations_, [&](const auto& entry) { return entry.second.combination == pressed; });
    if (found != registrations_.end()) deliver(found->second.hotKeyID);
}

void X11HotKeyService::deliver(HotKeyID hotKeyID) {
    const X11HotKeyEvent event(hotKeyID);
    const auto handlers = handlers_;
    for (const auto& [reference, handler] : handlers) handler(&event);
}

}  // namespace velmorand

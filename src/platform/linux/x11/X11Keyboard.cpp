#include "platform/linux/x11/X11Keyboard.h"

#include "platform/linux/x11/X11ModifierMapReader.h"

#include <algorithm>
#include <span>
#include <utility>

// The header of this extension is written in C and has members of that name.
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit

namespace velmorand {
namespace {

constexpr xcb_xkb_device_spec_t theKeyboard = XCB_XKB_ID_USE_CORE_KBD;
constexpr std::uint16_t wantedMajor = 1;
constexpr std::uint16_t wantedMinor = 0;

/// Everything that may change what keys and modifiers mean.
constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                   XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                   XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS;
constexpr std::uint16_t keyboardParts = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
constexpr std::uint16_t stateParts = XCB_XKB_STATE_PART_MODIFIER_BASE | XCB_XKB_STATE_PART_MODIFIER_LATCH;

/// What the events of the extension, which share one number, begin with.
struct ExtensionEvent {
    std::uint8_t responseType;
    std::uint8_t kind;
};

}  // namespace

/// Nothing of the extension may be used before the server has agreed to it.
bool X11Keyboard::reach(Deadline deadline) {
    if (connection_.isLost()) return false;
    if (firstEvent_) return true;
    const auto* extension = connection_.extension(xcb_xkb_id, deadline);
    if (extension == nullptr) return false;
    const auto use = connection_.reply<xcb_xkb_use_extension_reply_t>(
        xcb_xkb_use_extension(connection_.raw(), wantedMajor, wantedMinor), deadline);
    if (!use || (*use)->supported == 0) return false;
    firstEvent_ = extension->first_event;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = keyboardParts;
    details.newKeyboardDetails = keyboardParts;
    xcb_xkb_select_events_aux(connection_.raw(), theKeyboard,
                              XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY, 0, 0, mapParts,
                              mapParts, &details);
    connection_.discard(xcb_xkb_per_client_flags(connection_.raw(), theKeyboard,
                                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0));
    return true;
}

std::optional<X11KeyTranslator> X11Keyboard::describe(Deadline deadline) {
    if (!reach(deadline)) return std::nullopt;
    auto keys = readKeyMap(deadline);
    const auto modifiers = readModifierMap(connection_, deadline);
    if (!keys || !modifiers) return std::nullopt;
    return X11KeyTranslator{.keys = std::move(*keys), .modifiers = *modifiers};
}

std::optional<X11KeyMap> X11Keyboard::readKeyMap(Deadline deadline) {
    const auto reply = connection_.reply<xcb_xkb_get_map_reply_t>(xcb_xkb_get_map(connection_.raw(), theKeyboard,
                                                                                  XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0, 0,
                                                                                  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
                                                                  deadline);
    if (!reply || ((*reply)->present & XCB_XKB_MAP_PART_KEY_SYMS) == 0) return std::nullopt;
    constexpr std::size_t plainReplySize = 32;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(reply->get());
    const std::span all(bytes, plainReplySize + (*reply)->length * sizeof(std::uint32_t));
    const std::size_t fixedPart = std::min(sizeof(xcb_xkb_get_map_reply_t), all.size());
    return decodeKeyMap(all.subspan(fixedPart), (*reply)->firstKeySym, (*reply)->nKeySyms);
}

std::optional<std::uint8_t> X11Keyboard::extensionEvent(const xcb_generic_event_t& event) const {
    if (!firstEvent_ || eventType(event) != *firstEvent_ || isSentEvent(event)) return std::nullopt;
    return reinterpret_cast<const ExtensionEvent&>(event).kind;
}

bool X11Keyboard::tellsOfChange(const xcb_generic_event_t& event) const {
    if (eventType(event) == XCB_MAPPING_NOTIFY)
        return reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request != XCB_MAPPING_POINTER;
    const auto kind = extensionEvent(event);
    return kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY;
}

void X11Keyboard::followModifiers(bool follow) {
    if (!firstEvent_ || connection_.isLost()) return;
    xcb_xkb_select_events_details_t details{};
    details.affectState = stateParts;
    details.stateDetails = follow ? stateParts : std::uint16_t{0};
    xcb_xkb_select_events_aux(connection_.raw(), theKeyboard, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
}

std::optional<std::uint32_t> X11Keyboard::heldModifiers(const xcb_generic_event_t& event) const {
    if (extensionEvent(event) != XCB_XKB_STATE_NOTIFY) return std::nullopt;
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    return static_cast<std::uint32_t>(state.baseMods | state.latchedMods);
}

}  // namespace velmorand

#include "platform/linux/x11/X11ModifierMapReader.h"

#include <cstddef>
#include <cstdint>

namespace velmorand {

std::optional<X11ModifierMap> readModifierMap(X11Connection& connection, Deadline deadline) {
    const xcb_setup_t& setup = connection.setup();
    const auto keyCount = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto modifiersRequest = xcb_get_modifier_mapping(connection.raw());
    const auto keysymsRequest = xcb_get_keyboard_mapping(connection.raw(), setup.min_keycode, keyCount);
    const auto modifiers = connection.reply<xcb_get_modifier_mapping_reply_t>(modifiersRequest, deadline);
    const auto keysyms = connection.reply<xcb_get_keyboard_mapping_reply_t>(keysymsRequest, deadline);
    if (!modifiers || !keysyms) return std::nullopt;
    return decodeModifierMap({xcb_get_modifier_mapping_keycodes(modifiers->get()),
                              static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers->get()))},
                             (*modifiers)->keycodes_per_modifier,
                             {xcb_get_keyboard_mapping_keysyms(keysyms->get()),
                              static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(keysyms->get()))},
                             (*keysyms)->keysyms_per_keycode, setup.min_keycode);
}

}  // namespace velmorand

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmorand {

/// What one key means: a row of keysyms for each group (layout) that it has, as long as its widest one.
struct X11Key {
    std::uint8_t groupInfo = 0;  ///< how many groups, and what another group than those means (`KB_GroupsWrap`)
    std::uint8_t levels = 0;     ///< keysyms of a row
    std::vector<std::uint32_t> keysyms;

    bool operator==(const X11Key&) const = default;
};

/// What the keys mean in the layouts that are set up.
struct X11KeyMap {
    std::uint8_t firstKeycode = 0;
    std::vector<X11Key> keys;

    bool operator==(const X11KeyMap&) const = default;

    /// The keysym of a key at a level (0 is without any modifier) of a group, counted from 0; 0 for none.
    [[nodiscard]] std::uint32_t keysym(std::uint8_t keycode, std::uint32_t group, std::size_t level) const;

    /// Whether the key holds or locks a modifier or switches between layouts, and so is no key of a combination.
    [[nodiscard]] bool isModifierKey(std::uint8_t keycode, std::uint32_t group) const;

    /// Whether the key is Escape in this layout, wherever it is.
    [[nodiscard]] bool isEscape(std::uint8_t keycode, std::uint32_t group) const;

    /// What the key writes without any modifier, as UTF-8; a key of the keypad writes as if the numeric lock were on.
    /// Empty for one that writes nothing by itself, such as a dead key, or a control character.
    [[nodiscard]] std::string characters(std::uint8_t keycode, std::uint32_t group) const;
};

/// Reads the keysyms of a keyboard description as the server sends them (`xkbGetMap` with nothing but keysyms): one
/// record for each key from `firstKeycode` on. Absent when they are cut off.
[[nodiscard]] std::optional<X11KeyMap> decodeKeyMap(std::span<const std::uint8_t> records, std::uint8_t firstKeycode,
                                                    std::size_t keyCount);

}  // namespace velmorand

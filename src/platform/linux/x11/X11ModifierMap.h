#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace velmorand {

/// Which of the eight X modifiers the modifier keys of the keyboard set, as masks; 0 for one that is on no key.
struct X11ModifierMap {
    std::uint32_t shift = 1;     // fixed by the protocol
    std::uint32_t capsLock = 2;  // fixed by the protocol
    std::uint32_t control = 4;   // fixed by the protocol
    std::uint32_t alt = 0;
    std::uint32_t super = 0;
    std::uint32_t numLock = 0;
    std::uint32_t scrollLock = 0;

    bool operator==(const X11ModifierMap&) const = default;

    /// The modifiers that are on or off without the user meaning anything by it. A lock on the modifier of Alt or Super
    /// is none of them: shortcuts with that modifier would mean nothing.
    [[nodiscard]] std::uint32_t locks() const { return (capsLock | numLock | scrollLock) & ~(alt | super); }

    /// Every combination of the locks, so that a shortcut works whichever are on.
    [[nodiscard]] std::vector<std::uint32_t> lockCombinations() const;

    /// The X mask of a hot-key modifier mask (command is Super, option is Alt); absent when it holds a modifier
    /// that the keyboard does not have, two that are one on this keyboard, or an unknown bit.
    [[nodiscard]] std::optional<std::uint32_t> maskFor(std::uint32_t hotKeyModifiers) const;
};

/// Works the map out from what the server says. `keycodesOfModifiers` holds eight rows of `keycodesPerModifier`
/// keycodes (0 for none); `keysyms` holds `keysymsPerKeycode` keysyms for each keycode from `firstKeycode` on.
[[nodiscard]] X11ModifierMap decodeModifierMap(std::span<const std::uint8_t> keycodesOfModifiers,
                                               std::size_t keycodesPerModifier, std::span<const std::uint32_t> keysyms,
                                               std::size_t keysymsPerKeycode, std::uint8_t firstKeycode);

}  // namespace velmorand

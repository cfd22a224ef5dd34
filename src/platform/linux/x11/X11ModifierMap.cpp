#include "platform/linux/x11/X11ModifierMap.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>

namespace velmorand {
namespace {

/// The platform's hot-key modifier bits.
constexpr std::uint32_t commandBit = 0x0100;
constexpr std::uint32_t shiftBit = 0x0200;
constexpr std::uint32_t optionBit = 0x0800;
constexpr std::uint32_t controlBit = 0x1000;

constexpr std::size_t modifierCount = 8;
/// Shift, Lock and Control are fixed; the other five are whatever the keys on them say.
constexpr std::size_t firstFreeModifier = 3;

/// The modifiers that the keys of one meaning set.
struct MaskOfKeys {
    std::uint32_t plain = 0;     ///< of keys that have the meaning when they are pressed alone
    std::uint32_t anyLevel = 0;  ///< also of keys that have it on another level, as keys that nobody can press often do

    void note(std::uint32_t mask, std::size_t level) {
        anyLevel |= mask;
        if (level == 0) plain |= mask;
    }

    [[nodiscard]] std::uint32_t candidates() const { return plain != 0 ? plain : anyLevel; }

    /// One modifier, where possible one that `other` keys do not set as well; 0 when there is none.
    [[nodiscard]] std::uint32_t chosenBeside(const MaskOfKeys& other) const {
        const std::uint32_t own = candidates() & ~other.candidates();
        const std::uint32_t from = own != 0 ? own : candidates();
        return from & -from;  // the lowest bit
    }
};

struct ModifierKeys {
    MaskOfKeys alt;
    MaskOfKeys super;
    MaskOfKeys numLock;
    MaskOfKeys scrollLock;

    void note(std::uint32_t keysym, std::uint32_t mask, std::size_t level) {
        switch (keysym) {
            case XKB_KEY_Alt_L:
            case XKB_KEY_Alt_R: alt.note(mask, level); break;
            case XKB_KEY_Super_L:
            case XKB_KEY_Super_R: super.note(mask, level); break;
            case XKB_KEY_Num_Lock: numLock.note(mask, level); break;
            case XKB_KEY_Scroll_Lock: scrollLock.note(mask, level); break;
            default: break;
        }
    }
};

}  // namespace

std::vector<std::uint32_t> X11ModifierMap::lockCombinations() const {
    const std::uint32_t all = locks();
    std::vector<std::uint32_t> combinations;
    std::uint32_t combination = 0;
    do {
        combinations.push_back(combination);
        combination = (combination - all) & all;  // the next higher number of these bits, after the highest 0
    } while (combination != 0);
    return combinations;
}

std::optional<std::uint32_t> X11ModifierMap::maskFor(std::uint32_t hotKeyModifiers) const {
    struct Row {
        std::uint32_t bit;
        std::uint32_t mask;
    };
    const std::array rows{Row{commandBit, super}, Row{shiftBit, shift}, Row{optionBit, alt}, Row{controlBit, control}};
    // On such a keyboard the combination would fire with one of the two keys alone, which may well mean something to the
    // focused application. With only one of them it is like any other: there the two keys mean the same to everybody.
    constexpr std::uint32_t both = commandBit | optionBit;
    if (alt == super && (hotKeyModifiers & both) == both) return std::nullopt;
    std::uint32_t result = 0;
    for (const auto& [bit, mask] : rows) {
        if ((hotKeyModifiers & bit) == 0) continue;
        if (mask == 0) return std::nullopt;
        result |= mask;
        hotKeyModifiers &= ~bit;
    }
    if (hotKeyModifiers != 0) return std::nullopt;
    return result;
}

X11ModifierMap decodeModifierMap(std::span<const std::uint8_t> keycodesOfModifiers, std::size_t keycodesPerModifier,
                                 std::span<const std::uint32_t> keysyms, std::size_t keysymsPerKeycode,
                                 std::uint8_t firstKeycode) {
    if (keycodesOfModifiers.size() < modifierCount * keycodesPerModifier) return {};
    ModifierKeys keys;
    for (std::size_t modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (const std::uint8_t keycode :
             keycodesOfModifiers.subspan(modifier * keycodesPerModifier, keycodesPerModifier)) {
            if (keycode < firstKeycode) continue;
            const std::size_t first = static_cast<std::size_t>(keycode - firstKeycode) * keysymsPerKeycode;
            if (first + keysymsPerKeycode > keysyms.size()) continue;
            for (std::size_t level = 0; level < keysymsPerKeycode; ++level)
                keys.note(keysyms[first + level], 1U << modifier, level);
        }
    }
    return {.alt = keys.alt.chosenBeside(keys.super),
            .super = keys.super.chosenBeside(keys.alt),
            .numLock = keys.numLock.anyLevel,
            .scrollLock = keys.scrollLock.anyLevel};
}

}  // namespace velmorand

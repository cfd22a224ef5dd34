#include "platform/linux/x11/X11ModifierMap.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
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

void noteKeysym(X11ModifierMap& map, std::uint32_t keysym, std::uint32_t mask) {
    switch (keysym) {
        case XKB_KEY_Alt_L:
        case XKB_KEY_Alt_R: map.alt = map.alt == 0 ? mask : map.alt; break;
        case XKB_KEY_Super_L:
        case XKB_KEY_Super_R: map.super = map.super == 0 ? mask : map.super; break;
        case XKB_KEY_Num_Lock: map.numLock |= mask; break;
        case XKB_KEY_Scroll_Lock: map.scrollLock |= mask; break;
        default: break;
    }
}

}  // namespace

std::vector<std::uint32_t> X11ModifierMap::lockCombinations() const {
    std::vector<std::uint32_t> combinations{0};
    for (const std::uint32_t lock : {capsLock, numLock, scrollLock}) {
        if (lock == 0) continue;
        const std::size_t count = combinations.size();
        for (std::size_t i = 0; i < count; ++i) combinations.push_back(combinations[i] | lock);
    }
    std::ranges::sort(combinations);
    const auto repeated = std::ranges::unique(combinations);
    combinations.erase(repeated.begin(), repeated.end());
    return combinations;
}

std::optional<std::uint32_t> X11ModifierMap::maskFor(std::uint32_t hotKeyModifiers) const {
    struct Row {
        std::uint32_t bit;
        std::uint32_t mask;
    };
    const std::array rows{Row{commandBit, super}, Row{shiftBit, shift}, Row{optionBit, alt}, Row{controlBit, control}};
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
    X11ModifierMap map;
    if (keycodesOfModifiers.size() < modifierCount * keycodesPerModifier) return map;
    for (std::size_t modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (const std::uint8_t keycode :
             keycodesOfModifiers.subspan(modifier * keycodesPerModifier, keycodesPerModifier)) {
            if (keycode < firstKeycode) continue;
            const std::size_t first = static_cast<std::size_t>(keycode - firstKeycode) * keysymsPerKeycode;
            if (first + keysymsPerKeycode > keysyms.size()) continue;
            for (const std::uint32_t keysym : keysyms.subspan(first, keysymsPerKeycode))
                noteKeysym(map, keysym, 1U << modifier);
        }
    }
    return map;
}

}  // namespace velmorand

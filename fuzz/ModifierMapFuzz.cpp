#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11ModifierMap.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

constexpr std::uint32_t freeModifiers = 0xF8;

X11ModifierMap someMap(FuzzInput& input) {
    constexpr std::array<std::uint32_t, 8> modifierKeysyms{XKB_KEY_Alt_L,   XKB_KEY_Alt_R,    XKB_KEY_Super_L,
                                                           XKB_KEY_Super_R, XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock,
                                                           XKB_KEY_Meta_L,  XKB_KEY_a};
    const auto keycodesPerModifier = input.number<std::uint8_t>();
    const auto keysymsPerKeycode = input.number<std::uint8_t>();
    const auto firstKeycode = input.number<std::uint8_t>();
    std::vector<std::uint32_t> keysyms(input.between<std::size_t>(0, 200));
    for (std::uint32_t& keysym : keysyms) keysym = modifierKeysyms[input.between<std::size_t>(0, 7)];
    const std::vector<std::uint8_t> keycodes = input.remainingBytes();
    return decodeModifierMap(keycodes, keycodesPerModifier, keysyms, keysymsPerKeycode, firstKeycode);
}

void checkMasks(const X11ModifierMap& map) {
    require(map.shift == 1 && map.capsLock == 2 && map.control == 4, "the fixed modifiers are where they always are");
    for (const std::uint32_t mask : {map.alt, map.super}) {
        require((mask & ~freeModifiers) == 0, "only the free modifiers are given away");
        require(std::popcount(mask) <= 1, "a modifier is one bit");
    }
    require(((map.numLock | map.scrollLock) & ~freeModifiers) == 0, "only free modifiers are locks");
}

void checkLocks(const X11ModifierMap& map) {
    const std::uint32_t locks = map.locks();
    require((locks & (map.alt | map.super)) == 0, "no lock is a modifier of shortcuts");
    const std::vector<std::uint32_t> combinations = map.lockCombinations();
    require(std::ranges::is_sorted(combinations) && std::ranges::adjacent_find(combinations) == combinations.end(),
            "every combination of locks is there once");
    require(std::ranges::all_of(combinations, [locks](std::uint32_t each) { return (each & ~locks) == 0; }),
            "nothing but locks is combined");
    require(combinations.size() == std::size_t{1} << static_cast<std::size_t>(std::popcount(locks)),
            "no combination is left out");
}

void checkHotKey(const X11ModifierMap& map, std::uint32_t modifiers) {
    const std::array bits{std::pair{0x0100U, map.super}, std::pair{0x0200U, map.shift}, std::pair{0x0800U, map.alt},
                          std::pair{0x1000U, map.control}};
    std::optional<std::uint32_t> expected = 0;
    std::uint32_t known = 0;
    for (const auto& [bit, mask] : bits) {
        known |= bit;
        if ((modifiers & bit) == 0 || !expected) continue;
        expected = mask == 0 ? std::nullopt : std::optional(*expected | mask);
    }
    constexpr std::uint32_t altAndSuper = 0x0900;
    const bool areOne = map.alt == map.super && (modifiers & altAndSuper) == altAndSuper;
    if (areOne || (modifiers & ~known) != 0) expected.reset();
    require(map.maskFor(modifiers) == expected,
            "a hot key's modifiers are those that the keyboard has, or it has none");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const auto modifiers = input.boolean() ? input.number<std::uint32_t>() : input.number<std::uint32_t>() & 0x1B00U;
    const velmorand::X11ModifierMap map = velmorand::someMap(input);
    velmorand::checkMasks(map);
    velmorand::checkLocks(map);
    velmorand::checkHotKey(map, modifiers);
    return 0;
}

#include "platform/linux/x11/X11ModifierMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <map>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {

void PrintTo(const X11ModifierMap& map, std::ostream* out) {
    *out << "shift " << map.shift << " caps " << map.capsLock << " control " << map.control << " alt " << map.alt
         << " super " << map.super << " num " << map.numLock << " scroll " << map.scrollLock;
}

namespace {

using testing::ElementsAre;
using testing::Optional;

constexpr std::uint32_t shiftLeft = 0xFFE1;
constexpr std::uint32_t controlLeft = 0xFFE3;
constexpr std::uint32_t capsLock = 0xFFE5;
constexpr std::uint32_t metaLeft = 0xFFE7;
constexpr std::uint32_t altLeft = 0xFFE9;
constexpr std::uint32_t altRight = 0xFFEA;
constexpr std::uint32_t superLeft = 0xFFEB;
constexpr std::uint32_t superRight = 0xFFEC;
constexpr std::uint32_t hyperLeft = 0xFFED;
constexpr std::uint32_t numLock = 0xFF7F;
constexpr std::uint32_t scrollLock = 0xFF14;
constexpr std::uint32_t thirdLevel = 0xFE03;

constexpr std::uint8_t firstKeycode = 8;
constexpr std::size_t keycodesPerModifier = 4;
constexpr std::size_t keysymsPerKeycode = 2;

constexpr std::uint32_t mod1 = 8;
constexpr std::uint32_t mod2 = 16;
constexpr std::uint32_t mod3 = 32;
constexpr std::uint32_t mod4 = 64;
constexpr std::uint32_t mod5 = 128;

constexpr std::uint32_t commandBit = 0x0100;
constexpr std::uint32_t shiftBit = 0x0200;
constexpr std::uint32_t capsLockBit = 0x0400;
constexpr std::uint32_t optionBit = 0x0800;
constexpr std::uint32_t controlBit = 0x1000;

/// A keyboard as the server describes it: which keycodes set each of the eight modifiers, and what the keys mean.
struct Keyboard {
    std::array<std::vector<std::uint8_t>, 8> modifiers;
    std::map<std::uint8_t, std::array<std::uint32_t, keysymsPerKeycode>> keys;

    [[nodiscard]] std::vector<std::uint8_t> keycodesOfModifiers() const {
        std::vector<std::uint8_t> rows;
        for (std::vector<std::uint8_t> row : modifiers) {
            row.resize(keycodesPerModifier);
            rows.insert(rows.end(), row.begin(), row.end());
        }
        return rows;
    }

    [[nodiscard]] std::vector<std::uint32_t> keysyms() const {
        std::vector<std::uint32_t> rows((256 - firstKeycode) * keysymsPerKeycode);
        for (const auto& [keycode, row] : keys)
            std::ranges::copy(row, rows.begin() + (keycode - firstKeycode) * static_cast<int>(keysymsPerKeycode));
        return rows;
    }

    [[nodiscard]] X11ModifierMap decoded() const {
        return decodeModifierMap(keycodesOfModifiers(), keycodesPerModifier, keysyms(), keysymsPerKeycode,
                                 firstKeycode);
    }
};

/// What an X server on Linux says without further configuration.
Keyboard defaultKeyboard() {
    return {{{{50, 62}, {66}, {37, 105}, {64, 204, 205}, {77}, {}, {133, 134, 206, 207}, {92, 203}}},
            {{37, {controlLeft, 0}},
             {50, {shiftLeft, 0}},
             {62, {shiftLeft + 1, 0}},
             {64, {altLeft, metaLeft}},
             {66, {capsLock, 0}},
             {77, {numLock, 0}},
             {78, {scrollLock, 0}},
             {92, {thirdLevel, 0}},
             {105, {controlLeft + 1, 0}},
             {108, {altRight, metaLeft + 1}},
             {133, {superLeft, 0}},
             {134, {superRight, 0}},
             {204, {0, altLeft}},
             {205, {0, metaLeft}},
             {206, {0, superLeft}},
             {207, {0, hyperLeft}}}};
}

TEST(X11ModifierMapTest, OfTheDefaultKeyboardHasAltOnMod1NumLockOnMod2AndSuperOnMod4) {
    EXPECT_EQ(defaultKeyboard().decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2}));
}

TEST(X11ModifierMapTest, FollowsKeysToUnusualModifiers) {
    Keyboard keyboard = defaultKeyboard();
    std::swap(keyboard.modifiers[3], keyboard.modifiers[5]);  // Alt on Mod3
    std::swap(keyboard.modifiers[6], keyboard.modifiers[7]);  // Super on Mod5
    std::swap(keyboard.modifiers[4], keyboard.modifiers[6]);  // Num Lock on Mod4

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod3, .super = mod5, .numLock = mod4}));
}

TEST(X11ModifierMapTest, FindsAKeyByTheMeaningItHasOnAnyLevel) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[3] = {204};
    keyboard.modifiers[6] = {206};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2}));
}

TEST(X11ModifierMapTest, TakesTheRightHandKeysWhereThereAreNoLeftHandOnes) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[3] = {108};
    keyboard.modifiers[6] = {134};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2}));
}

TEST(X11ModifierMapTest, KeepsToTheFirstModifierThatSeveralKeysSet) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[5] = {108};
    keyboard.modifiers[7] = {134};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2}));
}

TEST(X11ModifierMapTest, LeavesAModifierOfBothForOneOfItsOwn) {
    Keyboard superBesideAlt =
        defaultKeyboard();  // as when the left Alt key was made a Super key, but stayed where it was
    superBesideAlt.keys[64] = {superLeft, 0};
    Keyboard altBesideSuper = defaultKeyboard();
    std::swap(altBesideSuper.modifiers[3], altBesideSuper.modifiers[6]);
    altBesideSuper.keys[133] = {altLeft, 0};

    EXPECT_EQ(superBesideAlt.decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2}));
    EXPECT_EQ(altBesideSuper.decoded(), (X11ModifierMap{.alt = mod4, .super = mod1, .numLock = mod2}));
}

TEST(X11ModifierMapTest, PrefersAKeyThatCanBePressedToOneThatIsThereForItsNameOnly) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[3] = {204, 205};
    keyboard.modifiers[5] = {64, 133};
    keyboard.modifiers[6] = {206, 207};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod3, .super = mod3, .numLock = mod2}));
}

TEST(X11ModifierMapTest, HasAltAndSuperOnOneModifierWhereTheKeyboardHas) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[3] = {64, 133};
    keyboard.modifiers[6] = {};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = mod1, .numLock = mod2}));
}

TEST(X11ModifierMapTest, HasNoSuperWhereNoKeySetsIt) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[6] = {};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = 0, .numLock = mod2}));
}

TEST(X11ModifierMapTest, IgnoresAltKeysThatSetAFixedModifier) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[2] = {37, 64};
    keyboard.modifiers[3] = {};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = 0, .super = mod4, .numLock = mod2}));
}

TEST(X11ModifierMapTest, KnowsScrollLockOnceItSetsAModifier) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[5] = {78};

    EXPECT_EQ(keyboard.decoded(), (X11ModifierMap{.alt = mod1, .super = mod4, .numLock = mod2, .scrollLock = mod3}));
    EXPECT_EQ(keyboard.decoded().locks(), 2 | mod2 | mod3);
}

TEST(X11LockCombinationsTest, AreFourOnTheDefaultKeyboard) {
    EXPECT_THAT(defaultKeyboard().decoded().lockCombinations(), ElementsAre(0U, 2U, mod2, 2U | mod2));
}

TEST(X11LockCombinationsTest, AreEightWhenScrollLockSetsAModifier) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[5] = {78};

    EXPECT_THAT(keyboard.decoded().lockCombinations(),
                ElementsAre(0U, 2U, mod2, 2U | mod2, mod3, 2U | mod3, mod2 | mod3, 2U | mod2 | mod3));
}

TEST(X11LockCombinationsTest, AreTwoWithoutNumLock) {
    EXPECT_THAT(X11ModifierMap().lockCombinations(), ElementsAre(0U, 2U));
}

TEST(X11LockCombinationsTest, LookThroughEachOfTwoModifiersOfOneLock) {
    const X11ModifierMap map{.numLock = mod2 | mod3};

    EXPECT_THAT(map.lockCombinations(),
                ElementsAre(0U, 2U, mod2, 2U | mod2, mod3, 2U | mod3, mod2 | mod3, 2U | mod2 | mod3));
}

TEST(X11LockCombinationsTest, DoNotLookThroughALockThatIsTheModifierOfAShortcut) {
    const X11ModifierMap map{.alt = mod1, .super = mod4, .numLock = mod1 | mod2, .scrollLock = mod4};

    EXPECT_EQ(map.locks(), 2 | mod2);
    EXPECT_THAT(map.lockCombinations(), ElementsAre(0U, 2U, mod2, 2U | mod2));
}

TEST(X11LockCombinationsTest, HoldNoneTwiceWhenTwoLocksShareAModifier) {
    const X11ModifierMap map{.numLock = mod2, .scrollLock = mod2};

    EXPECT_THAT(map.lockCombinations(), ElementsAre(0U, 2U, mod2, 2U | mod2));
}

struct MaskRow {
    std::string name;
    std::uint32_t hotKeyModifiers;
    std::optional<std::uint32_t> mask;

    friend void PrintTo(const MaskRow& row, std::ostream* out) { *out << row.name; }
};

class X11MaskTest : public testing::TestWithParam<MaskRow> {};

TEST_P(X11MaskTest, OfHotKeyModifiersIsWhatTheTableSays) {
    EXPECT_EQ(defaultKeyboard().decoded().maskFor(GetParam().hotKeyModifiers), GetParam().mask);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11MaskTest,
    testing::Values(MaskRow{"None", 0, 0U}, MaskRow{"Command", commandBit, mod4}, MaskRow{"Shift", shiftBit, 1U},
                    MaskRow{"Option", optionBit, mod1}, MaskRow{"Control", controlBit, 4U},
                    MaskRow{"OptionCommand", optionBit | commandBit, mod1 | mod4},
                    MaskRow{"All", commandBit | shiftBit | optionBit | controlBit, 1U | 4U | mod1 | mod4},
                    MaskRow{"CapsLock", capsLockBit, std::nullopt},
                    MaskRow{"CommandAndCapsLock", commandBit | capsLockBit, std::nullopt},
                    MaskRow{"UnknownLowBit", commandBit | 1U, std::nullopt},
                    MaskRow{"UnknownHighBit", commandBit | 0x80000000U, std::nullopt},
                    MaskRow{"EveryBit", 0xFFFFFFFF, std::nullopt}),
    [](const auto& each) { return each.param.name; });

TEST(X11MaskTest, IsAbsentForAModifierThatTheKeyboardDoesNotHave) {
    const X11ModifierMap withoutSuper{.alt = mod1};

    EXPECT_EQ(withoutSuper.maskFor(commandBit), std::nullopt);
    EXPECT_EQ(withoutSuper.maskFor(commandBit | controlBit), std::nullopt);
    EXPECT_THAT(withoutSuper.maskFor(optionBit | controlBit), Optional(mod1 | 4U));
}

TEST(X11MaskTest, IsAbsentForTwoModifiersThatAreOneOnTheKeyboard) {
    const X11ModifierMap altIsSuper{.alt = mod1, .super = mod1};

    EXPECT_EQ(altIsSuper.maskFor(commandBit | optionBit), std::nullopt);
    EXPECT_EQ(altIsSuper.maskFor(commandBit | optionBit | shiftBit), std::nullopt);
    EXPECT_THAT(altIsSuper.maskFor(commandBit), Optional(mod1));
    EXPECT_THAT(altIsSuper.maskFor(optionBit | controlBit), Optional(mod1 | 4U));
}

struct BrokenSizeRow {
    std::string name;
    std::size_t keycodes;
    std::size_t keycodesPerModifier;
    std::size_t keysyms;
    std::size_t keysymsPerKeycode;
    std::uint8_t firstKeycode;

    friend void PrintTo(const BrokenSizeRow& row, std::ostream* out) { *out << row.name; }
};

class X11BrokenModifierMapTest : public testing::TestWithParam<BrokenSizeRow> {};

TEST_P(X11BrokenModifierMapTest, HasOnlyTheFixedModifiers) {
    std::vector<std::uint8_t> keycodes = defaultKeyboard().keycodesOfModifiers();
    std::vector<std::uint32_t> keysyms = defaultKeyboard().keysyms();
    keycodes.resize(GetParam().keycodes);
    keysyms.resize(GetParam().keysyms);

    EXPECT_EQ(decodeModifierMap(keycodes, GetParam().keycodesPerModifier, keysyms, GetParam().keysymsPerKeycode,
                                GetParam().firstKeycode),
              X11ModifierMap());
}

INSTANTIATE_TEST_SUITE_P(Table, X11BrokenModifierMapTest,
                         testing::Values(BrokenSizeRow{"NothingAtAll", 0, 0, 0, 0, 0},
                                         BrokenSizeRow{"NoKeycodes", 0, 4, 496, 2, 8},
                                         BrokenSizeRow{"RowsCutOff", 31, 4, 496, 2, 8},
                                         BrokenSizeRow{"RowsLongerThanTheList", 32, 255, 496, 2, 8},
                                         BrokenSizeRow{"NoKeycodesPerModifier", 32, 0, 496, 2, 8},
                                         BrokenSizeRow{"NoKeysyms", 32, 4, 0, 2, 8},
                                         BrokenSizeRow{"KeysymsCutOff", 32, 4, 100, 2, 8},
                                         BrokenSizeRow{"NoKeysymsPerKeycode", 32, 4, 496, 0, 8},
                                         BrokenSizeRow{"MoreKeysymsPerKeycodeThanThereAre", 32, 4, 496, 497, 8},
                                         BrokenSizeRow{"EveryKeycodeBelowTheFirst", 32, 4, 496, 2, 255}),
                         [](const auto& each) { return each.param.name; });

TEST(X11ModifierMapTest, UsesTheRowsThatAreWholeWhenKeysymsAreCutOff) {
    std::vector<std::uint32_t> keysyms = defaultKeyboard().keysyms();
    keysyms.resize(static_cast<std::size_t>(78 - firstKeycode) * keysymsPerKeycode);  // up to Num Lock

    EXPECT_EQ(decodeModifierMap(defaultKeyboard().keycodesOfModifiers(), keycodesPerModifier, keysyms,
                                keysymsPerKeycode, firstKeycode),
              (X11ModifierMap{.alt = mod1, .super = 0, .numLock = mod2}));
}

TEST(X11ModifierMapTest, DoesNotReadBeyondARowThatIsCutOff) {
    Keyboard keyboard = defaultKeyboard();
    keyboard.modifiers[6] = {206};  // Super on its second level
    const std::vector<std::uint32_t> keysyms = keyboard.keysyms();
    const auto cutInTheRow = std::span(keysyms).first((206 - firstKeycode) * keysymsPerKeycode + 1);

    EXPECT_EQ(decodeModifierMap(keyboard.keycodesOfModifiers(), keycodesPerModifier, cutInTheRow, keysymsPerKeycode,
                                firstKeycode),
              (X11ModifierMap{.alt = mod1, .super = 0, .numLock = mod2}));
}

}  // namespace
}  // namespace velmorand

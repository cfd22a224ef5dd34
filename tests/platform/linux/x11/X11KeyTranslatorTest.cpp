#include "platform/linux/x11/X11KeyTranslator.h"

#include "platform/linux/x11/X11KeyCodes.h"
#include "shortcuts/ShortcutModifiers.h"
#include "support/Printing.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace velmorand {
namespace {

constexpr std::uint8_t placeOfA = 38;
constexpr std::uint8_t placeOfKeypad7 = 79;
constexpr std::uint8_t placeOfScrollLock = 78;

constexpr std::uint32_t secondGroup = 1U << 13U;
constexpr std::uint32_t thirdGroup = 2U << 13U;
constexpr std::uint32_t fourthGroup = 3U << 13U;

/// A keyboard whose keys all mean this.
X11KeyTranslator keyboardOf(const X11Key& key,
                            const X11ModifierMap& modifiers = {.alt = 8, .super = 64, .numLock = 16}) {
    return {.keys = {.firstKeycode = 8, .keys = std::vector<X11Key>(248, key)}, .modifiers = modifiers};
}

X11Key keyWith(std::vector<std::uint32_t> levels) {
    const auto count = static_cast<std::uint8_t>(levels.size());
    return {.groupInfo = 1, .levels = count, .keysyms = std::move(levels)};
}

std::optional<std::string> charactersOf(const X11Key& key, std::uint32_t state, std::uint8_t keycode = placeOfA) {
    const auto event = keyboardOf(key).keyDown(keycode, state);
    return event ? std::optional(event->charactersIgnoringModifiers) : std::nullopt;
}

struct CharacterRow {
    std::string name;
    std::vector<std::uint32_t> levels;
    std::string characters;
};

class X11KeyCharactersTest : public testing::TestWithParam<CharacterRow> {};

TEST_P(X11KeyCharactersTest, AreWhatTheKeyWritesWithoutModifiers) {
    for (const std::uint32_t state : {0U, 1U, 2U, 4U, 8U, 64U, 128U, 255U})
        EXPECT_EQ(charactersOf(keyWith(GetParam().levels), state), GetParam().characters) << state;
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11KeyCharactersTest,
    testing::Values(CharacterRow{"Letter", {XKB_KEY_q, XKB_KEY_Q}, "q"},
                    CharacterRow{"Digit", {XKB_KEY_1, XKB_KEY_exclam}, "1"},
                    CharacterRow{"Accented", {XKB_KEY_eacute, XKB_KEY_2}, "\u00e9"},
                    CharacterRow{"Cyrillic", {XKB_KEY_Cyrillic_ef, XKB_KEY_Cyrillic_EF}, "\u0444"},
                    CharacterRow{"ByItsCodePoint", {0x0100'1e9e}, "\u1e9e"},
                    CharacterRow{"Space", {XKB_KEY_space}, " "}, CharacterRow{"Arrow", {XKB_KEY_Left}, ""},
                    CharacterRow{"FunctionKey", {XKB_KEY_F5}, ""}, CharacterRow{"Return", {XKB_KEY_Return}, ""},
                    CharacterRow{"KeypadEnter", {XKB_KEY_KP_Enter}, ""}, CharacterRow{"Tab", {XKB_KEY_Tab}, ""},
                    CharacterRow{"Escape", {XKB_KEY_Escape}, ""}, CharacterRow{"BackSpace", {XKB_KEY_BackSpace}, ""},
                    CharacterRow{"Delete", {XKB_KEY_Delete}, ""}, CharacterRow{"DelAsCharacter", {0x0100'007f}, ""},
                    CharacterRow{"ControlCharacterOfTheSecondBlock", {0x0100'0085}, ""},
                    CharacterRow{"DeadKey", {XKB_KEY_dead_circumflex, XKB_KEY_dead_diaeresis}, ""},
                    CharacterRow{"Nothing", {XKB_KEY_NoSymbol, XKB_KEY_a}, ""}, CharacterRow{"NoLevels", {}, ""},
                    CharacterRow{"KeypadHome", {XKB_KEY_KP_Home, XKB_KEY_KP_7}, "7"},
                    CharacterRow{"KeypadDecimal", {XKB_KEY_KP_Delete, XKB_KEY_KP_Separator}, ","},
                    CharacterRow{"KeypadDigit", {XKB_KEY_KP_7, XKB_KEY_KP_Home}, "7"},
                    CharacterRow{"KeypadAdd", {XKB_KEY_KP_Add}, "+"}),
    [](const auto& each) { return each.param.name; });

TEST(X11KeyTranslatorTest, TheCharactersAreThoseOfTheGroupThatIsActive) {
    const X11Key key{
        .groupInfo = 3, .levels = 2, .keysyms = {XKB_KEY_a, XKB_KEY_A, XKB_KEY_q, XKB_KEY_Q, XKB_KEY_x, XKB_KEY_X}};

    EXPECT_EQ(charactersOf(key, 0), "a");
    EXPECT_EQ(charactersOf(key, secondGroup), "q");
    EXPECT_EQ(charactersOf(key, thirdGroup | 1U), "x");
}

TEST(X11KeyTranslatorTest, AGroupThatAKeyDoesNotHaveIsAnotherOneOfIts) {
    X11Key key{.groupInfo = 2, .levels = 1, .keysyms = {XKB_KEY_a, XKB_KEY_b}};
    EXPECT_EQ(charactersOf(key, thirdGroup), "a");
    EXPECT_EQ(charactersOf(key, fourthGroup), "b");

    key.groupInfo = 0x40 | 2;  // the last one
    EXPECT_EQ(charactersOf(key, thirdGroup), "b");

    key.groupInfo = 0x80 | 0x10 | 2;  // the one that it names
    EXPECT_EQ(charactersOf(key, thirdGroup), "b");

    key.groupInfo = 0x80 | 0x30 | 2;  // one that it does not have either
    EXPECT_EQ(charactersOf(key, thirdGroup), "a");
}

TEST(X11KeyTranslatorTest, AKeyIsToldByItsPlaceWhateverItWrites) {
    for (const X11KeyCodeRow& row : x11KeyCodes) {
        const auto event = keyboardOf(keyWith({XKB_KEY_q})).keyDown(row.xKeycode, 0);
        ASSERT_TRUE(event) << row.virtualKeyCode;
        EXPECT_EQ(event->keyCode, row.virtualKeyCode);
    }
}

TEST(X11KeyTranslatorTest, TheKeyThatIsEscapeInTheLayoutIsToldAsEscapeUnlessItMakesACombination) {
    constexpr std::uint8_t placeOfCapsLock = 66;
    const X11KeyTranslator translator = keyboardOf(keyWith({XKB_KEY_Escape}));

    EXPECT_EQ(translator.keyDown(placeOfCapsLock, 0)->keyCode, 53U);
    EXPECT_EQ(translator.keyDown(placeOfCapsLock, 1 | 2)->keyCode, 53U);
    EXPECT_EQ(translator.keyDown(placeOfCapsLock, 4)->keyCode, 57U)
        << "with Control it is a key of a combination, told by its place";
}

TEST(X11KeyTranslatorTest, AKeyWithoutAVirtualKeyCodeIsNotTold) {
    EXPECT_EQ(keyboardOf(keyWith({XKB_KEY_q})).keyDown(172, 0), std::nullopt);
}

TEST(X11KeyTranslatorTest, AKeyOutsideOfTheMapWritesNothing) {
    const X11KeyTranslator translator{.keys = {.firstKeycode = 50, .keys = {keyWith({XKB_KEY_a})}}, .modifiers = {}};

    EXPECT_EQ(translator.keyDown(placeOfA, 0), (RecorderKeyEvent{0, 0, ""}));
    EXPECT_EQ(translator.keyDown(placeOfKeypad7, 0), (RecorderKeyEvent{89, 0, ""}));
}

TEST(X11KeyTranslatorTest, KeysThatOnlyHoldLockOrSwitchSomethingAreNotTold) {
    for (const unsigned int keysym : std::initializer_list<unsigned int>{
             XKB_KEY_Shift_L, XKB_KEY_Shift_R, XKB_KEY_Control_L, XKB_KEY_Control_R, XKB_KEY_Alt_L, XKB_KEY_Alt_R,
             XKB_KEY_Meta_L, XKB_KEY_Super_L, XKB_KEY_Super_R, XKB_KEY_Hyper_R, XKB_KEY_Caps_Lock, XKB_KEY_Shift_Lock,
             XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock, XKB_KEY_Mode_switch, XKB_KEY_ISO_Level3_Shift,
             XKB_KEY_ISO_Level5_Shift, XKB_KEY_ISO_Next_Group, XKB_KEY_ISO_Lock}) {
        EXPECT_EQ(charactersOf(keyWith({keysym}), 0), std::nullopt) << keysym;
    }
    EXPECT_EQ(charactersOf(keyWith({XKB_KEY_a}), 0, placeOfScrollLock), std::nullopt);
}

struct FlagRow {
    std::string name;
    std::uint32_t state;
    ShortcutModifiers modifiers;
};

class X11KeyFlagsTest : public testing::TestWithParam<FlagRow> {};

TEST_P(X11KeyFlagsTest, AreThoseOfTheModifiers) {
    const X11KeyTranslator translator = keyboardOf(keyWith({XKB_KEY_a}));

    EXPECT_EQ(modifiersFromEventFlags(translator.modifierFlags(GetParam().state)), GetParam().modifiers);
    EXPECT_EQ(translator.keyDown(placeOfA, GetParam().state)->modifierFlags,
              translator.modifierFlags(GetParam().state));
}

constexpr auto command = ShortcutModifiers::command;
constexpr auto shift = ShortcutModifiers::shift;
constexpr auto option = ShortcutModifiers::option;
constexpr auto control = ShortcutModifiers::control;

INSTANTIATE_TEST_SUITE_P(Table, X11KeyFlagsTest,
                         testing::Values(FlagRow{"None", 0, {}}, FlagRow{"Shift", 1, shift},
                                         FlagRow{"Control", 4, control}, FlagRow{"Alt", 8, option},
                                         FlagRow{"Super", 64, command},
                                         FlagRow{"All", 1 | 4 | 8 | 64, {command, shift, option, control}},
                                         FlagRow{"Locks", 2 | 16, {}}, FlagRow{"ThirdLevel", 128, {}},
                                         FlagRow{"Hyper", 32, {}}, FlagRow{"PointerButtons", 0x1F00, {}},
                                         FlagRow{"AnotherGroup", secondGroup | 1, shift}),
                         [](const auto& each) { return each.param.name; });

TEST(X11KeyTranslatorTest, TheModifiersAreWhereTheKeyboardHasThem) {
    const X11KeyTranslator translator = keyboardOf(keyWith({XKB_KEY_a}), {.alt = 32, .super = 128, .numLock = 64});

    EXPECT_EQ(modifiersFromEventFlags(translator.modifierFlags(32)), option);
    EXPECT_EQ(modifiersFromEventFlags(translator.modifierFlags(128)), command);
    EXPECT_EQ(translator.modifierFlags(8 | 64), 0U);
}

TEST(X11KeyTranslatorTest, OneModifierForAltAndSuperIsThatOfAlt) {
    const X11KeyTranslator translator = keyboardOf(keyWith({XKB_KEY_a}), {.alt = 8, .super = 8});

    EXPECT_EQ(modifiersFromEventFlags(translator.modifierFlags(8)), option);
}

TEST(X11KeyTranslatorTest, AModifierThatIsOnNoKeyIsNeverHeld) {
    EXPECT_EQ(keyboardOf(keyWith({XKB_KEY_a}), {}).modifierFlags(0xF8), 0U);
}

/// A record as the server writes it.
void addRecord(std::vector<std::uint8_t>& bytes, std::uint8_t groupInfo, std::uint8_t levels,
               const std::vector<std::uint32_t>& keysyms) {
    const auto count = static_cast<std::uint16_t>(keysyms.size());
    bytes.insert(bytes.end(), {0, 0, 0, 0, groupInfo, levels, 0, 0});
    std::memcpy(bytes.data() + bytes.size() - 2, &count, sizeof count);
    for (const std::uint32_t keysym : keysyms) {
        bytes.resize(bytes.size() + sizeof keysym);
        std::memcpy(bytes.data() + bytes.size() - sizeof keysym, &keysym, sizeof keysym);
    }
}

TEST(X11KeyMapTest, IsReadRecordByRecord) {
    std::vector<std::uint8_t> bytes;
    addRecord(bytes, 2, 2, {1, 2, 3, 4});
    addRecord(bytes, 0, 0, {});
    addRecord(bytes, 1, 1, {5});

    const auto map = decodeKeyMap(bytes, 8, 3);

    EXPECT_EQ(map, (X11KeyMap{8, {{2, 2, {1, 2, 3, 4}}, {0, 0, {}}, {1, 1, {5}}}}));
    EXPECT_EQ(decodeKeyMap(bytes, 8, 4), std::nullopt);
    bytes.pop_back();
    EXPECT_EQ(decodeKeyMap(bytes, 8, 3), std::nullopt);
}

TEST(X11KeyMapTest, AnyBytesCanBeReadAndAskedForAnyKey) {
    std::mt19937 random{1};
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint8_t> bytes(random() % 200);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random() % 4 == 0 ? random() : random() % 3);
        const auto map = decodeKeyMap(bytes, static_cast<std::uint8_t>(random()), random() % 8);
        if (!map) continue;
        const X11KeyTranslator translator{.keys = *map, .modifiers = {}};
        for (std::uint32_t keycode = 0; keycode < 256; ++keycode)
            static_cast<void>(
                translator.keyDown(static_cast<std::uint8_t>(keycode), static_cast<std::uint32_t>(random())));
    }
}

}  // namespace
}  // namespace velmorand

#include "desktop/x11/X11HotKeyTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t commandOption = modifier::command | modifier::option;

class X11HotKeyKeyboardTest : public X11HotKeyTest {
protected:
    /// Tells the server to use the map that it has, so that it tells everybody of a change.
    void repeatKeyboardMap(int times) {
        XConnection& connection = observer().connection();
        const auto key = static_cast<xcb_keycode_t>(Key::a);
        const auto map =
            connection.reply<xcb_get_keyboard_mapping_reply_t>(xcb_get_keyboard_mapping(connection.raw(), key, 1));
        ASSERT_NE(map, nullptr);
        for (int i = 0; i < times; ++i) {
            xcb_change_keyboard_mapping(connection.raw(), 1, key, map->keysyms_per_keycode,
                                        xcb_get_keyboard_mapping_keysyms(map.get()));
        }
        connection.synchronise();
    }
};

struct LockRow {
    std::string name;
    /// The keys of the modifiers where there are locks, and those of the modifier that has Num Lock by itself.
    std::vector<Key> onMod2;
    std::vector<Key> onMod3;
};

class X11HotKeyLockTest : public X11HotKeyTest, public testing::WithParamInterface<LockRow> {
protected:
    /// The modifier that the lock key sets; 0 for none.
    [[nodiscard]] static std::uint16_t maskOf(Key key) {
        if (std::ranges::count(GetParam().onMod2, key) > 0) return XCB_MOD_MASK_2;
        if (std::ranges::count(GetParam().onMod3, key) > 0) return XCB_MOD_MASK_3;
        return 0;
    }

    void setLock(Key key, bool isOn) {
        const std::uint16_t mask = maskOf(key);
        if (mask == 0) {
            keyboard().press(key);
        } else {
            ASSERT_TRUE(keyboard().setLock(key, mask, isOn));
        }
    }
};

TEST_P(X11HotKeyLockTest, AShortcutWorksWhicheverLocksAreOn) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    setKeysOfModifier(XCB_MAP_INDEX_2, GetParam().onMod2);
    setKeysOfModifier(XCB_MAP_INDEX_3, GetParam().onMod3);

    for (unsigned int locks = 0; locks < 8; ++locks) {
        SCOPED_TRACE(locks);
        setLock(Key::numLock, (locks & 1U) != 0);
        setLock(Key::scrollLock, (locks & 2U) != 0);
        ASSERT_TRUE(keyboard().setCapsLock((locks & 4U) != 0));
        EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}}), ElementsAre(1));
        EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::left}}), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Table, X11HotKeyLockTest,
                         testing::Values(LockRow{"AsUsual", {Key::numLock}, {}},
                                         LockRow{"ScrollLockOnAModifierOfItsOwn", {Key::numLock}, {Key::scrollLock}},
                                         LockRow{"NumLockElsewhere", {}, {Key::numLock}},
                                         LockRow{"NumLockAndScrollLockChanged", {Key::scrollLock}, {Key::numLock}},
                                         LockRow{"BothOnOne", {Key::numLock, Key::scrollLock}, {}},
                                         LockRow{"NumLockWithoutAModifier", {}, {}}),
                         [](const auto& each) { return each.param.name; });

TEST_F(X11HotKeyKeyboardTest, AShortcutFollowsSuperAndAltToOtherModifiers) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::left, modifier::command, 2), noError);
    const std::vector<Combination> both{{{Key::leftSuper, Key::leftAlt}, Key::left}, {{Key::leftSuper}, Key::left}};

    setKeysOfModifier(XCB_MAP_INDEX_4, {});
    setKeysOfModifier(XCB_MAP_INDEX_3, {Key::leftSuper});
    EXPECT_THAT(pressedIDs(both), ElementsAre(1, 2));

    setKeysOfModifier(XCB_MAP_INDEX_1, {});
    setKeysOfModifier(XCB_MAP_INDEX_4, {Key::leftAlt});
    EXPECT_THAT(pressedIDs(both), ElementsAre(1, 2));
    client().giveAllBack();
    catchUp();
    EXPECT_TRUE(otherClient().isFree(Key::left));
}

/// The server tells of changes in other words then.
TEST_F(X11HotKeyKeyboardTest, AShortcutFollowsItsModifiersAlsoAfterTheKeyboardWasDescribed) {
    start();
    ASSERT_EQ(client().add(Key::left, modifier::command, 1), noError);
    ASSERT_TRUE(client().keyboard().describe(soon()));

    setKeysOfModifier(XCB_MAP_INDEX_4, {});
    setKeysOfModifier(XCB_MAP_INDEX_3, {Key::leftSuper});
    EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::left}}), ElementsAre(1));

    setLayout({"-layout", "fr", "-option", "", "-option", "altwin:swap_alt_win"});
    EXPECT_THAT(pressedIDs({{{Key::leftAlt}, Key::left}}), ElementsAre(1));
    EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::left}}), IsEmpty());
}

TEST_F(X11HotKeyKeyboardTest, ModifiersThatChangePlacesTakeTheirShortcutsAlong) {
    start();
    ASSERT_EQ(client().add(Key::left, modifier::command, 1), noError);
    ASSERT_EQ(client().add(Key::left, modifier::option, 2), noError);

    setKeysOfModifier(XCB_MAP_INDEX_4, {});
    setKeysOfModifier(XCB_MAP_INDEX_1, {Key::leftSuper});
    setKeysOfModifier(XCB_MAP_INDEX_4, {Key::leftAlt});

    EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::left}, {{Key::leftAlt}, Key::left}}), ElementsAre(1, 2));
}

TEST_F(X11HotKeyKeyboardTest, AShortcutSleepsWhileNoKeySetsItsModifierAndComesBackWithTheKey) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::left, modifier::option | modifier::shift, 2), noError);
    const std::vector<Combination> both{{{Key::leftSuper, Key::leftAlt}, Key::left},
                                        {{Key::leftShift, Key::leftAlt}, Key::left}};

    setKeysOfModifier(XCB_MAP_INDEX_4, {});
    EXPECT_THAT(pressedIDs(both), ElementsAre(2));
    EXPECT_EQ(client().add(Key::right, commandOption, 3), hotKeyParameterError);
    EXPECT_TRUE(otherClient().grab(GrabKind::inputExtension, Key::left, XCB_MOD_MASK_4 | XCB_MOD_MASK_1))
        << "what it was before is still grabbed";

    setKeysOfModifier(XCB_MAP_INDEX_4, {Key::leftSuper});
    EXPECT_THAT(pressedIDs(both), ElementsAre(1, 2));
    EXPECT_EQ(client().add(Key::right, commandOption, 3), noError);
}

TEST_F(X11HotKeyKeyboardTest, TwoModifiersThatBecomeOneDoNotMakeAShortcutOfOneKeyLess) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::right, modifier::command, 2), noError);

    setKeysOfModifier(XCB_MAP_INDEX_4, {});
    setKeysOfModifier(XCB_MAP_INDEX_1, {Key::leftAlt, Key::leftSuper});

    EXPECT_THAT(pressedIDs({{{Key::leftAlt}, Key::left}, {{Key::leftSuper}, Key::left}}), IsEmpty());
    EXPECT_EQ(client().add(Key::down, commandOption, 3), hotKeyParameterError);
    EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::right}}), ElementsAre(2));
    EXPECT_EQ(client().add(Key::right, modifier::option, 4), hotKeyAlreadyTaken);

    setKeysOfModifier(XCB_MAP_INDEX_1, {Key::leftAlt});
    setKeysOfModifier(XCB_MAP_INDEX_4, {Key::leftSuper});
    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}}), ElementsAre(1));
}

TEST_F(X11HotKeyKeyboardTest, ManyChangesThatChangeNothingCostOneLook) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    catchUp();
    const unsigned int before = client().requestNumber();

    repeatKeyboardMap(200);
    catchUp();

    // The keys of the modifiers and the meanings of the keys, and what it costs to catch up twice.
    EXPECT_LE(client().requestNumber(), before + 2 + 2 + 1);
    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}}), ElementsAre(1));
}

TEST_F(X11HotKeyKeyboardTest, AShortcutFollowsAChangeThatTheServerDidNotDescribeInTime) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    keyboard().press(Key::leftShift);  // the first key of this keyboard counts as a change of its own
    catchUp();
    changeKeysOfModifier(XCB_MAP_INDEX_4, {});
    changeKeysOfModifier(XCB_MAP_INDEX_3, {Key::leftSuper});
    ASSERT_TRUE(client().connection().check({}, soon()));  // the news has arrived

    desktop().server().freeze();
    while (client().connection().handleEvents()) {}
    runPosted();  // asks, and is not answered
    desktop().server().thaw();

    EXPECT_TRUE(runUntil([&] { return !pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}}).empty(); }));
}

struct LayoutRow {
    std::string name;
    std::vector<std::string> arguments;
    Key commandKey = Key::leftSuper;
    Key optionKey = Key::leftAlt;

    friend void PrintTo(const LayoutRow& row, std::ostream* out) { *out << row.name; }
};

class X11HotKeyLayoutTest : public X11HotKeyTest, public testing::WithParamInterface<LayoutRow> {};

TEST_P(X11HotKeyLayoutTest, AShortcutStaysAtItsPlaceOnTheKeyboard) {
    const auto& [name, arguments, commandKey, optionKey] = GetParam();
    start();
    ASSERT_EQ(client().add(Key::q, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::q, modifier::command, 2), noError);

    setLayout(arguments);
    ASSERT_EQ(client().add(Key::q, modifier::option, 3), noError);

    EXPECT_THAT(pressedIDs({{{commandKey, optionKey}, Key::q}, {{commandKey}, Key::q}, {{optionKey}, Key::q}}),
                ElementsAre(1, 2, 3));
    EXPECT_THAT(pressedIDs({{{commandKey, optionKey}, Key::a}, {{}, Key::q}}), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11HotKeyLayoutTest,
    testing::Values(
        LayoutRow{"French", {"-layout", "fr"}}, LayoutRow{"German", {"-layout", "de"}},
        LayoutRow{"Dvorak", {"-layout", "us", "-variant", "dvorak"}},
        LayoutRow{
            "AltAndSuperChanged", {"-layout", "us", "-option", "altwin:swap_alt_win"}, Key::leftAlt, Key::leftSuper},
        LayoutRow{"LeftAltAndSuperChangedFrench",
                  {"-layout", "fr", "-option", "altwin:swap_lalt_lwin"},
                  Key::leftAlt,
                  Key::leftSuper},
        LayoutRow{"MetaOnTheWindowsKeys", {"-layout", "us", "-option", "altwin:meta_win"}},
        LayoutRow{"MetaOnTheAltKeysGerman", {"-layout", "de", "-option", "altwin:meta_alt"}},
        LayoutRow{"MetaOnTheLeftWindowsKey", {"-layout", "us", "-option", "altwin:left_meta_win"}},
        LayoutRow{"HyperOnTheWindowsKeys", {"-layout", "us", "-option", "altwin:hyper_win"}},
        LayoutRow{"SuperOnCapsLock", {"-layout", "us", "-option", "caps:super"}, Key::capsLock},
        LayoutRow{"ControlAndSuperChanged", {"-layout", "us", "-option", "ctrl:swap_lwin_lctl"}, Key::leftControl}),
    [](const auto& each) { return each.param.name; });

TEST_F(X11HotKeyKeyboardTest, AShortcutWorksInEachOfTwoLayouts) {
    start();
    ASSERT_EQ(client().add(Key::q, commandOption, 1), noError);
    setLayout({"-layout", "us,fr", "-option", "grp:menu_toggle"});
    const std::vector<Combination> press{{{Key::leftSuper, Key::leftAlt}, Key::q}};

    EXPECT_THAT(pressedIDs(press), ElementsAre(1));
    keyboard().press(Key::menu);
    EXPECT_THAT(pressedIDs(press), ElementsAre(1));
}

}  // namespace
}  // namespace velmorand::desktop

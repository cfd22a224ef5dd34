#include "desktop/x11/X11RecorderTest.h"

#include <gmock/gmock.h>

#include <chrono>
#include <ostream>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Key rightShift{62};
constexpr Key grave{49};
constexpr Key keypad7{79};

class X11RecorderKeyTest : public X11RecorderTest {
protected:
    void SetUp() override { start(WindowManagerKind::none); }
};

TEST_F(X11RecorderKeyTest, ACombinationIsToldWithTheModifiersOnTheirWay) {
    showAsKey();

    keyboard().press({Key::leftControl, Key::leftAlt, Key::leftShift, Key::leftSuper}, Key::a);

    EXPECT_THAT(takeTold(), ElementsAre("held control", "held control option", "held control option shift",
                                        "held control option shift command", "key 0 a control option shift command",
                                        "held control option shift", "held control option", "held control", "held"));
}

TEST_F(X11RecorderKeyTest, AModifierIsHeldUntilTheLastOfItsKeysIsReleased) {
    showAsKey();
    {
        const HeldKey right(observer().connection(), {rightShift});
        {
            const HeldKey left(observer().connection(), {Key::leftShift});
            EXPECT_THAT(takeTold(), ElementsAre("held shift"));
        }
        EXPECT_THAT(takeTold(), IsEmpty());
        keyboard().press(Key::a);
        EXPECT_THAT(takeTold(), ElementsAre("key 0 a shift"));
    }
    EXPECT_THAT(takeTold(), ElementsAre("held"));
}

TEST_F(X11RecorderKeyTest, LocksChangeNothing) {
    ASSERT_TRUE(keyboard().setCapsLock(true));
    ASSERT_TRUE(keyboard().setNumLock(true));
    showAsKey();

    EXPECT_THAT(toldKeys({{Key::a}, {Key::leftSuper, Key::digit1}, {keypad7}}),
                ElementsAre("key 0 a", "key 18 1 command", "key 89 7"));

    keyboard().press(Key::capsLock);
    keyboard().press(Key::numLock);
    keyboard().press(Key::scrollLock);
    EXPECT_THAT(takeTold(), IsEmpty());
    EXPECT_THAT(toldKeys({{Key::a}, {keypad7}}), ElementsAre("key 0 a", "key 89 7"));
}

TEST_F(X11RecorderKeyTest, AKeyThatIsHeldIsToldOnce) {
    showAsKey();
    {
        const HeldKey held = keyboard().hold({Key::leftSuper}, Key::a);
        // The server repeats a held key for the first time after 660 ms and then every 40 ms.
        observer().waitUntil([] { return false; }, std::chrono::milliseconds(1000));
    }
    EXPECT_THAT(takeTold(), ElementsAre("held command", "key 0 a command", "held"));

    EXPECT_THAT(toldKeys({{Key::a}, {Key::a}}), ElementsAre("key 0 a", "key 0 a"));
}

TEST_F(X11RecorderKeyTest, AKeyThatWasDownBeforeIsToldWhenItIsPressedAgain) {
    {
        const HeldKey held = keyboard().hold({}, Key::enter);
        showAsKey();
        observer().waitUntil([] { return false; }, std::chrono::milliseconds(1000));
        EXPECT_THAT(takeTold(), IsEmpty());
    }
    EXPECT_THAT(toldKeys({{Key::enter}}), ElementsAre("key 36 "));
}

TEST_F(X11RecorderKeyTest, KeysThatAnotherProgramMakesUpAreNotTold) {
    showAsKey();
    const xcb_window_t root = observer().connection().root();
    const auto tree =
        observer().connection().reply<xcb_query_tree_reply_t>(xcb_query_tree(observer().connection().raw(), root));
    ASSERT_NE(tree, nullptr);
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        xcb_key_press_event_t press{};
        press.response_type = XCB_KEY_PRESS;
        press.detail = static_cast<xcb_keycode_t>(Key::a);
        press.event = children[i];
        xcb_send_event(observer().connection().raw(), 0, children[i], XCB_EVENT_MASK_KEY_PRESS,
                       reinterpret_cast<const char*>(&press));
    }

    EXPECT_THAT(takeTold(), IsEmpty());
}

struct LayoutRow {
    std::string name;
    std::vector<std::string> arguments;
    /// How often the key is pressed that goes to the next layout.
    int switches;
    Key key;
    std::string told;

    friend void PrintTo(const LayoutRow& row, std::ostream* out) { *out << row.name; }
};

class X11RecorderLayoutTest : public X11RecorderKeyTest, public testing::WithParamInterface<LayoutRow> {
protected:
    void switchLayout() {
        for (int i = 0; i < GetParam().switches; ++i) keyboard().press(Key::scrollLock);
    }
    void TearDown() override {
        X11RecorderKeyTest::TearDown();
        host().close();
    }
};

TEST_P(X11RecorderLayoutTest, CharactersAreThoseOfTheCurrentLayout) {
    setLayout(GetParam().arguments);
    switchLayout();
    showAsKey();

    EXPECT_THAT(toldKeys({{GetParam().key}, {Key::leftShift, GetParam().key}, {Key::leftSuper, GetParam().key}}),
                ElementsAre(GetParam().told, GetParam().told + " shift", GetParam().told + " command"));
}

TEST_P(X11RecorderLayoutTest, AChangeWhileThePanelIsShownIsFollowed) {
    showAsKey();
    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));

    setLayout(GetParam().arguments);
    switchLayout();

    EXPECT_THAT(toldKeys({{GetParam().key}}), ElementsAre(GetParam().told));
}

INSTANTIATE_TEST_SUITE_P(
    Of, X11RecorderLayoutTest,
    testing::Values(
        LayoutRow{"French", {"-layout", "fr"}, 0, Key::a, "key 0 q"},
        LayoutRow{"FrenchDigit", {"-layout", "fr"}, 0, Key::digit1, "key 18 &"},
        LayoutRow{"German", {"-layout", "de"}, 0, Key::z, "key 6 y"},
        LayoutRow{"GermanDeadKey", {"-layout", "de"}, 0, grave, "key 50 "},
        LayoutRow{"Dvorak", {"-layout", "us", "-variant", "dvorak"}, 0, Key::s, "key 1 o"},
        LayoutRow{"FirstOfTwo", {"-layout", "us,ru", "-option", "grp:sclk_toggle"}, 0, Key::a, "key 0 a"},
        LayoutRow{"SecondOfTwo", {"-layout", "us,ru", "-option", "grp:sclk_toggle"}, 1, Key::a, "key 0 ф"},
        LayoutRow{"ThirdOfThree", {"-layout", "us,ru,de", "-option", "grp:sclk_toggle"}, 2, Key::z, "key 6 y"},
        LayoutRow{"FourthOfFour", {"-layout", "us,ru,de,fr", "-option", "grp:sclk_toggle"}, 3, Key::a, "key 0 q"},
        LayoutRow{
            "KeyWithoutSecondLayout", {"-layout", "us,ru", "-option", "grp:sclk_toggle"}, 1, Key::left, "key 123 "}),
    [](const auto& each) { return each.param.name; });

TEST_F(X11RecorderKeyTest, TheThirdLevelIsNoModifier) {
    setLayout({"-layout", "de"});
    showAsKey();

    EXPECT_THAT(toldKeys({{Key::rightAlt, Key::q}}), ElementsAre("key 12 q"));
}

TEST_F(X11RecorderKeyTest, ModifiersAreWhereTheKeyboardHasThem) {
    setLayout({"-layout", "us", "-option", "altwin:swap_alt_win"});
    showAsKey();

    EXPECT_THAT(toldKeys({{Key::leftSuper, Key::a}, {Key::leftAlt, Key::a}}),
                ElementsAre("key 0 a option", "key 0 a command"));
}

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/x11/X11HotKeyTest.h"

#include <gmock/gmock.h>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t commandOption = modifier::command | modifier::option;

class X11HotKeyPressTest : public X11HotKeyTest {
protected:
    [[nodiscard]] HeldKey down(Key key) { return {observer().connection(), {key}}; }
    void press(Key key) { keyboard().press({Key::leftSuper, Key::leftAlt}, key); }
};

TEST_F(X11HotKeyPressTest, PressesThatArriveDuringABoundedWaitAreDeliveredOnceInOrderAndAfterIt) {
    start();
    ASSERT_EQ(client().add(Key::digit1, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::digit2, commandOption, 2), noError);
    ASSERT_EQ(client().add(Key::digit3, commandOption, 3), noError);
    X11Connection& connection = client().connection();

    press(Key::digit1);
    ASSERT_TRUE(connection.check({}, soon()));  // the first one arrives with the answer
    int seen = 0;
    const auto pressMore = [&](const xcb_generic_event_t&) {
        if (++seen == 1) press(Key::digit2);
        return false;
    };
    press(Key::digit3);
    EXPECT_FALSE(connection.waitForEvent(pressMore, soon()));  // the others while this waits
    EXPECT_GT(seen, 2);
    EXPECT_THAT(client().pressed(), IsEmpty());

    catchUp();
    EXPECT_THAT(client().pressed(), ElementsAre(1, 3, 2));
}

TEST_F(X11HotKeyPressTest, APressThatArrivedWithAnAnswerIsDeliveredBeforeTheLoopSleeps) {
    start();
    ASSERT_EQ(client().add(Key::digit1, commandOption, 1), noError);

    runLoop.post([&] {
        press(Key::digit1);
        EXPECT_TRUE(client().connection().check({}, soon()));  // now nothing is left to read that could wake the loop
    });

    EXPECT_TRUE(runUntil([&] { return !client().pressed().empty(); }));
    EXPECT_THAT(client().pressed(), ElementsAre(1));
}

TEST_F(X11HotKeyPressTest, AHundredPressesInARowAreAllDeliveredInOrder) {
    start();
    std::vector<Combination> presses;
    std::vector<std::uint32_t> expected;
    for (const Key key : {Key::digit1, Key::digit2, Key::digit3, Key::digit4})
        ASSERT_EQ(client().add(key, commandOption, std::to_underlying(key)), noError);
    for (int round = 0; round < 25; ++round) {
        for (const Key key : {Key::digit3, Key::digit1, Key::digit4, Key::digit2}) {
            presses.push_back({{Key::leftSuper, Key::leftAlt}, key});
            expected.push_back(std::to_underlying(key));
        }
    }

    EXPECT_EQ(pressedIDs(presses), expected);
}

TEST_F(X11HotKeyPressTest, AKeyThatIsHeldCountsOnceAlsoWhenItIsRegisteredAgainMeanwhile) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    const HeldKey held = keyboard().hold({Key::leftSuper, Key::leftAlt}, Key::left);
    ASSERT_TRUE(runUntil([&] { return client().repeats() > 1; }));
    client().giveAllBack();
    ASSERT_EQ(client().add(Key::left, commandOption, 2), noError);
    const int before = client().repeats();
    ASSERT_TRUE(runUntil([&] { return client().repeats() > before + 1; }));

    EXPECT_THAT(client().pressed(), ElementsAre(1));
}

TEST_F(X11HotKeyPressTest, AKeyThatWasHeldBeforeItWasRegisteredCountsFromItsNextPressOn) {
    start();
    {
        const HeldKey held = keyboard().hold({Key::leftSuper, Key::leftAlt}, Key::left);
        ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
        ASSERT_TRUE(runUntil([&] { return client().repeats() > 1; }));
        EXPECT_THAT(client().pressed(), IsEmpty());
    }

    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}}), ElementsAre(1));
}

TEST_F(X11HotKeyPressTest, AnExtraModifierMakesItAnotherCombination) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt, Key::leftShift}, Key::left},
                            {{Key::leftSuper, Key::leftAlt, Key::leftControl}, Key::left},
                            {{Key::leftSuper}, Key::left},
                            {{Key::leftAlt}, Key::left},
                            {{}, Key::left}}),
                IsEmpty());
}

TEST_F(X11HotKeyPressTest, TheOrderInWhichKeysGoDownAndUpDoesNotMatter) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    const auto pressInOrder = [&](Key first, Key second, const std::vector<int>& releases) {
        std::vector<std::optional<HeldKey>> keys(3);
        keys[0].emplace(down(first));
        keys[1].emplace(down(second));
        keys[2].emplace(down(Key::left));
        for (const int index : releases) keys[static_cast<std::size_t>(index)].reset();
    };

    for (const std::vector<int>& releases :
         {std::vector{2, 1, 0}, {2, 0, 1}, {1, 2, 0}, {1, 0, 2}, {0, 1, 2}, {0, 2, 1}}) {
        pressInOrder(Key::leftSuper, Key::leftAlt, releases);
        pressInOrder(Key::leftAlt, Key::leftSuper, releases);
    }
    catchUp();

    EXPECT_EQ(client().pressed(), std::vector<std::uint32_t>(12, 1));
}

TEST_F(X11HotKeyPressTest, TheKeysOfTheRightHandAreAsGood) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    EXPECT_THAT(
        pressedIDs({{{Key::rightSuper, Key::leftAlt}, Key::left}, {{Key::leftSuper, Key::rightAlt}, Key::left}}),
        ElementsAre(1, 1));
}

TEST_F(X11HotKeyPressTest, AFrozenFocusedClientDoesNotKeepAPressBack) {
    start(WindowManagerKind::openbox);
    [[maybe_unused]] const xcb_window_t window = openWindow({.title = "Frozen"});
    ASSERT_EQ(client().add(Key::digit1, commandOption, 1), noError);

    lastClient().freeze();

    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::digit1}}), ElementsAre(1));
    lastClient().thaw();
}

class X11HotKeyFocusTest : public X11HotKeyTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
    [[nodiscard]] bool somethingHasTheFocus() {
        XConnection& connection = observer().connection();
        const auto answer = connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw()));
        return answer && answer->focus != XCB_INPUT_FOCUS_NONE;
    }
};

/// Window managers give the focus to a window of their own then, or to the root window. With the focus on nothing at
/// all the server drops every key, whoever has grabbed it.
TEST_P(X11HotKeyFocusTest, NoApplicationNeedsTheFocus) {
    start(GetParam());
    ASSERT_EQ(client().add(Key::digit1, commandOption, 1), noError);
    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::digit1}}), ElementsAre(1));

    const xcb_window_t window = openWindow({.title = "Last"});
    lastClient().terminate();
    ASSERT_TRUE(observer().waitUntil([&] { return !observer().describe(window) && somethingHasTheFocus(); }));

    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::digit1}}), ElementsAre(1));
}

INSTANTIATE_TEST_SUITE_P(On, X11HotKeyFocusTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4,
                                         WindowManagerKind::fluxbox),
                         [](const auto& each) { return std::string(nameOf(each.param)); });

}  // namespace
}  // namespace velmorand::desktop

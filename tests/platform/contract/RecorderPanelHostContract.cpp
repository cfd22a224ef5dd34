#include "platform/HotKeyService.h"
#include "platform/RecorderPanelHost.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Virtual key codes, hot-key modifier masks and the flags of the panel's events.
constexpr std::uint32_t keyE = 14;
constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t control = 0x1000;
constexpr std::uint64_t shiftFlag = 1U << 17U;
constexpr std::uint64_t commandFlag = 1U << 20U;

}  // namespace

RecorderPanelEvents RecorderPanelHostContract::noting() {
    return {.keyDown =
                [this](const RecorderKeyEvent& event) {
                    keys.push_back(event);
                    told.emplace_back("key");
                },
            .modifiersChanged = [this](std::uint64_t flags) { held.push_back(flags); },
            .closed = [this] { told.emplace_back("closed"); },
            .resignedKey = [this] { told.emplace_back("resigned"); }};
}

void RecorderPanelHostContract::showAsKey() {
    host().show(noting());
    desktop->waitForRecorderPanel();
}

void RecorderPanelHostContract::waitForTold(std::size_t count) {
    ASSERT_TRUE(desktop->runUntil([&] { return told.size() >= count; }, deadline));
    EXPECT_FALSE(desktop->runUntil([&] { return told.size() > count; }, patience));
}

TEST_P(RecorderPanelHostContract, ACombinationIsToldWithWhatItsKeyWritesAndTheModifiersOnTheirWay) {
    showAsKey();

    desktop->press(keyE, command | shift);
    waitForTold(1);

    EXPECT_THAT(keys, ElementsAre(RecorderKeyEvent{keyE, commandFlag | shiftFlag, "e"}));
    EXPECT_TRUE(desktop->runUntil([&] { return held.size() >= 4; }, deadline));
    EXPECT_THAT(held, ElementsAre(shiftFlag, shiftFlag | commandFlag, shiftFlag, 0));
}

TEST_P(RecorderPanelHostContract, AKeyThatWritesNothingIsToldWithoutCharacters) {
    showAsKey();

    desktop->press(leftArrow, 0);
    waitForTold(1);

    EXPECT_THAT(keys, ElementsAre(RecorderKeyEvent{leftArrow, 0, ""}));
    EXPECT_THAT(held, IsEmpty());
}

TEST_P(RecorderPanelHostContract, HotKeysGoToThePanelAsLongAsItIsKey) {
    int pressed = 0;
    HotKeyService& service = desktop->platform().hotKeyService();
    ASSERT_TRUE(service
                    .installHandler([&](const HotKeyEvent*) -> OSStatus {
                        ++pressed;
                        return noError;
                    })
                    .has_value());
    ASSERT_EQ(service.registerHotKey(keyE, command | control, {0x54455354, 1}).status, noError);
    showAsKey();

    desktop->press(keyE, command | control);
    waitForTold(1);
    EXPECT_EQ(pressed, 0);

    host().close();
    desktop->waitUntilKeyboardIsFree();
    EXPECT_EQ(pressed, 0);
    desktop->press(keyE, command | control);
    EXPECT_TRUE(desktop->runUntil([&] { return pressed == 1; }, deadline));
    EXPECT_THAT(told, ElementsAre("key"));
}

TEST_P(RecorderPanelHostContract, ThePanelThatItsUserClosesTellsSoOnce) {
    showAsKey();

    desktop->closeRecorderPanel();
    waitForTold(1);

    EXPECT_THAT(told, ElementsAre("closed"));
    host().close();
    finishTurn();
    EXPECT_THAT(told, ElementsAre("closed"));
}

TEST_P(RecorderPanelHostContract, ThePanelResignsOnceWhenAnotherWindowGetsTheFocus) {
    const ContractWindow window = desktop->openWindow({});
    showAsKey();

    desktop->focusWindow(window);
    waitForTold(1);
    EXPECT_THAT(told, ElementsAre("resigned"));

    desktop->press(keyE, command);
    EXPECT_FALSE(desktop->runUntil([&] { return told.size() > 1; }, patience));
}

TEST_P(RecorderPanelHostContract, NothingIsToldAfterAClose) {
    showAsKey();

    desktop->press(keyE, command);
    host().close();

    EXPECT_FALSE(desktop->runUntil([&] { return !told.empty() || !held.empty(); }, patience));
}

TEST_P(RecorderPanelHostContract, APanelThatIsShownAnewDropsTheEventsOfTheEarlierOne) {
    int earlier = 0;
    host().show({.keyDown = [&](const RecorderKeyEvent&) { ++earlier; },
                 .modifiersChanged = [&](std::uint64_t) { ++earlier; },
                 .closed = [&] { ++earlier; },
                 .resignedKey = [&] { ++earlier; }});
    desktop->waitForRecorderPanel();
    desktop->press(keyE, command);

    showAsKey();
    desktop->press(leftArrow, command);
    waitForTold(1);

    EXPECT_EQ(keys.back().keyCode, leftArrow);
    EXPECT_EQ(earlier, 0);
}

TEST_P(RecorderPanelHostContract, APanelThatHasNoWindowIsToldToBeClosed) {
    host().setWindowMaker({});
    host().show(noting());
    EXPECT_THAT(told, IsEmpty());
    waitForTold(1);

    EXPECT_THAT(told, ElementsAre("closed"));

    host().show(noting());
    host().close();
    EXPECT_FALSE(desktop->runUntil([&] { return told.size() > 1; }, patience));
}

TEST_P(RecorderPanelHostContract, ThePanelMayBeClosedOrShownAnewInsideItsEvents) {
    RecorderPanelEvents events;
    events.keyDown = [this](const RecorderKeyEvent&) { host().show(noting()); };
    host().show(events);
    desktop->waitForRecorderPanel();
    desktop->press(keyE, command);
    finishTurn();
    desktop->waitForRecorderPanel();

    RecorderPanelEvents closing;
    bool isClosed = false;
    closing.keyDown = [&](const RecorderKeyEvent&) {
        host().close();
        isClosed = true;
    };
    host().show(closing);
    desktop->waitForRecorderPanel();
    desktop->press(keyE, command);

    EXPECT_TRUE(desktop->runUntil([&] { return isClosed; }, deadline));
}

TEST_P(RecorderPanelHostContract, WithoutAPanelNothingHappens) {
    host().close();
    host().close();
    finishTurn();
    EXPECT_THAT(told, IsEmpty());

    showAsKey();
    desktop->press(leftArrow, 0);
    waitForTold(1);
    EXPECT_THAT(told, ElementsAre("key"));
}

TEST_P(RecorderPanelHostContract, EventsThatNobodyWantsAreNotTold) {
    host().show({});
    desktop->waitForRecorderPanel();

    desktop->press(keyE, command);
    desktop->closeRecorderPanel();
    finishTurn();
    desktop->waitUntilKeyboardIsFree();

    showAsKey();
    desktop->press(keyE, command);
    waitForTold(1);
    EXPECT_THAT(told, ElementsAre("key"));
}

}  // namespace velmorand

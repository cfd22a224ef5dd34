#include "platform/simulated/SimulatedRecorderPanelHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const RecorderKeyEvent keyA{.keyCode = 0, .modifierFlags = 1U << 20U, .charactersIgnoringModifiers = "a"};

class SimulatedRecorderPanelHostTest : public testing::Test {
protected:
    /// Notes everything that is told, under this name.
    [[nodiscard]] RecorderPanelEvents noting(const std::string& name) {
        return {.keyDown =
                    [=, this](const RecorderKeyEvent& event) {
                        told.push_back(name + " key " + std::to_string(event.keyCode));
                    },
                .modifiersChanged =
                    [=, this](std::uint64_t flags) { told.push_back(name + " modifiers " + std::to_string(flags)); },
                .closed = [=, this] { told.push_back(name + " closed"); },
                .resignedKey = [=, this] { told.push_back(name + " resigned"); }};
    }

    std::vector<std::string> told;
    SimulatedRunLoop runLoop;
    SimulatedRecorderPanelHost host{runLoop};
};

TEST_F(SimulatedRecorderPanelHostTest, TellsWhatTheUserDoesInOrderAndInLaterTurns) {
    host.show(noting("panel"));

    host.changeModifiers(7);
    host.press(keyA);
    host.resignKey();
    EXPECT_THAT(told, IsEmpty());
    runLoop.runPending();

    EXPECT_THAT(told, ElementsAre("panel modifiers 7", "panel key 0", "panel resigned"));
}

TEST_F(SimulatedRecorderPanelHostTest, WithoutAPanelNothingHappens) {
    host.close();
    host.press(keyA);
    host.changeModifiers(1);
    host.resignKey();
    host.closeByUser();
    runLoop.runPending();

    EXPECT_FALSE(host.isShown());
    EXPECT_FALSE(host.isKey());
}

TEST_F(SimulatedRecorderPanelHostTest, NothingIsToldAfterAClose) {
    host.show(noting("panel"));
    host.press(keyA);
    host.closeByUser();
    host.close();
    runLoop.runPending();

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(SimulatedRecorderPanelHostTest, APanelShownAnewDropsTheEventsOfTheEarlierOne) {
    host.show(noting("first"));
    host.press(keyA);
    host.show(noting("second"));
    host.press(keyA);
    runLoop.runPending();

    EXPECT_THAT(told, ElementsAre("second key 0"));
}

TEST_F(SimulatedRecorderPanelHostTest, KeysDoNotReachAPanelThatHasResigned) {
    host.show(noting("panel"));
    host.resignKey();
    host.resignKey();
    host.press(keyA);
    host.changeModifiers(1);
    runLoop.runPending();

    EXPECT_TRUE(host.isShown());
    EXPECT_FALSE(host.isKey());
    EXPECT_THAT(told, ElementsAre("panel resigned"));
}

TEST_F(SimulatedRecorderPanelHostTest, APanelThatItsUserClosedIsGone) {
    host.show(noting("panel"));
    host.closeByUser();
    host.closeByUser();
    host.press(keyA);
    runLoop.runPending();

    EXPECT_FALSE(host.isShown());
    EXPECT_THAT(told, ElementsAre("panel closed"));
}

TEST_F(SimulatedRecorderPanelHostTest, ThePanelMayBeClosedOrShownAnewInsideItsEvents) {
    RecorderPanelEvents events = noting("first");
    events.keyDown = [&](const RecorderKeyEvent&) { host.show(noting("second")); };
    host.show(std::move(events));
    host.press(keyA);
    host.press(keyA);
    runLoop.runPending();
    host.press(keyA);
    runLoop.runPending();

    EXPECT_THAT(told, ElementsAre("second key 0"));
}

TEST_F(SimulatedRecorderPanelHostTest, EventsThatNobodyWantsAreNotTold) {
    host.show({});
    host.press(keyA);
    host.changeModifiers(1);
    host.resignKey();
    host.closeByUser();
    runLoop.runPending();

    EXPECT_FALSE(host.isShown());
}

}  // namespace
}  // namespace velmorand

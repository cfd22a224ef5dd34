#include "windows/AnimatedMovesFixture.h"

namespace velmorand {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

class WindowManagerAnimatedRestoreTest : public AnimatedMovesFixture {};

TEST_F(WindowManagerAnimatedRestoreTest, ALandedMoveCanBeRestored) {
    performWhole(leftHalf);
    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimatedRestoreTest, SeveralLandedMovesAreRestoredToBeforeTheFirst) {
    performWhole(leftHalf);
    performWhole(rightHalf);
    performWhole(topHalf);
    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, AFramePlacedByHandBetweenTwoMovesBecomesTheRestoreFrame) {
    performWhole(leftHalf);
    window(id).frame = {200, 300, 500, 400};
    performWhole(rightHalf);
    performWhole(restore);

    EXPECT_EQ(window(id).frame, (Rect{200, 300, 500, 400}));
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreThatIsStoppedByAChangeOfDisplaysCanBeTriedAgain) {
    perform(leftHalf);
    advance(milliseconds(100));
    perform(restore);
    advance(milliseconds(34));
    setDisplays({mainDisplay(), rightDisplay()});
    ASSERT_NE(window(id).frame, startFrame);

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimatedRestoreTest, AnActionDuringARestoreKeepsTheRestoreFrame) {
    perform(leftHalf);
    advance(milliseconds(100));
    perform(restore);
    advance(milliseconds(34));
    performWhole(rightHalf);
    ASSERT_EQ(window(id).frame, rightHalfFrame);

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreThatLandsLeavesNothingBehindOfTheOneItReplaced) {
    performWhole(leftHalf);
    perform(rightHalf);
    advance(milliseconds(100));
    perform(restore);
    advance(milliseconds(34));
    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreAtOnceFromARunningMoveWhoseWriteFailsCanBeTriedAgain) {
    perform(leftHalf);
    advance(milliseconds(100));
    changePreferences([](PreferencesState& state) { state.enableAnimations = false; });
    window(id).positionWriteError = AXError::cannotComplete;
    EXPECT_TRUE(failureOf(windowManager->perform(restore)).has_value());
    window(id).positionWriteError.reset();

    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreInOneStepWhoseWriteFailsIsToldAndCanBeTriedAgain) {
    performWhole(leftHalf);
    setDuration(0);
    window(id).positionWriteError = AXError::cannotComplete;
    perform(restore);
    EXPECT_THAT(failures, ElementsAre("The target app did not respond to Accessibility requests."));
    window(id).positionWriteError.reset();

    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreDuringAnAnimationGoesBackToBeforeIt) {
    perform(leftHalf);
    advance(milliseconds(100));
    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
    EXPECT_THAT(failures, IsEmpty());
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreThatFailsCanBeTriedAgain) {
    performWhole(leftHalf);
    perform(restore);
    window(id).positionWriteError = AXError::cannotComplete;
    advance(milliseconds(400));
    ASSERT_EQ(failures.size(), 1U);
    window(id).positionWriteError.reset();

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreFromARunningMoveThatFailsCanBeTriedAgain) {
    perform(leftHalf);
    advance(milliseconds(100));
    perform(restore);
    window(id).positionWriteError = AXError::cannotComplete;
    advance(milliseconds(400));
    window(id).positionWriteError.reset();

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARestoreAtOnceFromARunningMoveThatDoesNotLandCanBeTriedAgain) {
    perform(leftHalf);
    advance(milliseconds(100));
    changePreferences([](PreferencesState& state) { state.enableAnimations = false; });
    window(id).ignoresWrites = true;
    perform(restore);
    EXPECT_THAT(failures, ElementsAre(didNotMove));
    window(id).ignoresWrites = false;

    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimatedRestoreTest, ARefusedRestoreOfARunningMoveCanBeTriedAgain) {
    perform(leftHalf);
    advance(milliseconds(100));
    accessibility.interruptBefore("settable AXPosition of window", 2, [this] { window(id).positionSettable = false; });
    EXPECT_EQ(failureOf(windowManager->perform(restore)), WindowOperationError::unsupportedWindow);
    window(id).positionSettable = true;

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

/// A notification of its end is enough, whatever the window still answers.
TEST_F(WindowManagerAnimatedRestoreTest, WhatIsRememberedOfAMoveOnItsWayGoesWithItsApplication) {
    perform(leftHalf);
    advance(milliseconds(100));
    platform.workspaceNotificationCenter().post({NotificationName::applicationTerminated, pid});
    platform.runLoop().runPending();

    expectNothingToRestore();
}

TEST_F(WindowManagerAnimatedRestoreTest, WhatARestoreOnItsWayHasTakenGoesWithItsApplication) {
    perform(leftHalf);
    advance(milliseconds(100));
    perform(restore);
    platform.workspaceNotificationCenter().post({NotificationName::applicationTerminated, pid});
    platform.runLoop().runPending();
    window(id).positionWriteError = AXError::invalidElement;
    advance(milliseconds(400));
    window(id).positionWriteError.reset();

    expectNothingToRestore();
}

}  // namespace
}  // namespace velmorand

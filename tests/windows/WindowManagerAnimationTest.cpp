#include "windows/AnimatedMovesFixture.h"

namespace velmorand {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

class WindowManagerAnimationTest : public AnimatedMovesFixture {};

TEST_F(WindowManagerAnimationTest, TheWindowIsOnItsWayAndThenThere) {
    perform(leftHalf);
    EXPECT_EQ(window(id).frame, startFrame);
    advance(milliseconds(100));
    EXPECT_GT(window(id).frame.x, 0);
    EXPECT_LT(window(id).frame.x, startFrame.x);
    advance(milliseconds(300));

    EXPECT_EQ(window(id).frame, leftHalfFrame);
    EXPECT_THAT(failures, IsEmpty());
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(WindowManagerAnimationTest, ReducedMotionMovesAtOnce) {
    platform.workspace().setReducesMotion(true);
    perform(leftHalf);

    EXPECT_EQ(window(id).frame, leftHalfFrame);
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(WindowManagerAnimationTest, ASecondActionGoesOnFromWhereTheWindowIsGoing) {
    setDisplays({mainDisplay(), rightDisplay()});
    perform(nextDisplay);
    advance(milliseconds(50));
    clearRecords();

    perform(leftHalf);
    advance(milliseconds(400));

    EXPECT_EQ(window(id).frame, (Rect{1440, 25, 960, 1055})) << "half of the display that it was going to";
    EXPECT_THAT(failures, IsEmpty()) << "a replaced animation is no failure";
}

TEST_F(WindowManagerAnimationTest, ASecondActionStartsFromTheFrameOnScreen) {
    perform(leftHalf);
    advance(milliseconds(100));
    const double reached = window(id).frame.x;
    perform(rightHalf);
    advance(milliseconds(34));

    const double part = (1.0 / 30) / 0.3;
    EXPECT_NEAR(window(id).frame.x, reached + (1 - (1 - part) * (1 - part)) * (rightHalfFrame.x - reached), 1e-3);
}

TEST_F(WindowManagerAnimationTest, ASecondActionKeepsTheRestoreFrameOfTheFirst) {
    perform(leftHalf);
    advance(milliseconds(100));
    performWhole(rightHalf);
    ASSERT_EQ(window(id).frame, rightHalfFrame);

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimationTest, AMoveAtOnceDuringAnAnimationKeepsItsRestoreFrame) {
    perform(leftHalf);
    advance(milliseconds(100));
    changePreferences([](PreferencesState& state) { state.enableAnimations = false; });
    perform(rightHalf);
    ASSERT_EQ(window(id).frame, rightHalfFrame);
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimationTest, AMoveAtOnceThatFailsDuringAnAnimationKeepsItsRestoreFrame) {
    perform(leftHalf);
    advance(milliseconds(100));
    changePreferences([](PreferencesState& state) { state.enableAnimations = false; });
    window(id).positionWriteError = AXError::cannotComplete;
    EXPECT_TRUE(failureOf(windowManager->perform(rightHalf)).has_value());
    window(id).positionWriteError.reset();

    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimationTest, ASecondActionThatCannotReadItsStartKeepsTheRestoreFrameOfTheFirst) {
    perform(leftHalf);
    advance(milliseconds(100));
    accessibility.clearCalls();
    accessibility.interruptBefore("copy AXPosition of window", 2,
                                  [this] { window(id).readErrors["AXPosition"] = AXError::cannotComplete; });
    EXPECT_EQ(failureOf(windowManager->perform(rightHalf)), WindowOperationError::missingWindowFrame);
    window(id).readErrors.clear();

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimationTest, AMoveThatDoesNotLandIsToldAndNotRecorded) {
    window(id).minimumSize = {900, 1};
    performWhole(leftHalf);

    EXPECT_THAT(failures, ElementsAre(didNotMove));
    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimationTest, AMoveWhoseWritesFailIsToldAndNotRecorded) {
    perform(leftHalf);
    window(id).positionWriteError = AXError::cannotComplete;
    advance(milliseconds(400));

    EXPECT_THAT(failures, ElementsAre("The target app did not respond to Accessibility requests."));
    window(id).positionWriteError.reset();
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimationTest, AChangeOfDisplaysStopsEveryAnimationAndNothingIsRecorded) {
    perform(leftHalf);
    advance(milliseconds(100));
    const Rect reached = window(id).frame;

    setDisplays({mainDisplay(), rightDisplay()});
    advance(milliseconds(400));

    EXPECT_EQ(window(id).frame, reached);
    EXPECT_THAT(failures, IsEmpty());
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimationTest, AChangeOfDisplaysKeepsWhatWasRecorded) {
    performWhole(leftHalf);
    setDisplays({mainDisplay(), rightDisplay()});

    performWhole(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerAnimationTest, AnApplicationThatEndsOnTheWayIsForgotten) {
    perform(leftHalf);
    advance(milliseconds(100));
    platform.terminateProcess(pid);
    advance(milliseconds(400));

    EXPECT_THAT(failures, ElementsAre("Could not move the focused window (AX error -25202)."));
    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(WindowManagerAnimationTest, WithoutADurationTheWindowIsPutThereInOneStepAndRecorded) {
    setDuration(0);
    perform(leftHalf);
    EXPECT_EQ(window(id).frame, leftHalfFrame);
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);

    perform(restore);
    EXPECT_EQ(window(id).frame, startFrame);
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimationTest, WithoutADurationAWriteThatFailsIsToldAndNotRecorded) {
    setDuration(0);
    window(id).sizeWriteError = AXError::attributeUnsupported;
    perform(leftHalf);

    EXPECT_THAT(failures, ElementsAre("Could not resize the focused window (AX error -25205)."));
    window(id).sizeWriteError.reset();
    expectNothingToRestore();
}

TEST_F(WindowManagerAnimationTest, WithoutADurationNothingChecksWhetherItLanded) {
    setDuration(0);
    window(id).minimumSize = {900, 1};
    perform(leftHalf);

    EXPECT_THAT(failures, IsEmpty());
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerAnimationTest, AFrameThatCannotBeReadBeforeTheStartRefusesTheMove) {
    accessibility.interruptBefore("copy AXPosition of window", 2,
                                  [this] { window(id).readErrors["AXPosition"] = AXError::cannotComplete; });
    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), WindowOperationError::missingWindowFrame);
    window(id).readErrors.clear();

    expectNothingToRestore();
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(WindowManagerAnimationTest, TwoWindowsOfAnApplicationMoveAndReturnApart) {
    perform(leftHalf);
    const SimulatedWindowID other = openWindow({500, 300, 600, 400}, "other");
    performWhole(rightHalf);

    EXPECT_EQ(window(id).frame, leftHalfFrame);
    EXPECT_EQ(window(other).frame, rightHalfFrame);
    performWhole(restore);
    EXPECT_EQ(window(other).frame, (Rect{500, 300, 600, 400}));
    EXPECT_EQ(window(id).frame, leftHalfFrame);
}

TEST_F(WindowManagerAnimationTest, NothingMovesOnceTheManagerIsGone) {
    perform(leftHalf);
    advance(milliseconds(100));
    const Rect reached = window(id).frame;
    shortcutManager.reset();
    windowManager.reset();

    advance(milliseconds(400));

    EXPECT_EQ(window(id).frame, reached);
}

}  // namespace
}  // namespace velmorand

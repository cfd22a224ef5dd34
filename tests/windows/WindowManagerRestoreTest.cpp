#include "support/DesktopFixture.h"
#include "windows/WindowManager.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

/// What is remembered, and what restore does with it.
class WindowManagerRestoreTest : public DesktopFixture {
protected:
    void perform(WindowAction action) { EXPECT_EQ(failureOf(windowManager->perform(action)), std::nullopt); }
    void expectNothingToRestore() {
        EXPECT_EQ(failureOf(windowManager->perform(restore)), WindowOperationError::missingRestoreFrame);
    }

    SimulatedWindowID id = openWindow();
};

TEST_F(WindowManagerRestoreTest, PutsTheWindowBackWhereItWasBeforeTheAction) {
    perform(leftHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(WindowManagerRestoreTest, PutsTheWindowBackToBeforeTheFirstOfSeveralActions) {
    perform(leftHalf);
    perform(rightHalf);
    perform(topLeft);
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, AFramePlacedByHandBetweenTwoActionsBecomesTheRestoreFrame) {
    perform(leftHalf);
    window(id).frame = {200, 300, 500, 400};
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{200, 300, 500, 400}));
}

TEST_F(WindowManagerRestoreTest, ANudgeOfTwoPointsCountsAsUntouched) {
    perform(leftHalf);
    window(id).frame = {2, 27, 718, 873};
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, ANudgeOfTwoAndAHalfPointsResetsTheRestoreFrame) {
    perform(leftHalf);
    window(id).frame = {2.5, 25, 720, 875};
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{2.5, 25, 720, 875}));
}

TEST_F(WindowManagerRestoreTest, TheFrameReadBackIsWhatCountsAsLastApplied) {
    window(id).minimumSize = {900, 400};
    perform(leftHalf);
    ASSERT_EQ(window(id).frame, (Rect{0, 25, 900, 875}));
    perform(topHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{100, 100, 900, 600}));
}

TEST_F(WindowManagerRestoreTest, TheTargetCountsAsLastAppliedWhenTheFrameCannotBeReadBack) {
    accessibility.interruptBefore("set AXPosition of window", 1,
                                  [&] { window(id).readErrors["AXSize"] = AXError::cannotComplete; });
    perform(leftHalf);
    window(id).readErrors.clear();
    ASSERT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, RestoresAWindowThatWasMovedByHandSince) {
    perform(leftHalf);
    window(id).frame = {300, 400, 500, 300};
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, HasNothingToRestoreAtTheStart) {
    expectNothingToRestore();

    EXPECT_THAT(failures, ElementsAre("No previous frame is available to restore."));
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::info, "windows", "perform restore"},
                                        LogLine{LogLevel::info, "windows", "frontmost org.example.Editor pid 501"},
                                        LogLine{LogLevel::info, "windows", "current frame (100, 100, 800, 600)"}));
}

TEST_F(WindowManagerRestoreTest, HasNothingToRestoreAfterARestore) {
    perform(leftHalf);
    perform(restore);

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
    expectNothingToRestore();
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, HasNothingToRestoreForAWindowThatWasNotArranged) {
    perform(leftHalf);
    openWindow();

    expectNothingToRestore();
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerRestoreTest, StartsAfreshAfterARestore) {
    perform(leftHalf);
    perform(restore);
    window(id).frame = {10, 50, 400, 300};
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{10, 50, 400, 300}));
}

TEST_F(WindowManagerRestoreTest, RemembersEveryWindowOnItsOwn) {
    perform(leftHalf);
    const SimulatedWindowID other = openWindow();
    window(other).frame = {10, 50, 400, 300};
    perform(rightHalf);

    perform(restore);
    EXPECT_EQ(window(other).frame, (Rect{10, 50, 400, 300}));
    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));

    application().focusedWindow = id;
    perform(restore);
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, LogsOnlyTheStepsItTakes) {
    perform(leftHalf);
    clearRecords();

    perform(restore);

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::info, "windows", "perform restore"},
                                        LogLine{LogLevel::info, "windows", "frontmost org.example.Editor pid 501"},
                                        LogLine{LogLevel::info, "windows", "current frame (0, 25, 720, 875)"},
                                        LogLine{LogLevel::info, "ax", "final frame (100, 100, 800, 600)"}));
}

TEST_F(WindowManagerRestoreTest, ClampsTheFrameIntoTheVisibleAreaOfItsScreenWithoutPadding) {
    window(id).frame = {-300, 0, 800, 600};
    perform(rightHalf);
    changePreferences([](PreferencesState& state) { state.outerPadding = 20; });
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{0, 25, 800, 600}));
}

TEST_F(WindowManagerRestoreTest, UsesTheFrameAsItWasWhenClampingIsOff) {
    window(id).frame = {-300, 0, 800, 600};
    changePreferences([](PreferencesState& state) { state.clampToVisibleArea = false; });
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{-300, 0, 800, 600}));
}

TEST_F(WindowManagerRestoreTest, ShrinksAFrameThatIsLargerThanItsScreen) {
    window(id).frame = {-100, -100, 3000, 2000};
    perform(rightHalf);
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{0, 25, 1440, 875}));
}

TEST_F(WindowManagerRestoreTest, GoesBackToTheScreenOfTheRestoreFrameNotOfTheWindow) {
    setDisplays({mainDisplay(), rightDisplay()});
    perform(nextDisplay);
    ASSERT_EQ(window(id).frame, (Rect{1573, 115, 1067, 724}));
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, GoesToTheNearestScreenWhenItsOwnIsGone) {
    setDisplays({mainDisplay(), rightDisplay()});
    window(id).frame = {2000, 200, 800, 600};
    perform(previousDisplay);
    setDisplays({mainDisplay()});
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{640, 200, 800, 600}));
}

TEST_F(WindowManagerRestoreTest, UsesTheFrameAsItWasWithoutAnyScreen) {
    window(id).frame = {-300, 0, 800, 600};
    perform(rightHalf);
    setDisplays({});
    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{-300, 0, 800, 600}));
}

TEST_F(WindowManagerRestoreTest, ARestoreThatDoesNotLandIsReportedAndCanBeTriedAgain) {
    perform(leftHalf);
    window(id).ignoresWrites = true;
    clearRecords();

    perform(restore);
    EXPECT_THAT(failures, ElementsAre("The window did not move to the requested position."));
    EXPECT_EQ(writes().size(), 2U);
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));

    window(id).ignoresWrites = false;
    perform(restore);
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, ARestoreWhoseWriteFailsIsRefusedAndCanBeTriedAgain) {
    perform(leftHalf);
    window(id).sizeWriteError = AXError::attributeUnsupported;

    EXPECT_EQ(failureOf(windowManager->perform(restore)),
              WindowOperationError::accessibility("Could not resize the focused window (AX error -25205)."));

    window(id).sizeWriteError.reset();
    perform(restore);
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, AWindowThatCannotBeSetAnyMoreIsRefusedAndStaysRemembered) {
    perform(leftHalf);
    accessibility.clearCalls();
    accessibility.interruptBefore("settable AXPosition of window", 2, [&] { window(id).positionSettable = false; });

    EXPECT_EQ(failureOf(windowManager->perform(restore)), WindowOperationError::unsupportedWindow);
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerRestoreTest, AFailedMoveKeepsTheOlderEntry) {
    perform(leftHalf);
    window(id).positionWriteError = AXError::cannotComplete;
    EXPECT_EQ(failureOf(windowManager->perform(rightHalf)),
              WindowOperationError::accessibility("The target app did not respond to Accessibility requests."));
    window(id).positionWriteError.reset();

    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, AnActionRenewsTheHourOfItsEntry) {
    perform(leftHalf);
    platform.runLoop().advance(std::chrono::minutes{59});
    perform(rightHalf);
    platform.runLoop().advance(std::chrono::minutes{59});
    perform(restore);

    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(WindowManagerRestoreTest, HasNothingToRestoreAfterAnHour) {
    perform(leftHalf);
    platform.runLoop().advance(std::chrono::hours{1});

    expectNothingToRestore();
    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
}

TEST_F(WindowManagerRestoreTest, ForgetsTheWindowsOfAnApplicationThatEnds) {
    perform(leftHalf);
    openWindow();
    perform(rightHalf);
    desktop().addProcess(777);
    desktop().addWindow(777);
    perform(leftHalf);

    platform.terminateProcess(pid);

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
    EXPECT_TRUE(windowManager->hasRestoreEntry(777));
}

TEST_F(WindowManagerRestoreTest, ForgetsNothingWhenItIsNotKnownWhichApplicationEnded) {
    perform(leftHalf);

    platform.workspaceNotificationCenter().post({NotificationName::applicationTerminated, std::nullopt});

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerRestoreTest, ListensToTheWorkspacesCentreOnly) {
    perform(leftHalf);

    platform.defaultNotificationCenter().post({NotificationName::applicationTerminated, pid});

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerRestoreTest, KeepsItsEntriesWhenTheDisplaysChange) {
    perform(leftHalf);

    setDisplays({mainDisplay(), rightDisplay()});

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

}  // namespace
}  // namespace velmorand

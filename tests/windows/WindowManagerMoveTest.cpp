#include "support/DesktopFixture.h"
#include "windows/WindowManager.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr std::string_view didNotMove = "The window did not move to the requested position.";

/// What a move does to the window and says about it.
class WindowManagerMoveTest : public DesktopFixture {
protected:
    void perform(WindowAction action) { EXPECT_EQ(failureOf(windowManager->perform(action)), std::nullopt); }
};

struct ActionRow {
    WindowAction action;
    Rect target;
};

TEST_F(WindowManagerMoveTest, EveryActionMovesTheFocusedWindowToItsTarget) {
    setDisplays({mainDisplay(), rightDisplay()});
    const std::vector<ActionRow> rows{
        {leftHalf, {0, 25, 720, 875}},          {rightHalf, {720, 25, 720, 875}},
        {topHalf, {0, 25, 1440, 438}},          {bottomHalf, {0, 463, 1440, 437}},
        {topLeft, {0, 25, 720, 438}},           {topRight, {720, 25, 720, 438}},
        {bottomLeft, {0, 463, 720, 437}},       {bottomRight, {720, 463, 720, 437}},
        {leftThird, {0, 25, 480, 875}},         {centerThird, {480, 25, 480, 875}},
        {rightThird, {960, 25, 480, 875}},      {leftTwoThirds, {0, 25, 960, 875}},
        {centerTwoThirds, {240, 25, 960, 875}}, {rightTwoThirds, {480, 25, 960, 875}},
        {nextDisplay, {1573, 115, 1067, 724}},  {previousDisplay, {1573, 115, 1067, 724}},
        {maximizeWindow, {0, 25, 1440, 875}},   {centerWindow, {320, 163, 800, 600}},
    };
    for (const ActionRow& row : rows) {
        SCOPED_TRACE(rawValue(row.action));
        const SimulatedWindowID id = openWindow();
        perform(row.action);
        EXPECT_EQ(window(id).frame, row.target);
    }
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(WindowManagerMoveTest, LogsEveryStepInItsOrder) {
    openWindow();

    perform(leftHalf);

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::info, "windows", "perform left"},
                                        LogLine{LogLevel::info, "windows", "frontmost org.example.Editor pid 501"},
                                        LogLine{LogLevel::info, "windows", "current frame (100, 100, 800, 600)"},
                                        LogLine{LogLevel::info, "windows", "target frame (0, 25, 720, 875)"},
                                        LogLine{LogLevel::info, "ax", "final frame (0, 25, 720, 875)"}));
}

TEST_F(WindowManagerMoveTest, AsksTheDesktopInItsOrder) {
    openWindow();

    perform(leftHalf);

    EXPECT_THAT(accessibility.calls(),
                ElementsAre("trusted", "application 501", "timeout 0.75 of application",
                            "copy AXFocusedWindow of application", "timeout 0.75 of window", "copy AXRole of window",
                            "copy AXMinimized of window", "copy AXFullScreen of window",
                            "settable AXPosition of window", "settable AXSize of window", "copy AXPosition of window",
                            "copy AXSize of window", "settable AXPosition of window", "settable AXSize of window",
                            "box", "set AXPosition of window", "box", "set AXSize of window",
                            "copy AXPosition of window", "copy AXSize of window", "copy AXPosition of window",
                            "copy AXSize of window"));
}

TEST_F(WindowManagerMoveTest, WritesAWindowThatLandsOnce) {
    const SimulatedWindowID id = openWindow();

    perform(leftHalf);

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{0, 25}, Size{720, 875}}));
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(WindowManagerMoveTest, BoundsTheApplicationAndTheWindow) {
    const SimulatedWindowID id = openWindow();

    perform(leftHalf);

    EXPECT_EQ(platform.accessibility().messagingTimeout(applicationElement()), 0.75);
    EXPECT_EQ(platform.accessibility().messagingTimeout(elementOf(id)), 0.75);
}

TEST_F(WindowManagerMoveTest, AWindowThatDoesNotLandIsWrittenTwiceReportedAndStillASuccess) {
    const SimulatedWindowID id = openWindow();
    window(id).minimumSize = {900, 400};

    perform(leftHalf);

    EXPECT_THAT(failures, ElementsAre(didNotMove));
    EXPECT_EQ(writes().size(), 2U);
    EXPECT_EQ(window(id).frame, (Rect{0, 25, 900, 875}));
}

TEST_F(WindowManagerMoveTest, AWindowThatDoesNotLandIsStillRecorded) {
    const SimulatedWindowID id = openWindow();
    window(id).minimumSize = {900, 400};
    perform(leftHalf);

    perform(restore);

    EXPECT_EQ(window(id).frame, (Rect{100, 100, 900, 600}));
}

TEST_F(WindowManagerMoveTest, AWindowThatDoesNotLandCanFailWithoutAnybodyToTell) {
    windowManager->setOnFailure(nullptr);
    window(openWindow()).ignoresWrites = true;

    perform(leftHalf);

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerMoveTest, AWindowWithinTheToleranceHasLanded) {
    const SimulatedWindowID id = openWindow();
    window(id).maximumSize = Size{718, 873};

    perform(leftHalf);

    EXPECT_THAT(failures, IsEmpty());
    EXPECT_EQ(writes().size(), 1U);
}

TEST_F(WindowManagerMoveTest, ATerminalThatKeepsItsStepsIsReported) {
    const SimulatedWindowID id = openWindow();
    window(id).minimumSize = {20, 10};
    window(id).sizeStep = {9, 17};

    perform(leftHalf);

    EXPECT_EQ(window(id).frame, (Rect{0, 25, 713, 860}));
    EXPECT_THAT(failures, ElementsAre(didNotMove));
}

TEST_F(WindowManagerMoveTest, UsesPaddingAndGapOfThePreferencesOfThisMoment) {
    const SimulatedWindowID id = openWindow();
    changePreferences([](PreferencesState& state) {
        state.outerPadding = 8;
        state.innerGap = 10;
    });

    perform(bottomRight);
    EXPECT_EQ(window(id).frame, (Rect{725, 468, 707, 424}));

    changePreferences([](PreferencesState& state) { state.innerGap = 0; });
    perform(rightHalf);
    EXPECT_EQ(window(id).frame, (Rect{720, 33, 712, 859}));
}

TEST_F(WindowManagerMoveTest, UsesTheWholeDisplayWhenClampingIsOff) {
    const SimulatedWindowID id = openWindow();
    changePreferences([](PreferencesState& state) { state.clampToVisibleArea = false; });

    perform(maximizeWindow);

    EXPECT_EQ(window(id).frame, (Rect{0, 0, 1440, 900}));
}

TEST_F(WindowManagerMoveTest, UsesTheDisplaysOfThisMoment) {
    const SimulatedWindowID id = openWindow();
    perform(maximizeWindow);

    setDisplays({{1, "Main", {0, 0, 1000, 800}, 0}});
    perform(maximizeWindow);

    EXPECT_EQ(window(id).frame, (Rect{0, 0, 1000, 800}));
}

TEST_F(WindowManagerMoveTest, MovesOnlyTheFocusedWindow) {
    const SimulatedWindowID other = openWindow();
    const SimulatedWindowID focused = openWindow();

    perform(leftHalf);

    EXPECT_EQ(window(focused).frame, (Rect{0, 25, 720, 875}));
    EXPECT_EQ(window(other).frame, startFrame);
}

TEST_F(WindowManagerMoveTest, MovesTheWindowOfTheFrontmostApplicationOnly) {
    const SimulatedWindowID behind = openWindow();
    desktop().addProcess(777).bundleIdentifier = "org.example.Viewer";
    const SimulatedWindowID front = desktop().addWindow(777);

    perform(leftHalf);

    EXPECT_EQ(window(front).frame, (Rect{0, 25, 720, 875}));
    EXPECT_EQ(window(behind).frame, startFrame);
    EXPECT_TRUE(windowManager->hasRestoreEntry(777));
    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerMoveTest, GoesToTheNextDisplayAndBack) {
    setDisplays({mainDisplay(), rightDisplay()});
    const SimulatedWindowID id = openWindow();
    perform(rightHalf);

    perform(nextDisplay);
    EXPECT_EQ(window(id).frame, (Rect{2400, 25, 960, 1055}));

    perform(nextDisplay);
    EXPECT_EQ(window(id).frame, (Rect{720, 25, 720, 875}));
}

TEST_F(WindowManagerMoveTest, MovesAtOnceEvenWhenTheWindowTakesLong) {
    const SimulatedWindowID id = openWindow();
    window(id).writeSeconds = 0.5;
    const MonotonicTime start = platform.runLoop().now();

    perform(leftHalf);

    EXPECT_EQ(platform.runLoop().now() - start, std::chrono::seconds{1});
    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
}

}  // namespace
}  // namespace velmorand

#include "desktop/harness/Pager.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/settings/ShortcutRecorderTest.h"

#include <csignal>

namespace velmorand::desktop {
namespace {

using enum Key;

/// Many actions on Command + K.
constexpr std::string_view conflicts = R"({"shortcuts":{"left":{"keyCode":40,"modifiers":256,"keyDisplay":"K"},)"
                                       R"("centerThird":{"keyCode":40,"modifiers":256,"keyDisplay":"K"},)"
                                       R"("leftTwoThirds":{"keyCode":40,"modifiers":256,"keyDisplay":"K"},)"
                                       R"("centerTwoThirds":{"keyCode":40,"modifiers":256,"keyDisplay":"K"},)"
                                       R"("previousDisplay":{"keyCode":40,"modifiers":256,"keyDisplay":"K"}}})";

/// The recorder as a panel: when it has the keyboard, and what ends it.
class RecorderPanelTest : public ShortcutRecorderTest {};

TEST_F(RecorderPanelTest, ComesUpInTheMiddleOfTheSettingsWindowInOneSize) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    const auto panel = observer().clientRect(recorder());
    const auto behind = observer().clientRect(window());
    ASSERT_TRUE(panel && behind);
    EXPECT_EQ(panel->width, 480);
    EXPECT_EQ(panel->height, 300);
    EXPECT_TRUE(observer().sizeLimits(recorder()).isFixed());
    EXPECT_NEAR(panel->x + panel->width / 2, behind->x + behind->width / 2, 10);
    EXPECT_NEAR(panel->y + panel->height / 2, behind->y + behind->height / 2, 30);
}

TEST_F(RecorderPanelTest, ARowOpensItBeItPressedClickedOrReachedByKeys) {
    ASSERT_NO_FATAL_FAILURE(openPane());

    ASSERT_NO_FATAL_FAILURE(record("Left"));
    keyboard().press(escape);
    ASSERT_TRUE(recordingEnds());

    click("push button", "Right");
    ASSERT_NO_FATAL_FAILURE(waitForRecorder());
    keyboard().press(escape);
    ASSERT_TRUE(recordingEnds());

    for (const Key key : {space, enter}) {
        EXPECT_TRUE(bus().focus(expectShown("push button", "Top")));
        keyboard().press(key);
        ASSERT_NO_FATAL_FAILURE(waitForRecorder());
        expectShown("", "Press the new shortcut for Top");
        keyboard().press({leftShift}, escape);
        ASSERT_TRUE(recordingEnds());
    }
}

TEST_F(RecorderPanelTest, OpeningItForAnotherActionEndsTheFirstRecording) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    keyboard().press({leftAlt}, k);
    expectShown("push button", "Use Anyway");
    const xcb_window_t first = recorder();

    press("push button", "Right");
    ASSERT_TRUE(observer().waitUntil([&] { return !observer().isViewable(first); }));
    ASSERT_NO_FATAL_FAILURE(waitForRecorder());
    EXPECT_FALSE(tree().shows("Use Anyway"));
    keyboard().press({leftControl, leftSuper}, k);

    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Right", "Control + Command + K"), "Control + Command + K");
    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Left Arrow"), "Option + Command + Left Arrow");
}

TEST_F(RecorderPanelTest, TheWindowManagersCloseCancels) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    observer().connection().sendToWindowManager(recorder(), "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2, 0, 0, 0});

    EXPECT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Left Arrow"), "Option + Command + Left Arrow");
}

TEST_F(RecorderPanelTest, AClickIntoTheSettingsWindowEndsIt) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    click("", "About");

    EXPECT_TRUE(recordingEnds());
}

TEST_F(RecorderPanelTest, ClosingTheSettingsWindowEndsIt) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    observer().connection().sendToWindowManager(window(), "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2, 0, 0, 0});

    EXPECT_TRUE(observer().waitUntil(
        [this] { return !observer().isViewable(recorder()) && !observer().isViewable(window()) && keyboardIsFree(); }));
}

TEST_F(RecorderPanelTest, AnotherWindowThatIsGivenTheFocusEndsIt) {
    auto other = desktop().start(plainWindow({.title = "Other"}));
    ASSERT_TRUE(other) << other.error();
    const auto otherWindow = observer().findWindow("Other");
    ASSERT_TRUE(otherWindow) << otherWindow.error();
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    ASSERT_TRUE(Pager(observer()).activate(*otherWindow));

    EXPECT_TRUE(recorderGoes());
    EXPECT_TRUE(performs("right", {leftSuper, leftAlt}, right));
}

TEST_F(RecorderPanelTest, AProgramThatIsKilledWhileItRecordsLeavesTheKeyboardFree) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    expectBadEnd();
    program().sendSignal(SIGKILL);

    EXPECT_TRUE(observer().waitUntil([this] { return keyboardIsFree(); }));
}

TEST_F(RecorderPanelTest, AProgramThatEndsWhileItRecordsEndsWell) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    EXPECT_TRUE(endProgram().isSuccess());
    EXPECT_TRUE(keyboardIsFree());
}

TEST_F(RecorderPanelTest, GrowsDownwardsForLongerTexts) {
    store(conflicts);
    ASSERT_NO_FATAL_FAILURE(openPane(14));
    ASSERT_NO_FATAL_FAILURE(record("Right"));
    const auto before = observer().clientRect(recorder());
    ASSERT_TRUE(before);

    keyboard().press({leftSuper}, k);

    expectShown("push button", "Replace");
    EXPECT_TRUE(observer().waitUntil([&] {
        const auto now = observer().clientRect(recorder());
        return now && now->height > before->height && now->y == before->y;
    }));
    const AccessibleObject confirm = expectShown("push button", "Replace");
    const auto after = observer().clientRect(recorder());
    ASSERT_TRUE(after && confirm.frame);
    EXPECT_LE(confirm.frame->y + confirm.frame->height, after->y + after->height);
}

TEST_F(RecorderPanelTest, StaysOnTheScreenWhenItGrowsAtItsLowerEdge) {
    store(conflicts);
    ASSERT_NO_FATAL_FAILURE(openPane(14));
    ASSERT_TRUE(Pager(observer()).place(window(), {250, 500, 782, 582}));
    ASSERT_NO_FATAL_FAILURE(record("Right"));

    keyboard().press({leftSuper}, k);

    EXPECT_TRUE(observer().waitUntil([&] {
        const AccessibleTree seen = tree();
        const AccessibleObject* confirm = seen.find("push button", "Replace");
        const auto frame = observer().visibleFrame(recorder());
        return confirm != nullptr && confirm->frame && confirm->frame->y + confirm->frame->height <= 800 && frame &&
               frame->y >= 0 && frame->y + frame->height <= 800;
    }));
}

TEST_F(RecorderPanelTest, MinimisingTheSettingsWindowEndsIt) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    ASSERT_TRUE(Pager(observer()).minimize(window()));

    EXPECT_TRUE(recorderGoes());
}

TEST_F(RecorderPanelTest, TheEndOfTheServerWhileItRecordsIsStatusOne) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    expectBadEnd();

    desktop().server().sendSignal(SIGKILL);

    const auto status = program().wait(patience);
    ASSERT_TRUE(status) << "still running\n" << program().logTail();
    EXPECT_EQ(status->code, 1) << program().logTail();
}

/// Under window managers that have the combinations for themselves.
class RecorderPanelOnTest : public RecorderPanelTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
    [[nodiscard]] DesktopOptions desktopOptions() const override { return {.windowManager = {.kind = GetParam()}}; }
};

TEST_P(RecorderPanelOnTest, GetsTheKeysOfTheWindowManagerWhichDoesNothingWithThem) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftAlt}, f4);
    expectShown("", "Option + Key 118");
    keyboard().press({leftAlt}, tab);
    expectShown("", "Option + Tab");
    keyboard().press({leftControl, leftAlt}, left);
    expectShown("", "Control + Option + Left Arrow");
    keyboard().press({leftSuper, leftAlt}, right);
    expectShown("", "This shortcut is already used by Right.");

    EXPECT_TRUE(observer().isViewable(recorder())) << "Alt+F4 has closed nothing";
    EXPECT_EQ(observer().activeWindow(), recorder());
    EXPECT_FALSE(program().log().contains("Dispatching shortcut"));
    keyboard().press(escape);
    EXPECT_TRUE(recordingEnds());
}

INSTANTIATE_TEST_SUITE_P(On, RecorderPanelOnTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::marco,
                                         WindowManagerKind::kwin),
                         [](const auto& each) { return std::string(nameOf(each.param)); });

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/harness/NotificationServer.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/settings/ShortcutRecorderTest.h"
#include "desktop/x11/GrabbingClient.h"

#include <chrono>

namespace velmorand::desktop {
namespace {

using enum Key;

constexpr std::string_view commandKIsTaken = "Command + K. Saved, but another app is already using this shortcut.";
constexpr std::string_view leftIsTaken = "Could not register Left (Command + K). Another app may already be using it.";

/// What a recording says, asks and leaves behind.
class RecordingTest : public ShortcutRecorderTest {
protected:
    /// A window for the shortcuts to work on.
    void openOtherWindow() {
        auto other = desktop().start(plainWindow({.title = "Other"}));
        ASSERT_TRUE(other) << other.error();
        other_.emplace(std::move(*other));
        const auto found = observer().findWindow("Other");
        ASSERT_TRUE(found) << found.error();
        otherWindow_ = *found;
    }
    void focusOtherWindow() { ASSERT_TRUE(Pager(observer()).activate(otherWindow_)); }
    void focusSettings() { ASSERT_TRUE(Pager(observer()).activate(window())); }
    /// Waits until it is in the left or right half of the screen, which is all its own.
    [[nodiscard]] bool otherWindowIsAt(int x) {
        return observer().waitUntil([&] {
            const auto frame = observer().visibleFrame(otherWindow_);
            return frame && frame->x == x && frame->width == 640;
        });
    }

private:
    std::optional<ChildProcess> other_;
    xcb_window_t otherWindow_ = XCB_WINDOW_NONE;
};

TEST_F(RecordingTest, SaysWhatToDoAndWhatWasWrong) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Top Right"));

    expectAllShown({"Press the new shortcut for Top Right",
                    "Press Escape to cancel — add a modifier to bind Escape itself.", "Remove Current Shortcut",
                    "Cancel"});
    keyboard().press(a);
    expectShown("", "Include at least one of Command, Control, or Option.");
    EXPECT_FALSE(tree().shows("Press Escape to cancel — add a modifier to bind Escape itself."));
    EXPECT_FALSE(tree().shows("Use Anyway"));
    EXPECT_FALSE(tree().shows("Replace"));
}

TEST_F(RecordingTest, QuestionsAndErrorsAreAlertsForScreenReaders) {
    constexpr std::string_view alert = "alert message";
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    expectShown("label", "Press Escape to cancel — add a modifier to bind Escape itself.");
    keyboard().press(a);
    expectShown(alert, "Include at least one of Command, Control, or Option.");
    keyboard().press({leftSuper, leftAlt}, right);
    expectShown(alert,
                "This shortcut is already used by Right. Right will have no shortcut until you assign a new one.");
    keyboard().press({leftAlt}, k);
    expectShown(alert,
                "Shortcuts without Command or Control can fail to register on some macOS versions. Add Command or "
                "Control for a more reliable global shortcut.");
}

TEST_F(RecordingTest, EscapeWithAModifierIsRecorded) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftSuper}, escape);

    EXPECT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Command + Escape"), "Command + Escape");
}

TEST_F(RecordingTest, AFragileCombinationIsTakenWhenTheUserInsists) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftAlt, leftShift}, k);
    expectAllShown({"Shortcuts without Command or Control can fail to register on some macOS versions.",
                    "Add Command or Control for a more reliable global shortcut.", "Option + Shift + K"});
    press("push button", "Use Anyway");

    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Option + Shift + K"), "Option + Shift + K");
    EXPECT_TRUE(performs("left", {leftAlt, leftShift}, k));
}

TEST_F(RecordingTest, ACombinationOfTheScreenReaderIsTakenWhenTheUserInsists) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftControl, leftAlt}, k);
    expectAllShown({"Control–Option shortcuts can conflict with VoiceOver.",
                    "Add Command for a shortcut that won't interfere with VoiceOver."});
    click("push button", "Use Anyway");

    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Control + Option + K"), "Control + Option + K");
    EXPECT_TRUE(performs("left", {leftControl, leftAlt}, k));
}

TEST_F(RecordingTest, CancelKeepsWhatWasThere) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    keyboard().press({leftAlt}, k);
    expectShown("push button", "Use Anyway");

    click("push button", "Cancel");

    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Left Arrow"), "Option + Command + Left Arrow");
    EXPECT_FALSE(performs("left", {leftAlt}, k));
    EXPECT_TRUE(performs("left", {leftAlt, leftSuper}, left));
    EXPECT_EQ(stored(), "");
}

TEST_F(RecordingTest, TheNewShortcutMovesWindowsAndTheOldOneDoesNot) {
    ASSERT_NO_FATAL_FAILURE(openOtherWindow());
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    keyboard().press({leftControl, leftSuper}, k);
    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Control + Command + K"), "Control + Command + K");
    ASSERT_NO_FATAL_FAILURE(focusOtherWindow());

    keyboard().press({leftSuper, leftAlt}, right);
    EXPECT_TRUE(otherWindowIsAt(640));
    EXPECT_FALSE(performs("left", {leftSuper, leftAlt}, left));
    keyboard().press({leftControl, leftSuper}, k);
    EXPECT_TRUE(otherWindowIsAt(0));
}

TEST_F(RecordingTest, AShortcutIsTakenFromTheActionThatHasIt) {
    ASSERT_NO_FATAL_FAILURE(openOtherWindow());
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    keyboard().press({leftSuper, leftAlt}, right);
    expectAllShown(
        {"This shortcut is already used by Right.", "Right will have no shortcut until you assign a new one."});
    click("push button", "Replace");
    ASSERT_TRUE(recordingEnds());

    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Right Arrow"), "Option + Command + Right Arrow");
    EXPECT_EQ(waitForShortcut("Right", "None"), "None");
    ASSERT_NO_FATAL_FAILURE(focusOtherWindow());
    keyboard().press({leftSuper, leftAlt}, right);
    EXPECT_TRUE(otherWindowIsAt(0));
    EXPECT_EQ(dispatches("right"), 0);
}

TEST_F(RecordingTest, ARemovedShortcutDoesNothingUntilTheDefaultsAreReset) {
    ASSERT_NO_FATAL_FAILURE(openOtherWindow());
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    press("push button", "Remove Current Shortcut");
    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "None"), "None");
    EXPECT_FALSE(performs("left", {leftSuper, leftAlt}, left));

    ASSERT_NO_FATAL_FAILURE(record("Left"));
    expectShown("push button", "Cancel");
    EXPECT_FALSE(tree().shows("Remove Current Shortcut")) << "there is none";
    keyboard().press(escape);
    ASSERT_TRUE(recordingEnds());

    press("push button", "Reset Defaults");
    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Left Arrow"), "Option + Command + Left Arrow");
    ASSERT_NO_FATAL_FAILURE(focusOtherWindow());
    keyboard().press({leftSuper, leftAlt}, left);
    EXPECT_TRUE(otherWindowIsAt(0));
}

TEST_F(RecordingTest, TheOwnCombinationIsNoConflict) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftAlt, leftSuper}, left);

    EXPECT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Option + Command + Left Arrow"), "Option + Command + Left Arrow");
    EXPECT_EQ(dispatches("left"), 0);
}

TEST_F(RecordingTest, TheCombinationJustRecordedDoesNotFireWhileItIsStillHeld) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(record("Left"));
    {
        const HeldKey held = keyboard().hold({leftControl, leftSuper}, k);
        ASSERT_TRUE(recordingEnds());
        // The server repeats a key after 660 ms and then 25 times a second.
        EXPECT_FALSE(observer().waitUntil([this] { return dispatches("left") > 0; }, std::chrono::milliseconds(1200)));
    }
    EXPECT_TRUE(performs("left", {leftControl, leftSuper}, k));
}

TEST_F(RecordingTest, WorksByTheKeyboardAloneUntilAQuestionIsAsked) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    EXPECT_TRUE(bus().focus(expectShown("push button", "Reset Defaults")));

    keyboard().press(tab);
    keyboard().press(space);
    ASSERT_NO_FATAL_FAILURE(waitForRecorder());
    expectShown("", "Press the new shortcut for Left");
    keyboard().press(tab);
    expectShown("", "Include at least one of Command, Control, or Option.");
    keyboard().press({leftControl}, tab);
    ASSERT_TRUE(recordingEnds());
    EXPECT_EQ(waitForShortcut("Left", "Control + Tab"), "Control + Tab");

    keyboard().press(tab);
    keyboard().press(enter);
    ASSERT_NO_FATAL_FAILURE(waitForRecorder());
    expectShown("", "Press the new shortcut for Right");
}

TEST_F(RecordingTest, AConflictThatStandsInTheDocumentIsSolvedByRecordingAnew) {
    store(R"({"shortcuts":{"topRight":{"keyCode":36,"modifiers":2304,"keyDisplay":"Return"}}})");
    ASSERT_NO_FATAL_FAILURE(openPane(17));
    EXPECT_EQ(waitForShortcut("Top Right", "Option + Command + Return. Conflicts with Maximize"),
              "Option + Command + Return. Conflicts with Maximize");
    EXPECT_FALSE(performs("maximize", {leftAlt, leftSuper}, enter));

    ASSERT_NO_FATAL_FAILURE(record("Top Right"));
    keyboard().press({leftControl}, k);
    ASSERT_TRUE(recordingEnds());

    EXPECT_EQ(waitForShortcut("Top Right", "Control + K"), "Control + K");
    EXPECT_EQ(waitForShortcut("Maximize", "Option + Command + Return"), "Option + Command + Return");
    EXPECT_TRUE(performs("maximize", {leftAlt, leftSuper}, enter));
    EXPECT_TRUE(performs("topRight", {leftControl}, k));
}

TEST_F(RecordingTest, ACombinationThatAnotherProgramHasIsToldInItsRowAndByTheServerThatCameLater) {
    GrabbingClient other(desktop().displayName());
    ASSERT_TRUE(other.grab(GrabKind::core, k, XCB_MOD_MASK_4));
    ASSERT_NO_FATAL_FAILURE(openPane());
    const auto server = NotificationServer::start(desktop());
    ASSERT_TRUE(server) << server.error();
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftSuper}, k);

    EXPECT_EQ(waitForShortcut("Left", commandKIsTaken), commandKIsTaken);
    EXPECT_TRUE(observer().waitUntil([&] { return !server->shown().empty(); }));
    EXPECT_EQ(server->shown().front().body, leftIsTaken);
}

TEST_F(RecordingTest, TheNextProblemTakesThePlaceOfTheNotification) {
    const auto server = NotificationServer::start(desktop());
    ASSERT_TRUE(server) << server.error();
    GrabbingClient other(desktop().displayName());
    ASSERT_TRUE(other.grab(GrabKind::core, left, XCB_MOD_MASK_4 | XCB_MOD_MASK_1));
    ASSERT_TRUE(other.grab(GrabKind::core, k, XCB_MOD_MASK_4));
    ASSERT_NO_FATAL_FAILURE(openPane(18));
    ASSERT_TRUE(observer().waitUntil([&] { return server->shown().size() == 1; }));
    ASSERT_NO_FATAL_FAILURE(record("Left"));

    keyboard().press({leftSuper}, k);

    ASSERT_TRUE(observer().waitUntil([&] { return server->shown().size() == 2; }));
    EXPECT_EQ(server->shown()[1].number, server->shown()[0].number);
    EXPECT_EQ(server->shown()[1].title, "Velmorand: Shortcut Issue");
    EXPECT_EQ(server->shown()[1].body, leftIsTaken);
}

}  // namespace
}  // namespace velmorand::desktop

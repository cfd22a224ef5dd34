#include "desktop/program/ProgramTest.h"

#include <csignal>
#include <filesystem>

namespace velmorand::desktop {
namespace {

using enum Key;

/// The program with the recorder, which a signal opens; it logs what the recorder says.
class RecorderTest : public ProgramTest {
protected:
    [[nodiscard]] std::filesystem::path program() const override { return VELMORAND_RECORDER_PROGRAM; }

    /// Returns when the panel has the keyboard.
    void openRecorder() {
        const auto panel = [this] { return desktop().observer().findWindow("Record Shortcut"); };
        desktop().program().sendSignal(SIGUSR1);
        const auto window = panel();
        ASSERT_TRUE(window) << window.error();
        ASSERT_TRUE(desktop().observer().waitUntil([&] { return desktop().observer().activeWindow() == *window; }));
        ASSERT_TRUE(desktop().observer().waitUntil([this] { return !keyboardIsFree(); }));
    }

    /// The same while a panel is there, for the next action.
    void openAgain() {
        const auto first = desktop().observer().findWindow("Record Shortcut");
        ASSERT_TRUE(first) << first.error();
        desktop().program().sendSignal(SIGUSR1);
        ASSERT_TRUE(desktop().observer().waitUntil([&] { return !desktop().observer().isViewable(*first); }));
        const auto second = desktop().observer().findWindow("Record Shortcut");
        ASSERT_TRUE(second) << second.error();
        ASSERT_TRUE(desktop().observer().waitUntil([this] { return !keyboardIsFree(); }));
    }

    /// Whether a second client can have the whole keyboard, which it then gives back at once.
    [[nodiscard]] bool keyboardIsFree() {
        XConnection& connection = desktop().observer().connection();
        const auto grabbed = connection.reply<xcb_grab_keyboard_reply_t>(xcb_grab_keyboard(
            connection.raw(), 0, connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        const bool isFree = grabbed && grabbed->status == XCB_GRAB_STATUS_SUCCESS;
        if (isFree) xcb_ungrab_keyboard(connection.raw(), XCB_CURRENT_TIME);
        connection.synchronise();
        return isFree;
    }

    /// Waits until no recording runs and every shortcut is registered again.
    [[nodiscard]] bool hasEndedRecording() {
        return desktop().observer().waitUntil([this] {
            const std::string log = desktop().program().log();
            const auto opened = log.rfind("recorder: held '' pending nothing");
            return opened != std::string::npos &&
                   log.find("Registered shortcut restore id 19", opened) != std::string::npos;
        });
    }
    [[nodiscard]] TestKeyboard& keyboard() { return desktop().keyboard(); }
};

TEST_P(RecorderTest, GetsTheKeysOfTheWindowManagerAndItDoesNothingWithThem) {
    focus(DemoWindow::clientSide);
    openRecorder();

    keyboard().press({leftAlt}, f4);
    EXPECT_TRUE(logs("pending Option + Key 118; Shortcuts without Command or Control can fail to register"));
    keyboard().press({leftAlt}, tab);
    EXPECT_TRUE(logs("pending Option + Tab; Shortcuts without"));
    keyboard().press({leftControl, leftAlt}, left);
    EXPECT_TRUE(logs("pending Control + Option + Left Arrow; Control–Option shortcuts can conflict"));
    keyboard().press({leftSuper, leftAlt}, right);
    EXPECT_TRUE(logs("pending Option + Command + Right Arrow; This shortcut is already used by Right."));

    EXPECT_TRUE(desktop().observer().findWindow("Record Shortcut")) << "Alt+F4 has closed nothing";
    EXPECT_EQ(count("Dispatching shortcut"), 0);
    keyboard().press(escape);
    EXPECT_TRUE(hasEndedRecording());
    EXPECT_TRUE(desktop().observer().waitUntil([this] { return keyboardIsFree(); }));
}

TEST_P(RecorderTest, TheNewShortcutWorksAndTheOldOneDoesNot) {
    focus(DemoWindow::serverSide);
    openRecorder();
    keyboard().press({leftControl, leftSuper}, k);
    ASSERT_TRUE(hasEndedRecording());
    focus(DemoWindow::serverSide);
    const PixelRect start = desktop().frameOf(DemoWindow::serverSide).value_or(PixelRect{});
    const PixelRect target = wanted("left", DemoWindow::serverSide);

    press("left");  // by the old shortcut; one that works, behind it, shows that it was not just slow
    press("right");
    EXPECT_TRUE(logs("perform right"));
    EXPECT_EQ(count("perform left"), 0);

    keyboard().press({leftControl, leftSuper}, k);
    EXPECT_TRUE(framesAgree(settledFrame(DemoWindow::serverSide, target), target, frameTolerance))
        << "it was at " << start;
    EXPECT_EQ(count("perform left"), 1);
}

TEST_P(RecorderTest, TheCombinationJustRecordedDoesNotFireWhileItIsStillHeld) {
    focus(DemoWindow::serverSide);
    openRecorder();
    {
        const HeldKey held = keyboard().hold({leftControl, leftSuper}, k);
        ASSERT_TRUE(hasEndedRecording());
        // The server repeats a key after 660 ms and then 25 times a second.
        EXPECT_FALSE(desktop().observer().waitUntil([this] { return count("Dispatching shortcut") > 0; },
                                                    std::chrono::milliseconds(1200)));
    }
    focus(DemoWindow::serverSide);
    keyboard().press({leftControl, leftSuper}, k);
    EXPECT_TRUE(logs("Dispatching shortcut left"));
}

TEST_P(RecorderTest, OpeningItForAnotherActionEndsTheFirstRecording) {
    focus(DemoWindow::serverSide);
    openRecorder();
    keyboard().press({leftAlt}, k);
    ASSERT_TRUE(logs("pending Option + K;"));

    openAgain();
    keyboard().press({leftControl, leftSuper}, k);

    ASSERT_TRUE(hasEndedRecording());
    focus(DemoWindow::serverSide);
    keyboard().press({leftControl, leftSuper}, k);
    EXPECT_TRUE(logs("Dispatching shortcut right")) << "the second action of the catalogue has it";
}

TEST_P(RecorderTest, AnotherWindowThatIsGivenTheFocusEndsTheRecording) {
    focus(DemoWindow::serverSide);
    openRecorder();

    focus(DemoWindow::clientSide);

    EXPECT_TRUE(hasEndedRecording());
    EXPECT_TRUE(keyboardIsFree());
    expectLanding("right", DemoWindow::clientSide);
}

TEST_P(RecorderTest, AProgramThatIsKilledWhileItRecordsLeavesTheKeyboardFree) {
    focus(DemoWindow::serverSide);
    openRecorder();

    desktop().program().sendSignal(SIGKILL);

    EXPECT_TRUE(desktop().observer().waitUntil([this] { return keyboardIsFree(); }));
}

INSTANTIATE_TEST_SUITE_P(On, RecorderTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         windowManagerName);

}  // namespace
}  // namespace velmorand::desktop

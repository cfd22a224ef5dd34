#include "desktop/harness/SessionManager.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/harness/XRelay.h"
#include "desktop/program/ProgramTest.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <csignal>

namespace velmorand::desktop {
namespace {

constexpr std::chrono::seconds patient{10};
constexpr std::string_view lastRegistration = "Registered shortcut restore id 19";

std::unique_ptr<TestDesktop> makeDesktop() {
    auto desktop = TestDesktop::create({.windowManager = {.kind = WindowManagerKind::openbox}});
    EXPECT_TRUE(desktop) << desktop.error();
    return desktop ? std::move(*desktop) : nullptr;
}

int lines(const std::string& text) {
    return static_cast<int>(std::ranges::count(text, '\n'));
}

class StartAndEndTest : public testing::Test {
protected:
    void SetUp() override {
        desktop_ = makeDesktop();
        ASSERT_NE(desktop_, nullptr);
    }

    /// The program on the desktop, with everything registered that can be.
    ChildProcess startProgram(const Environment& additions = {}) {
        auto program = desktop_->start({programUnderTest().string()}, additions);
        EXPECT_TRUE(program) << program.error();
        EXPECT_TRUE(desktop_->observer().waitUntil([&] { return program->log().contains(lastRegistration); }))
            << program->logTail();
        return std::move(*program);
    }

    /// Another client grabs Super+Alt+Left Arrow, by the core protocol.
    void grabLeftShortcut() {
        XConnection& connection = desktop_->observer().connection();
        xcb_grab_key(connection.raw(), 0, connection.root(), XCB_MOD_MASK_4 | XCB_MOD_MASK_1,
                     static_cast<xcb_keycode_t>(Key::left), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        connection.synchronise();
    }

    /// The same by the input extension.
    void grabLeftShortcutByInputExtension() {
        XConnection& connection = desktop_->observer().connection();
        const auto version =
            connection.reply<xcb_input_xi_query_version_reply_t>(xcb_input_xi_query_version(connection.raw(), 2, 2));
        ASSERT_NE(version, nullptr);
        const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        const std::uint32_t modifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;
        const auto grabbed =
            connection.reply<xcb_input_xi_passive_grab_device_reply_t>(xcb_input_xi_passive_grab_device(
                connection.raw(), XCB_CURRENT_TIME, connection.root(), XCB_CURSOR_NONE,
                static_cast<std::uint32_t>(Key::left), XCB_INPUT_DEVICE_ALL_MASTER, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
                XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &events,
                &modifiers));
        ASSERT_NE(grabbed, nullptr);
    }

    void expectOnlyLeftRefused() {
        ChildProcess program = startProgram();
        const std::string log = program.log();
        EXPECT_TRUE(log.contains("velmorand [hotkeys] error: RegisterEventHotKey failed id 1 result -9878\n"));
        EXPECT_TRUE(log.contains("velmorand [shortcuts] error: Failed shortcut left: Could not register the shortcut "
                                 "(error -9878).\n"));
        EXPECT_FALSE(log.contains("Registered shortcut left id 1"));
        EXPECT_EQ(lines(log), 20) << "two lines for the one that is taken, one for each of the others\n" << log;
    }

    std::unique_ptr<TestDesktop> desktop_;
};

class EndBySignalTest : public StartAndEndTest, public testing::WithParamInterface<int> {};

TEST_P(EndBySignalTest, EndsCleanlyAndGivesItsShortcutsBack) {
    ChildProcess program = startProgram();

    program.sendSignal(GetParam());

    const auto status = program.wait(patient);
    ASSERT_TRUE(status) << "still running\n" << program.logTail();
    EXPECT_TRUE(status->isSuccess()) << status->text() << '\n' << program.logTail();
    ChildProcess next = startProgram();
    EXPECT_FALSE(next.log().contains("failed"));
}

INSTANTIATE_TEST_SUITE_P(For, EndBySignalTest, testing::Values(SIGTERM, SIGINT));

TEST_F(StartAndEndTest, EndsCleanlyWithTheSessionAndIsNotStartedByTheNextOne) {
    auto session = SessionManager::start(*desktop_);
    ASSERT_TRUE(session) << session.error();
    ChildProcess program = startProgram(session->invitation());
    auto other = desktop_->start(terminalWindow({.title = "Other"}), session->invitation());
    ASSERT_TRUE(other) << other.error();
    ASSERT_TRUE(desktop_->observer().findWindow("Other"));

    const auto loggedOut = session->logOut();

    ASSERT_TRUE(loggedOut) << loggedOut.error();
    const auto status = program.wait(patient);
    ASSERT_TRUE(status) << "still running\n" << program.logTail();
    EXPECT_TRUE(status->isSuccess()) << status->text() << '\n' << program.logTail();
    const std::string saved = session->savedSession();
    EXPECT_TRUE(saved.contains("xterm")) << "a program that wants to come back\n" << saved;
    EXPECT_FALSE(saved.contains(programUnderTest().string())) << saved;
    ChildProcess next = startProgram();
    EXPECT_FALSE(next.log().contains("failed"));
}

TEST_F(StartAndEndTest, TheEndOfTheServerIsOneLineAndStatusOne) {
    // The toolkit ends the process without giving back its connection, which a sanitizer would report as lost.
    ChildProcess program = startProgram({{"ASAN_OPTIONS", "detect_leaks=0"}});
    const auto before = program.logSize();

    desktop_->server().sendSignal(SIGKILL);

    const auto status = program.wait(patient);
    ASSERT_TRUE(status) << "still running\n" << program.logTail();
    EXPECT_EQ(status->code, 1) << program.logTail();
    const std::string log = program.log(before);
    EXPECT_EQ(log, "velmorand [app] error: The connection to the X server is lost.\n");
}

TEST_F(StartAndEndTest, AServerThatIsNotThereIsOneLineAndStatusOne) {
    auto program = desktop_->start({programUnderTest().string()}, {{"DISPLAY", ":4099"}});
    ASSERT_TRUE(program) << program.error();

    const auto status = program->wait(patient);

    ASSERT_TRUE(status);
    EXPECT_EQ(status->code, 1);
    EXPECT_EQ(program->log(), "velmorand: Cannot connect to the X server at \":4099\".\n");
}

TEST_F(StartAndEndTest, NoServerNamedIsOneLineAndStatusOne) {
    auto program = desktop_->start({programUnderTest().string()}, {{"DISPLAY", ""}});
    ASSERT_TRUE(program) << program.error();

    const auto status = program->wait(patient);

    ASSERT_TRUE(status);
    EXPECT_EQ(status->code, 1);
    EXPECT_EQ(program->log(), "velmorand: Cannot start without an X server: DISPLAY is not set.\n");
}

TEST_F(StartAndEndTest, AServerInsideAWaylandSessionIsRefusedWithItsReason) {
    const auto renamed = desktop_->setMonitors({{"XWAYLAND0", {0, 0, 1280, 800}, true}});
    ASSERT_TRUE(renamed) << renamed.error();
    ChildProcess program = startProgram();
    auto keyboard = TestKeyboard::attach(desktop_->observer());
    ASSERT_TRUE(keyboard) << keyboard.error();

    keyboard->press({Key::leftSuper, Key::leftAlt}, Key::left);

    EXPECT_TRUE(desktop_->observer().waitUntil([&] {
        return program.log().contains("velmorand [windows] error: Accessibility permission is required.");
    })) << program.logTail();
    EXPECT_TRUE(program.log().contains("velmorand [ax] error: This is a Wayland session: through its X server the "
                                       "windows of other applications cannot be moved.\n"));
}

TEST_F(StartAndEndTest, AShortcutThatAnotherProgramGrabbedIsReportedAndTheOthersWork) {
    grabLeftShortcut();

    expectOnlyLeftRefused();
}

TEST_F(StartAndEndTest, AShortcutGrabbedByTheInputExtensionIsReportedToo) {
    grabLeftShortcutByInputExtension();

    expectOnlyLeftRefused();
}

TEST_F(StartAndEndTest, WithoutTheInputExtensionItSaysThatNoShortcutWorksAndStays) {
    const auto relay = XRelay::start({.server = desktop_->displayName(), .hiddenExtensions = {"XInputExtension"}});
    ASSERT_TRUE(relay) << relay.error();
    auto program = desktop_->start({programUnderTest().string()}, {{"DISPLAY", (*relay)->displayName()}});
    ASSERT_TRUE(program) << program.error();

    const bool isReported = desktop_->observer().waitUntil([&] {
        return program->log().contains("velmorand [shortcuts] error: hot key handler install failed: Could not install "
                                       "the keyboard shortcut handler (error -9868).\n");
    });
    EXPECT_TRUE(isReported) << program->logTail();
    EXPECT_TRUE(program->log().contains("velmorand [hotkeys] error: InstallEventHandler failed: -9868\n"));
    EXPECT_TRUE(program->isRunning());
    EXPECT_TRUE(program->terminate().isSuccess()) << program->logTail();
}

}  // namespace
}  // namespace velmorand::desktop

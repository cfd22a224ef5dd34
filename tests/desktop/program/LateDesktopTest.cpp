#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/NotificationServer.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/harness/TrayUser.h"
#include "desktop/program/ProgramTest.h"
#include "desktop/x11/GrabbingClient.h"

#include <csignal>

namespace velmorand::desktop {
namespace {

constexpr PixelRect display{0, 0, 1280, 800};
constexpr PixelRect nextDisplay{1280, 0, 1280, 800};
constexpr PixelRect elsewhere{700, 150, 500, 400};
constexpr std::size_t allShortcuts = 19;
constexpr int panelHeight = 32;

/// The program on an X server with a session bus and nothing else, as it may find it at log-in; the rest comes later.
class LateDesktopTest : public testing::Test {
protected:
    void SetUp() override { openDesktop({}); }
    void TearDown() override {
        if (HasFailure() && program_) ADD_FAILURE() << program_->logTail();
    }

    void openDesktop(DesktopOptions options) {
        options.windowManager.kind = WindowManagerKind::none;
        options.monitors = {{"main", display, true}, {"next", nextDisplay, false}};
        auto desktop = TestDesktop::create(options);
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        const auto single = desktop_->setMonitors({{"main", display, true}});
        ASSERT_TRUE(single) << single.error();
    }
    void startProgram(std::size_t shortcuts = allShortcuts) {
        auto program = desktop::startProgram(*desktop_, programUnderTest(), shortcuts);
        ASSERT_TRUE(program) << program.error();
        program_ = std::move(*program);
    }
    void startWindowManager() {
        const auto started = desktop_->replaceWindowManager({.kind = WindowManagerKind::openbox});
        ASSERT_TRUE(started) << started.error();
    }
    void openWindow() {
        auto client = desktop_->start(plainWindow({.title = "Window", .applicationId = "org.example.Tasks"}));
        ASSERT_TRUE(client) << client.error();
        client_ = std::move(*client);
        const auto window = observer().findWindow("Window");
        ASSERT_TRUE(window) << window.error();
        window_ = *window;
        Pager pager(observer());
        ASSERT_TRUE(pager.activate(window_));
        ASSERT_TRUE(pager.place(window_, elsewhere));
    }
    void press(std::string_view action) {
        auto keyboard = TestKeyboard::attach(observer());
        ASSERT_TRUE(keyboard) << keyboard.error();
        keyboard->press(demoAction(action).modifiers, demoAction(action).key);
    }
    void expectSettled(const PixelRect& frame) {
        const auto seen = observer().waitForSettledFrame(window_, frame);
        EXPECT_TRUE(seen && framesAgree(*seen, frame, 2)) << seen.value_or(PixelRect{});
    }
    [[nodiscard]] bool logs(std::string_view line) {
        return observer().waitUntil([&] { return program_->log().contains(line); });
    }
    [[nodiscard]] bool comeToBeShown(const NotificationServer& server, std::size_t count) {
        return observer().waitUntil([&] { return server.shown().size() >= count; });
    }

    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] ChildProcess& program() { return *program_; }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::optional<ChildProcess> program_;
    std::optional<ChildProcess> client_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(LateDesktopTest, AShortcutMovesAWindowAsSoonAsThereIsAWindowManager) {
    startProgram();
    press("left");
    EXPECT_TRUE(logs("velmorand [windows] error: Accessibility permission is required."));

    startWindowManager();
    openWindow();
    press("left");

    expectSettled({0, 0, display.width / 2, display.height});
}

TEST_F(LateDesktopTest, ADisplayThatComesLaterIsUsed) {
    startProgram();
    startWindowManager();
    openWindow();
    const auto two = desktop().setMonitors({{"main", display, true}, {"next", nextDisplay, false}});
    ASSERT_TRUE(two) << two.error();
    press("left");
    expectSettled({0, 0, display.width / 2, display.height});

    press("nextDisplay");

    expectSettled({nextDisplay.x, 0, nextDisplay.width / 2, nextDisplay.height});
}

/// Nor can the bus start anything.
class LateServiceTest : public LateDesktopTest {
protected:
    void SetUp() override { openDesktop({.startsServices = false}); }
};

TEST_F(LateServiceTest, AProblemOfTheStartIsShownWhenANotificationServerComes) {
    GrabbingClient other(desktop().displayName());
    ASSERT_TRUE(other.grab(GrabKind::core, Key::left, XCB_MOD_MASK_4 | XCB_MOD_MASK_1));
    startProgram(allShortcuts - 1);
    startWindowManager();

    const auto server = NotificationServer::start(desktop());

    ASSERT_TRUE(server) << server.error();
    ASSERT_TRUE(comeToBeShown(*server, 1));
    EXPECT_EQ(server->shown().front().title, "Velmorand: Shortcut Issue");
}

class LatePanelTest : public LateDesktopTest, public testing::WithParamInterface<TrayHostKind> {};

TEST_P(LatePanelTest, ShowsTheStatusItemWhoseMenuWorks) {
    startProgram();
    startWindowManager();
    TrayUser user(desktop());
    program().freeze();  // for a look at the panel before it has the icon
    const auto host = user.startHost(GetParam());
    ASSERT_TRUE(host) << host.error();
    const auto icon = user.findIcon([this] { program().thaw(); });
    ASSERT_TRUE(icon) << icon.error();
    openWindow();
    user.letSettle();  // panels ask for the menu when the icon appears, which counts as an opening for a moment

    const auto menu = user.openMenu();

    ASSERT_TRUE(menu) << menu.error();
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard) << keyboard.error();
    keyboard->press(Key::down);
    keyboard->press(Key::enter);
    expectSettled({0, 0, display.width / 2, display.height - panelHeight});
}

std::string hostName(const testing::TestParamInfo<TrayHostKind>& host) {
    return host.param == TrayHostKind::xfce ? "Xfce" : "LXQt";
}

INSTANTIATE_TEST_SUITE_P(On, LatePanelTest, testing::Values(TrayHostKind::xfce, TrayHostKind::lxqt), hostName);

}  // namespace
}  // namespace velmorand::desktop

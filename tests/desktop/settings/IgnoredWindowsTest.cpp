#include "desktop/demo/DemoActions.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/settings/IgnoredAppsTest.h"

#include <optional>
#include <ostream>

namespace velmorand::desktop {
namespace {

/// A program as the user meets it: in the chooser, and as a window.
struct RealApplication {
    std::string kind;
    std::string name;
    std::string windowTitle;
    std::vector<std::string> command;
    /// Of the entry that the test installs; empty where one comes with the program.
    std::string identifier = {};
    std::string exec = {};

    friend void PrintTo(const RealApplication& application, std::ostream* out) { *out << application.kind; }
};

/// What is chosen in the chooser is what a window in front is taken for.
class IgnoredWindowsTest : public IgnoredAppsTest, public testing::WithParamInterface<RealApplication> {
protected:
    static constexpr int tolerance = 24;  // a terminal rounds to whole characters

    /// The program under test finds what is installed on this machine for a desktop that lists all of it.
    void openPaneOfMachine() {
        const RealApplication& application = GetParam();
        if (!application.identifier.empty())
            install(application.identifier, application.name, "Exec=" + application.exec + "\n");
        openPane({{"XDG_DATA_DIRS", "/usr/share"}, {"XDG_CURRENT_DESKTOP", "XFCE"}});
    }
    void startApplication() {
        auto client = desktop().start(GetParam().command);
        ASSERT_TRUE(client) << client.error();
        client_.emplace(std::move(*client));
        const auto found = observer().findWindow(GetParam().windowTitle);
        ASSERT_TRUE(found) << found.error() << client_->logTail();
        application_ = *found;
    }
    void press(std::string_view action) {
        const auto active = Pager(observer()).activate(application_);
        ASSERT_TRUE(active) << active.error();
        keyboard().press(demoAction(action).modifiers, demoAction(action).key);
    }
    void expectMove(std::string_view action, const PixelRect& wanted) {
        press(action);
        const auto seen = observer().waitForSettledFrame(application_, wanted, tolerance);
        EXPECT_TRUE(seen && framesAgree(*seen, wanted, tolerance)) << action << ": " << seen.value_or(PixelRect{});
    }
    void chooseInChooser() {
        Pager(observer()).activate(window());
        openChooser();
        EXPECT_TRUE(bus().write(expectShown("text", "Search"), GetParam().name));
        SettingsWindowTest::press("check box", GetParam().name);
        SettingsWindowTest::press("push button", "Ignore");
        expectShown("list item", GetParam().name);
    }
    [[nodiscard]] PixelRect frame() { return observer().visibleFrame(application_).value_or(PixelRect{}); }

private:
    std::optional<ChildProcess> client_;
    xcb_window_t application_ = XCB_WINDOW_NONE;
};

TEST_P(IgnoredWindowsTest, StayFromTheNextPressOnAndMoveAgainWhenTheyAreRemoved) {
    ASSERT_NO_FATAL_FAILURE(openPaneOfMachine());
    ASSERT_NO_FATAL_FAILURE(startApplication());
    expectMove("right", {640, 0, 640, 800});

    chooseInChooser();
    const PixelRect before = frame();
    press("left");
    EXPECT_TRUE(logs(GetParam().name + " is ignored."));
    EXPECT_EQ(frame(), before);

    SettingsWindowTest::press("push button", "Remove " + GetParam().name);
    EXPECT_TRUE(areIgnored({})) << stored();
    expectMove("left", {0, 0, 640, 800});
}

INSTANTIATE_TEST_SUITE_P(
    Of, IgnoredWindowsTest,
    testing::Values(RealApplication{"AToolkitOfOneDesktop", "Settings Manager", "Settings", {"xfce4-settings-manager"}},
                    RealApplication{"ATerminal", "XTerm", "Shell", terminalWindow({.title = "Shell"})},
                    RealApplication{"AnotherToolkit", "Sketchbook", "Sketch", qtWindow({.title = "Sketch"}),
                                    "org.example.Sketchbook", qtWindow({}).front()},
                    RealApplication{"AScript", "Diary", "Today",
                                    serverSideWindow({.title = "Today", .applicationId = "org.example.Diary"}),
                                    "org.example.Diary", "python3 diary.py"}),
    [](const auto& each) { return each.param.kind; });

}  // namespace
}  // namespace velmorand::desktop

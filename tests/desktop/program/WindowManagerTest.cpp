#include "desktop/harness/TestWindows.h"
#include "desktop/program/ProgramTest.h"

namespace velmorand::desktop {
namespace {

using enum WindowManagerKind;

/// What has to work whichever window manager runs.
class WindowManagerTest : public ProgramTest {
protected:
    /// Presses the shortcut for a window that is not one of the desktop's three and expects it where the action puts it.
    void expectLandingOf(xcb_window_t window, std::string_view action) {
        const auto active = desktop().pager().activate(window);
        ASSERT_TRUE(active) << active.error();
        const auto before = desktop().observer().visibleFrame(window).value_or(PixelRect{});
        const DemoModel model(desktop().workAreas());
        const auto target = model.wanted(0, demoAction(action), desktop().fromRoot(before)).value_or(PixelRect{});

        press(action);

        const auto seen = desktop().observer().waitForSettledFrame(window, desktop().toRoot(target));
        ASSERT_TRUE(seen);
        EXPECT_TRUE(framesAgree(desktop().fromRoot(*seen), target, frameTolerance))
            << action << ": wanted " << target << ", is at " << desktop().fromRoot(*seen);
    }
};

TEST_P(WindowManagerTest, WindowsOfBothDecorationsGoWhereTheyBelong) {
    for (const DemoWindow window : {DemoWindow::serverSide, DemoWindow::clientSide}) {
        SCOPED_TRACE(nameOf(window));
        focus(window);
        expectLanding("left", window);
        expectLanding("bottomRight", window);
        expectLanding("centerThird", window);
    }
}

TEST_P(WindowManagerTest, WindowsOfOtherToolkitsGoWhereTheyBelong) {
    const std::pair<std::string_view, std::vector<std::string>> windows[]{{"Places", gtk4Window({.title = "Places"})},
                                                                          {"Picture", qtWindow({.title = "Picture"})}};
    for (const auto& [title, command] : windows) {
        SCOPED_TRACE(title);
        const auto client = desktop().test().start(command);
        ASSERT_TRUE(client) << client.error();
        const auto window = desktop().observer().findWindow(title);
        ASSERT_TRUE(window) << window.error();
        expectLandingOf(*window, "rightThird");
        expectLandingOf(*window, "topLeft");
    }
}

TEST_P(WindowManagerTest, OneThatIsStartedAnewIsTakenUp) {
    const auto replaced = desktop().test().replaceWindowManager({.kind = GetParam(), .isCompositing = true});
    ASSERT_TRUE(replaced) << replaced.error();

    focus(DemoWindow::serverSide);
    expectLanding("right", DemoWindow::serverSide);
}

INSTANTIATE_TEST_SUITE_P(On, WindowManagerTest,
                         testing::Values(openbox, xfwm4, fluxbox, icewm, marco, i3, awesome, kwin), windowManagerName);

/// Those that have maximised windows and put them back to normal when they are asked to.
class MaximizingWindowManagerTest : public ProgramTest {};

TEST_P(MaximizingWindowManagerTest, AMaximizedWindowIsPutBackToNormalAndPlaced) {
    for (const DemoWindow window : {DemoWindow::serverSide, DemoWindow::clientSide}) {
        SCOPED_TRACE(nameOf(window));
        focus(window);
        const auto maximized = desktop().pager().maximize(desktop().idOf(window));
        ASSERT_TRUE(maximized) << maximized.error();

        expectLanding("topRight", window);

        const WindowStates states = desktop().observer().states(desktop().idOf(window));
        EXPECT_FALSE(states.maximizedHorizontally || states.maximizedVertically);
    }
}

INSTANTIATE_TEST_SUITE_P(On, MaximizingWindowManagerTest, testing::Values(openbox, xfwm4, fluxbox, icewm, marco, kwin),
                         windowManagerName);

/// awesome maximises a window for anybody, but puts it back to normal for its own keys and buttons only.
class KeepsMaximizedTest : public ProgramTest {};

TEST_P(KeepsMaximizedTest, AMaximizedWindowIsReportedAndLeftAlone) {
    focus(DemoWindow::serverSide);
    const auto window = desktop().idOf(DemoWindow::serverSide);
    const auto maximized = desktop().pager().maximize(window);
    ASSERT_TRUE(maximized) << maximized.error();
    const auto before = desktop().observer().waitForSettledFrame(window, [](const PixelRect&) { return true; });

    press("topRight");

    EXPECT_TRUE(logs("velmorand [windows] error: "));
    EXPECT_EQ(desktop().observer().visibleFrame(window), before);
    EXPECT_TRUE(desktop().observer().states(window).maximizedVertically);
}

INSTANTIATE_TEST_SUITE_P(On, KeepsMaximizedTest, testing::Values(awesome), windowManagerName);

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/program/ProgramTest.h"

#include <array>
#include <csignal>
#include <vector>

namespace velmorand::desktop {
namespace {

/// What happens to the desktop under the program's feet.
class TroubleTest : public ProgramTest {};

TEST_P(TroubleTest, WithoutAWindowManagerNothingMovesAndTheLogSaysWhatIsMissing) {
    focus(DemoWindow::serverSide);
    desktop().test().stopWindowManager();
    const auto before = desktop().frameOf(DemoWindow::serverSide);

    press("left");

    EXPECT_TRUE(logs("velmorand [windows] error: not trusted, requesting access"));
    EXPECT_TRUE(logs("velmorand [ax] error: No window manager that follows the desktop's conventions (EWMH) is "
                     "running."));
    EXPECT_TRUE(logs("velmorand [windows] error: Accessibility permission is required."));
    EXPECT_EQ(desktop().frameOf(DemoWindow::serverSide), before);
}

TEST_P(TroubleTest, AFrozenWindowManagerIsReportedInTimeAndUsedAgainWhenItGoesOn) {
    focus(DemoWindow::serverSide);
    const PixelRect target = wanted("left", DemoWindow::serverSide);
    desktop().test().windowManager()->freeze();

    press("left");

    EXPECT_TRUE(logs("velmorand [ax] error: set size failed AXError -25204"));
    EXPECT_TRUE(logs("velmorand [windows] error: The target app did not respond to Accessibility requests."));
    const auto second = desktop().program().logSize();
    press("right");
    EXPECT_TRUE(logs("velmorand [ax] error: set position failed AXError -25204", second))
        << "nothing more may be sent while an answer is owed";

    desktop().test().windowManager()->thaw();
    EXPECT_TRUE(framesAgree(settledFrame(DemoWindow::serverSide, target), target, frameTolerance))
        << "the write that was queued lands late";
    expectLanding("bottom", DemoWindow::serverSide);
}

TEST_P(TroubleTest, AFrozenApplicationIsMovedAllTheSame) {
    focus(DemoWindow::serverSide);
    desktop().client(DemoWindow::serverSide).freeze();

    expectLanding("left", DemoWindow::serverSide);

    desktop().client(DemoWindow::serverSide).thaw();
    expectLanding("top", DemoWindow::serverSide);
}

TEST_P(TroubleTest, MalformedPropertiesOfOneWindowDoNotHarmTheOthers) {
    HostileClient hostile = hostileClient();
    const auto victim = desktop().idOf(DemoWindow::terminal);
    const std::array<std::uint8_t, 5> invalidText{0xff, 0xfe, 0xc0, 0x80, 0x00};
    const std::array<std::uint32_t, 4> hugeExtents{4294967295U, 2147483648U, 70000, 1};
    const std::vector<std::uint32_t> manyNumbers(5000, 0xdeadbeefU);
    hostile.setNumbers(victim, "_GTK_FRAME_EXTENTS", "CARDINAL", hugeExtents);
    hostile.setNumbers(victim, "_NET_WM_PID", "CARDINAL", manyNumbers);
    hostile.setNumbers(victim, "_NET_WM_STRUT_PARTIAL", "ATOM", manyNumbers);
    hostile.setProperty(victim, "_NET_WM_STRUT", "CARDINAL", 8, invalidText);
    hostile.setNumbers(victim, "_NET_WM_WINDOW_TYPE", "CARDINAL", manyNumbers);
    hostile.setNumbers(victim, "WM_NORMAL_HINTS", "ATOM", hugeExtents);
    hostile.setProperty(victim, "WM_CLASS", "STRING", 8, invalidText);
    hostile.setProperty(victim, "_GTK_APPLICATION_ID", "UTF8_STRING", 8, invalidText);
    hostile.setProperty(victim, "_NET_WM_DESKTOP", "STRING", 8, invalidText);

    focus(DemoWindow::terminal);
    press("left");
    EXPECT_TRUE(logs("perform left"));
    focus(DemoWindow::serverSide);
    expectLanding("right", DemoWindow::serverSide);
    focus(DemoWindow::clientSide);
    expectLanding("topLeft", DemoWindow::clientSide);
    EXPECT_TRUE(desktop().program().isRunning());
}

TEST_P(TroubleTest, AWindowThatIsGoneIsForgotten) {
    focus(DemoWindow::serverSide);
    expectLanding("left", DemoWindow::serverSide);
    hostileClient().destroyWindow(desktop().idOf(DemoWindow::serverSide));

    focus(DemoWindow::clientSide);
    expectLanding("right", DemoWindow::clientSide);
    EXPECT_TRUE(desktop().program().isRunning());
}

TEST_P(TroubleTest, AnApplicationKilledWhileItsWindowIsPlacedIsReportedAndForgotten) {
    focus(DemoWindow::serverSide);
    desktop().test().windowManager()->freeze();
    press("left");
    ASSERT_TRUE(logs("velmorand [windows] info: target frame"));

    desktop().client(DemoWindow::serverSide).sendSignal(SIGKILL);

    EXPECT_TRUE(logs("velmorand [windows] error: "));
    desktop().test().windowManager()->thaw();
    focus(DemoWindow::clientSide);
    expectLanding("right", DemoWindow::clientSide);
}

TEST_P(TroubleTest, ADisplayMoveNeedsASecondDisplay) {
    focus(DemoWindow::serverSide);
    const auto single = desktop().test().setMonitors({{"primary", {1280, 24, 1600, 1000}, true}});
    ASSERT_TRUE(single) << single.error();

    press("nextDisplay");

    EXPECT_TRUE(logs("velmorand [windows] error: Only one display is connected."));
}

INSTANTIATE_TEST_SUITE_P(On, TroubleTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         windowManagerName);

}  // namespace
}  // namespace velmorand::desktop

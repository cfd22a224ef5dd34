#include "desktop/harness/FrameRecorder.h"
#include "desktop/harness/SettingsManager.h"
#include "desktop/program/ProgramTest.h"
#include "platform/linux/support/XSettingsBytes.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <memory>
#include <utility>
#include <vector>

namespace velmorand::desktop {
namespace {

constexpr double longestDuration = 0.5;  // seconds, the most that the settings allow
constexpr double ticksPerSecond = 30;

/// Where all four numbers are when each has gone that part of its way.
PixelRect onTheWay(const PixelRect& start, const PixelRect& target, double progress) {
    const auto between = [progress](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * progress));
    };
    return {between(start.x, target.x), between(start.y, target.y), between(start.width, target.width),
            between(start.height, target.height)};
}

/// The built program with animated moves that take as long as they can.
class AnimationTest : public ProgramTest {
protected:
    [[nodiscard]] std::string_view storedSettings() const override {
        return R"({"enableAnimations": true, "animationDuration": 0.5})";
    }

    void record(DemoWindow window) {
        auto recorder = FrameRecorder::attach(desktop().test().displayName(), desktop().idOf(window));
        ASSERT_TRUE(recorder) << recorder.error();
        recorder_ = std::make_unique<FrameRecorder>(std::move(*recorder));
    }

    /// Returns when the window has got that many requests.
    [[nodiscard]] bool isOnItsWay(std::size_t requests = 3) {
        return recorder_->recordUntil([&] { return recorder_->requests().size() >= requests; });
    }

    /// Returns when the window has not got another request for longer than a tick lasts, by far.
    void recordTheRest() {
        constexpr std::chrono::milliseconds longEnough{400};
        std::size_t seen = recorder_->requests().size();
        auto since = std::chrono::steady_clock::now();
        EXPECT_TRUE(recorder_->recordUntil([&] {
            const auto now = std::chrono::steady_clock::now();
            if (recorder_->requests().size() != std::exchange(seen, recorder_->requests().size())) since = now;
            return now - since > longEnough;
        })) << "the moving does not end";
    }

    /// What was asked for, as the user sees frames; the window has the decorations that it has now.
    [[nodiscard]] std::vector<PixelRect> requestedFrames(DemoWindow window) {
        const auto id = desktop().idOf(window);
        const PixelRect visible = desktop().observer().visibleFrame(id).value_or(PixelRect{});
        const PixelRect client = desktop().observer().clientRect(id).value_or(PixelRect{});
        std::vector<PixelRect> frames;
        for (const FrameRequest& request : recorder_->requests()) {
            const PixelRect& asked = request.clientRect;
            frames.push_back(desktop().fromRoot({asked.x + visible.x - client.x, asked.y + visible.y - client.y,
                                                 asked.width + visible.width - client.width,
                                                 asked.height + visible.height - client.height}));
        }
        return frames;
    }

    /// Expects an ever shorter way to the target on which all four numbers keep pace, and its end exactly there.
    static void expectStraightWay(const std::vector<PixelRect>& frames, const PixelRect& start,
                                  const PixelRect& target) {
        double before = 0;
        for (const PixelRect& frame : frames) {
            const double progress = progressOf(frame, start, target);
            EXPECT_GT(progress, before) << frame << " after the one before";
            EXPECT_TRUE(framesAgree(frame, onTheWay(start, target, progress), 2))
                << frame << " is " << progress << " of the way";
            before = progress;
        }
        ASSERT_FALSE(frames.empty());
        EXPECT_EQ(frames.back(), target);
    }

    [[nodiscard]] FrameRecorder& recorder() { return *recorder_; }

private:
    std::unique_ptr<FrameRecorder> recorder_;
};

TEST_P(AnimationTest, EveryTickIsOneRequestForTheWholeFrameAndTheLastIsExactlyTheTarget) {
    for (const DemoWindow window : {DemoWindow::serverSide, DemoWindow::clientSide}) {
        SCOPED_TRACE(nameOf(window));
        focus(window);
        const PixelRect start = desktop().frameOf(window).value_or(PixelRect{});
        const PixelRect target = wanted("right", window);
        record(window);

        press("right");
        ASSERT_TRUE(isOnItsWay());
        recordTheRest();

        EXPECT_EQ(settledFrame(window, target), target);
        EXPECT_TRUE(std::ranges::all_of(recorder().requests(), &FrameRequest::isWhole));
        EXPECT_LE(recorder().requests().size(), longestDuration * ticksPerSecond + 1);
        expectStraightWay(requestedFrames(window), start, target);
    }
}

/// A move is rightly cut short when the window manager is slow, as it can be where it shares a busy machine with other
/// tests. Putting a window back to normal is no reason for that: without one the move goes all the way.
TEST_P(AnimationTest, AMaximizedWindowThatDrawsItsOwnShadowGoesAllTheWay) {
    constexpr DemoWindow window = DemoWindow::clientSide;
    bool isCutShort = true;
    for (const std::string_view action : {"topLeft", "topRight", "bottomLeft", "bottomRight"}) {
        focus(window);
        const auto maximized = desktop().pager().maximize(desktop().idOf(window));
        ASSERT_TRUE(maximized) << maximized.error();
        const PixelRect target = wanted(action, window);
        record(window);
        const int before = count("animation cut short");

        press(action);
        ASSERT_TRUE(isOnItsWay(1));
        recordTheRest();

        EXPECT_TRUE(framesAgree(settledFrame(window, target), target, frameTolerance));
        EXPECT_EQ(requestedFrames(window).back(), target);
        const WindowStates states = desktop().observer().states(desktop().idOf(window));
        EXPECT_FALSE(states.maximizedHorizontally || states.maximizedVertically);
        isCutShort = count("animation cut short") > before;
        if (!isCutShort) break;
    }
    EXPECT_FALSE(isCutShort);
}

TEST_P(AnimationTest, ASecondPressOnTheWayCountsFromTheFirstTargetAndRestoreGoesBackToTheStart) {
    constexpr DemoWindow window = DemoWindow::serverSide;
    focus(window);
    const PixelRect start = desktop().frameOf(window).value_or(PixelRect{});
    const PixelRect onTheOtherDisplay = wanted("nextDisplay", window);
    const DemoModel model(desktop().workAreas());
    const auto halfOfIt = model.wanted(0, demoAction("left"), onTheOtherDisplay);
    ASSERT_TRUE(halfOfIt);
    record(window);

    press("nextDisplay");
    ASSERT_TRUE(isOnItsWay());
    press("left");
    EXPECT_EQ(settledFrame(window, *halfOfIt), *halfOfIt) << "it is the half of the display that it was going to";
    recordTheRest();
    EXPECT_EQ(std::ranges::count(requestedFrames(window), onTheOtherDisplay), 0) << "it never got there";

    press("restore");
    EXPECT_EQ(settledFrame(window, start), start);
}

TEST_P(AnimationTest, AWindowThatQuitsOnTheWayIsReportedOnceAndForgotten) {
    focus(DemoWindow::serverSide);
    record(DemoWindow::serverSide);
    press("right");
    ASSERT_TRUE(isOnItsWay());

    desktop().client(DemoWindow::serverSide).sendSignal(SIGKILL);

    EXPECT_TRUE(logs("velmorand [animation] error: animation aborted after repeated AX write failures"));
    EXPECT_TRUE(logs("velmorand [windows] error: Could not move the focused window (AX error -25202)."));
    focus(DemoWindow::clientSide);
    expectLanding("right", DemoWindow::clientSide);
    EXPECT_EQ(count("velmorand [windows] error: "), 1);
}

TEST_P(AnimationTest, AWindowManagerThatEndsOnTheWayIsReportedAndTheNextOneIsUsed) {
    constexpr DemoWindow window = DemoWindow::serverSide;
    focus(window);
    record(window);
    press("right");
    ASSERT_TRUE(isOnItsWay());

    desktop().test().windowManager()->sendSignal(SIGKILL);

    EXPECT_TRUE(logs("velmorand [animation] error: animation aborted after repeated AX write failures"));
    EXPECT_TRUE(logs("velmorand [windows] error: The target app did not respond to Accessibility requests."));
    const auto replaced = desktop().test().replaceWindowManager({.kind = GetParam(), .isCompositing = true});
    ASSERT_TRUE(replaced) << replaced.error();
    focus(window);
    expectLanding("top", window);
}

TEST_P(AnimationTest, ADisplayThatGoesAwayOnTheWayEndsTheMove) {
    constexpr DemoWindow window = DemoWindow::serverSide;
    focus(window);
    const PixelRect target = wanted("bottom", window);
    record(window);
    press("bottom");
    ASSERT_TRUE(isOnItsWay(1));

    const auto single = desktop().test().setMonitors({{"primary", {1280, 24, 1600, 1000}, true}});
    ASSERT_TRUE(single) << single.error();
    recordTheRest();

    EXPECT_NE(requestedFrames(window).back(), target) << "there is nothing any more where it was going";
    EXPECT_EQ(count("velmorand [windows] error: "), 0);
}

TEST_P(AnimationTest, WhereMotionIsReducedTheWindowIsThereAtOnce) {
    const SettingsManager settings(desktop().observer().connection(),
                                   XSettingsBytes().integer("Gtk/EnableAnimations", 0).bytes());
    constexpr DemoWindow window = DemoWindow::serverSide;
    focus(window);
    const PixelRect target = wanted("right", window);
    record(window);

    press("right");
    recordTheRest();

    EXPECT_EQ(settledFrame(window, target), target);
    EXPECT_EQ(requestedFrames(window), std::vector{target});
}

INSTANTIATE_TEST_SUITE_P(On, AnimationTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         windowManagerName);

}  // namespace
}  // namespace velmorand::desktop

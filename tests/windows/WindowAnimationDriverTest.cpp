#include "windows/WindowAnimationDriver.h"

#include "support/DesktopFixture.h"
#include "windows/WindowKey.h"

#include <cmath>

namespace velmorand {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Rect start{100, 100, 800, 600};
constexpr Rect target{400, 200, 500, 900};
constexpr double duration = 0.3;
constexpr Duration tick = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;

class WindowAnimationDriverTest : public DesktopFixture {
protected:
    WindowAnimationDriverTest()
        : driver(std::make_unique<WindowAnimationDriver>(axClient, platform.runLoop(), platform.log())) {
        accessibility.clearCalls();
    }

    void animate(double seconds = duration) {
        driver->animate(key, start, target, seconds,
                        [this](const AnimationCompletion& completion) { completions.push_back(completion); });
    }

    void advance(Duration span) { platform.runLoop().advance(span); }

    /// Where the window has to be after this part of the time, by the definition of a quadratic ease-out.
    static Rect frameAfter(double part) {
        const double way = 1 - (1 - part) * (1 - part);
        return {start.x + way * (target.x - start.x), start.y + way * (target.y - start.y),
                start.width + way * (target.width - start.width), start.height + way * (target.height - start.height)};
    }

    /// The frame that reached the window last, as it was asked for.
    Rect lastWritten() {
        Rect frame;
        for (const SimulatedWrite& write : writes()) {
            if (write.position) frame = {write.position->x, write.position->y, frame.width, frame.height};
            if (write.size) frame = {frame.x, frame.y, write.size->width, write.size->height};
        }
        return frame;
    }

    static testing::Matcher<const Rect&> near(const Rect& frame) {
        return testing::Truly([frame](const Rect& seen) {
            return std::abs(seen.x - frame.x) < 1e-3 && std::abs(seen.y - frame.y) < 1e-3 &&
                   std::abs(seen.width - frame.width) < 1e-3 && std::abs(seen.height - frame.height) < 1e-3;
        });
    }

    SimulatedWindowID id = openWindow(start);
    WindowKey key{elementOf(id)};
    std::vector<AnimationCompletion> completions;
    std::unique_ptr<WindowAnimationDriver> driver;
};

TEST_F(WindowAnimationDriverTest, WritesNothingBeforeTheFirstTick) {
    animate();
    advance(tick - milliseconds(1));

    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(completions, IsEmpty());
}

TEST_F(WindowAnimationDriverTest, TakesThirtyStepsASecondFastAtFirstAndGentleAtTheEnd) {
    animate(1.0);
    for (int step = 1; step < 30; ++step) {
        advance(tick);
        EXPECT_THAT(lastWritten(), near(frameAfter(step / 30.0))) << "step " << step;
    }
}

TEST_F(WindowAnimationDriverTest, MakesTwoWritesAndNoReadsAStep) {
    animate();
    advance(tick);

    EXPECT_THAT(accessibility.calls(), ElementsAre("box", "set AXPosition of window", "box", "set AXSize of window"));
}

TEST_F(WindowAnimationDriverTest, EndsExactlyAtTheTargetAndSaysSoOnce) {
    animate();
    advance(milliseconds(400));

    EXPECT_EQ(window(id).frame, target);
    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, ReadsTheFrameOnceAtTheEndOfAWindowThatArrived) {
    animate();
    advance(milliseconds(400));

    EXPECT_EQ(accessibility.count("copy AXPosition of window"), 1);
    EXPECT_EQ(accessibility.count("copy AXSize of window"), 1);
}

TEST_F(WindowAnimationDriverTest, ADurationOfNothingTakesOneStep) {
    animate(0);
    advance(tick);

    EXPECT_EQ(window(id).frame, target);
    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
}

TEST_F(WindowAnimationDriverTest, StandsStillWhileTheClockIsSetBack) {
    animate();
    platform.runLoop().setDate(platform.runLoop().date() - std::chrono::hours(1));
    advance(tick);

    EXPECT_EQ(window(id).frame, start);
    EXPECT_THAT(completions, IsEmpty());
}

TEST_F(WindowAnimationDriverTest, KnowsWhereARunningAnimationGoes) {
    EXPECT_EQ(driver->runningTarget(key), std::nullopt);
    animate();
    EXPECT_EQ(driver->runningTarget(key), target);
    advance(milliseconds(400));
    EXPECT_EQ(driver->runningTarget(key), std::nullopt);
}

TEST_F(WindowAnimationDriverTest, ACancelledAnimationStopsWhereItIs) {
    animate();
    advance(tick * 3);
    const Rect reached = window(id).frame;

    driver->cancel(key);
    advance(std::chrono::seconds(1));

    EXPECT_EQ(window(id).frame, reached);
    EXPECT_THAT(completions, ElementsAre(AnimationCancelled{}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, CancellingAWindowThatDoesNotMoveDoesNothing) {
    driver->cancel(key);
    driver->cancelAll();

    EXPECT_THAT(completions, IsEmpty());
}

TEST_F(WindowAnimationDriverTest, CancelsAllAnimations) {
    const SimulatedWindowID other = openWindow(start, "other");
    animate();
    driver->animate(WindowKey{elementOf(other)}, start, target, duration,
                    [this](const AnimationCompletion& completion) { completions.push_back(completion); });

    driver->cancelAll();

    EXPECT_THAT(completions, ElementsAre(AnimationCancelled{}, AnimationCancelled{}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, AnimatesSeveralWindowsAtOnce) {
    const SimulatedWindowID other = openWindow(start, "other");
    animate();
    driver->animate(WindowKey{elementOf(other)}, start, {0, 0, 300, 300}, duration, {});

    advance(milliseconds(400));

    EXPECT_EQ(window(id).frame, target);
    EXPECT_EQ(window(other).frame, (Rect{0, 0, 300, 300}));
}

TEST_F(WindowAnimationDriverTest, TwoFailedWritesAndASuccessStartTheCountAnew) {
    animate(1.0);
    window(id).positionWriteError = AXError::cannotComplete;
    advance(tick * 2);
    window(id).positionWriteError.reset();
    advance(tick);
    window(id).positionWriteError = AXError::cannotComplete;
    advance(tick * 2);
    EXPECT_THAT(completions, IsEmpty());
    window(id).positionWriteError.reset();

    advance(std::chrono::seconds(1));

    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
}

TEST_F(WindowAnimationDriverTest, TheThirdFailedWriteInARowEndsIt) {
    animate();
    window(id).sizeWriteError = AXError::attributeUnsupported;
    clearRecords();

    advance(tick * 3);

    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"Could not resize the focused window (AX error -25205)."}));
    EXPECT_THAT(logLines("animation"), ElementsAre(LogLine{LogLevel::error, "animation",
                                                           "animation aborted after repeated AX write failures"}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, AFailureOfAnEarlierAnimationDoesNotCount) {
    window(id).positionWriteError = AXError::cannotComplete;
    animate(1.0);
    advance(tick * 2);
    driver->cancel(key);
    completions.clear();

    animate(1.0);
    advance(tick * 2);

    EXPECT_THAT(completions, IsEmpty());
}

TEST_F(WindowAnimationDriverTest, AWindowThatTakesLongForAFrameGoesToItsTargetAtOnce) {
    window(id).writeSeconds = 0.03;
    animate(1.0);
    clearRecords();

    advance(tick);

    EXPECT_EQ(window(id).frame, target);
    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
    EXPECT_THAT(logLines("animation"),
                ElementsAre(LogLine{LogLevel::info, "animation", "animation cut short, target app responding slowly"}));
}

TEST_F(WindowAnimationDriverTest, FiftyMillisecondsForAFrameAreNotYetSlow) {
    window(id).writeSeconds = 0.025;
    animate(1.0);

    advance(tick);

    EXPECT_THAT(completions, IsEmpty());
    EXPECT_THAT(logLines("animation"), IsEmpty());
}

TEST_F(WindowAnimationDriverTest, WritesOnceMoreWhenTheWindowIsNotAtItsTarget) {
    window(id).minimumSize = {600, 1};
    animate(0);

    advance(tick);

    EXPECT_EQ(accessibility.count("set AXSize of window"), 3) << "the step, the snap and one more";
    EXPECT_EQ(accessibility.count("copy AXSize of window"), 2);
    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"The window did not move to the requested position."}));
}

TEST_F(WindowAnimationDriverTest, AFrameThatCannotBeReadCountsAsNotArrived) {
    window(id).readErrors["AXPosition"] = AXError::cannotComplete;
    animate(0);

    advance(tick);

    EXPECT_EQ(accessibility.count("set AXSize of window"), 3);
    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"The window did not move to the requested position."}));
}

TEST_F(WindowAnimationDriverTest, AFrameTwoPointsOffHasArrived) {
    window(id).minimumSize = {502, 1};
    animate(0);

    advance(tick);

    EXPECT_EQ(accessibility.count("set AXSize of window"), 2);
    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
}

TEST_F(WindowAnimationDriverTest, AFailedWriteAtTheEndIsTold) {
    accessibility.interruptBefore("set AXPosition of window", 2,
                                  [this] { window(id).positionWriteError = AXError::cannotComplete; });
    animate(0);

    advance(tick);

    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"The target app did not respond to Accessibility requests."}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, AFailedSecondTryAtTheEndIsTold) {
    window(id).minimumSize = {600, 1};
    accessibility.interruptBefore("set AXPosition of window", 3,
                                  [this] { window(id).positionWriteError = AXError::cannotComplete; });
    animate(0);

    advance(tick);

    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"The target app did not respond to Accessibility requests."}));
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(WindowAnimationDriverTest, AnAnimationOfAMovingWindowBeginsOnceTheFirstIsCancelled) {
    std::vector<std::string> order;
    driver->animate(key, start, target, duration, [&](const AnimationCompletion& completion) {
        order.emplace_back(std::holds_alternative<AnimationCancelled>(completion) ? "cancelled" : "ended otherwise");
        EXPECT_EQ(driver->runningTarget(key), std::nullopt);
        EXPECT_TRUE(platform.runLoop().isIdle()) << "its timer runs no more";
    });
    advance(tick);

    driver->animate(key, start, start, 0, [&](const AnimationCompletion&) { order.emplace_back("second"); });
    advance(tick * 2);

    EXPECT_THAT(order, ElementsAre("cancelled", "second"));
}

TEST_F(WindowAnimationDriverTest, AWindowThatClosesOnItsWayFails) {
    animate();
    advance(tick);
    desktop().closeWindow(id);

    advance(tick * 3);

    EXPECT_THAT(completions, ElementsAre(AnimationFailed{"Could not move the focused window (AX error -25202)."}));
}

TEST_F(WindowAnimationDriverTest, ACompletionMayStartTheNextAnimation) {
    driver->animate(key, start, target, 0, [this](const AnimationCompletion&) { animate(0); });

    advance(tick);
    EXPECT_EQ(driver->runningTarget(key), target);
    advance(tick);

    EXPECT_THAT(completions, ElementsAre(AnimationLanded{}));
}

TEST_F(WindowAnimationDriverTest, NothingHappensOnceTheDriverIsGone) {
    animate();
    driver.reset();

    advance(std::chrono::seconds(1));

    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_THAT(completions, IsEmpty());
}

TEST(EasedOut, IsQuadratic) {
    EXPECT_EQ(easedOut(0), 0);
    EXPECT_EQ(easedOut(0.5), 0.75);
    EXPECT_EQ(easedOut(1), 1);
}

}  // namespace
}  // namespace velmorand

#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class SimulatedRunLoopTest : public testing::Test {
protected:
    [[nodiscard]] RunLoop::Task note(const std::string& name) {
        return [this, name] { ran.push_back(name); };
    }
    /// Notes how long after the start it ran.
    [[nodiscard]] RunLoop::Task noteTime() {
        return [this] { times.push_back(runLoop.now() - start); };
    }

    std::vector<std::string> ran;
    std::vector<Duration> times;
    SimulatedRunLoop runLoop;
    MonotonicTime start = runLoop.now();
};

TEST_F(SimulatedRunLoopTest, RunsPostedTasksInTheirOrderAndNotBeforeTheTurn) {
    runLoop.post(note("a"));
    runLoop.post(note("b"));
    EXPECT_THAT(ran, IsEmpty());

    runLoop.runPending();
    EXPECT_THAT(ran, ElementsAre("a", "b"));
    EXPECT_EQ(runLoop.now(), start);
}

TEST_F(SimulatedRunLoopTest, RunsWhatATaskPostsAfterEverythingPostedBefore) {
    runLoop.post([this] { runLoop.post(note("inner")); });
    runLoop.post(note("b"));

    runLoop.runPending();

    EXPECT_THAT(ran, ElementsAre("b", "inner"));
}

TEST_F(SimulatedRunLoopTest, FiresADelayedTaskOnceAtItsTime) {
    const RunLoop::Timer timer = runLoop.after(250ms, noteTime());

    runLoop.advance(249ms);
    EXPECT_THAT(times, IsEmpty());

    runLoop.advance(10s);
    EXPECT_THAT(times, ElementsAre(250ms));
}

TEST_F(SimulatedRunLoopTest, FiresATimerThatIsDueExactlyAtTheEndOfTheSpan) {
    const RunLoop::Timer timer = runLoop.after(250ms, note("a"));

    runLoop.advance(250ms);

    EXPECT_THAT(ran, ElementsAre("a"));
}

TEST_F(SimulatedRunLoopTest, FiresTimersInTheOrderOfTheirTimes) {
    const RunLoop::Timer late = runLoop.after(30ms, note("late"));
    const RunLoop::Timer early = runLoop.after(10ms, note("early"));

    runLoop.advance(1s);

    EXPECT_THAT(ran, ElementsAre("early", "late"));
}

TEST_F(SimulatedRunLoopTest, FiresTimersOfOneInstantInTheOrderInWhichTheyWereMade) {
    const RunLoop::Timer a = runLoop.after(10ms, note("a"));
    const RunLoop::Timer b = runLoop.after(10ms, note("b"));
    const RunLoop::Timer c = runLoop.after(10ms, note("c"));

    runLoop.advance(10ms);

    EXPECT_THAT(ran, ElementsAre("a", "b", "c"));
}

TEST_F(SimulatedRunLoopTest, RunsWhatATimerPostsBeforeTheNextTimer) {
    const RunLoop::Timer a = runLoop.after(10ms, [this] { runLoop.post(note("posted")); });
    const RunLoop::Timer b = runLoop.after(10ms, note("b"));

    runLoop.advance(10ms);

    EXPECT_THAT(ran, ElementsAre("posted", "b"));
}

TEST_F(SimulatedRunLoopTest, FiresARepeatedTaskAtEveryMultipleOfItsInterval) {
    const RunLoop::Timer timer = runLoop.every(100ms, noteTime());

    runLoop.advance(350ms);

    EXPECT_THAT(times, ElementsAre(100ms, 200ms, 300ms));
    EXPECT_EQ(runLoop.now() - start, Duration(350ms));
}

TEST_F(SimulatedRunLoopTest, RunsALateTickOnceAndSkipsTheMissedOnes) {
    const RunLoop::Timer timer = runLoop.every(100ms, noteTime());

    runLoop.block(350ms);
    runLoop.advance(200ms);

    EXPECT_THAT(times, ElementsAre(350ms, 400ms, 500ms));
}

TEST_F(SimulatedRunLoopTest, ATickThatBlocksForLongerThanItsIntervalSkipsTicks) {
    const RunLoop::Timer timer = runLoop.every(100ms, [this] {
        times.push_back(runLoop.now() - start);
        runLoop.block(250ms);
    });

    runLoop.advance(650ms);

    // At 100; late at 350 for 200 and 300; late at 600 for 400 and 500.
    EXPECT_THAT(times, ElementsAre(100ms, 350ms, 600ms));
}

TEST_F(SimulatedRunLoopTest, ACancelledTimerNeverFires) {
    RunLoop::Timer once = runLoop.after(10ms, note("once"));
    RunLoop::Timer repeated = runLoop.every(10ms, note("repeated"));

    once.cancel();
    repeated.cancel();
    runLoop.advance(1s);

    EXPECT_THAT(ran, IsEmpty());
    EXPECT_EQ(runLoop.timerCount(), 0U);
}

TEST_F(SimulatedRunLoopTest, ATimerEndsWhenItDies) {
    { const RunLoop::Timer timer = runLoop.after(10ms, note("a")); }
    runLoop.advance(1s);

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(SimulatedRunLoopTest, ATimerMayBeCancelledInItsOwnTask) {
    RunLoop::Timer timer;
    timer = runLoop.every(10ms, [&] {
        ran.emplace_back("tick");
        timer.cancel();
    });

    runLoop.advance(1s);

    EXPECT_THAT(ran, ElementsAre("tick"));
    EXPECT_TRUE(runLoop.isIdle());
}

TEST_F(SimulatedRunLoopTest, ATimerMayCancelAnotherThatIsDueAtTheSameInstant) {
    RunLoop::Timer second;
    const RunLoop::Timer first = runLoop.after(10ms, [&] { second.cancel(); });
    second = runLoop.after(10ms, note("second"));

    runLoop.advance(1s);

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(SimulatedRunLoopTest, ATimerMayOutliveTheLoop) {
    auto shortLived = std::make_unique<SimulatedRunLoop>();
    RunLoop::Timer timer = shortLived->after(10ms, note("a"));

    shortLived.reset();
    timer.cancel();

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(SimulatedRunLoopTest, BothClocksRunWithTheSimulatedTime) {
    const Date startDate = runLoop.date();

    runLoop.advance(2s);
    runLoop.block(500ms);

    EXPECT_EQ(runLoop.now() - start, Duration(2500ms));
    EXPECT_EQ(runLoop.date() - startDate, Duration(2500ms));
}

TEST_F(SimulatedRunLoopTest, TheMonotonicClockDoesNotNoticeThatTheDateIsSet) {
    runLoop.setDate(Date{1h});

    EXPECT_EQ(runLoop.date(), Date{1h});
    EXPECT_EQ(runLoop.now(), start);
}

TEST_F(SimulatedRunLoopTest, IsIdleWithoutTasksAndTimers) {
    EXPECT_TRUE(runLoop.isIdle());

    runLoop.post(note("a"));
    EXPECT_FALSE(runLoop.isIdle());
    runLoop.runPending();
    EXPECT_TRUE(runLoop.isIdle());

    const RunLoop::Timer timer = runLoop.after(10ms, note("b"));
    EXPECT_FALSE(runLoop.isIdle());
    runLoop.advance(10ms);
    EXPECT_TRUE(runLoop.isIdle());
}

TEST_F(SimulatedRunLoopTest, TheThreadThatMadeItIsTheMainThread) {
    bool elsewhere = true;
    std::thread([&] { elsewhere = runLoop.isMainThread(); }).join();

    EXPECT_TRUE(runLoop.isMainThread());
    EXPECT_FALSE(elsewhere);
}

}  // namespace
}  // namespace velmorand

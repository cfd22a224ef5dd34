#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace velmorand {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(RunLoopContract, RunsPostedTasksLaterAndInTheirOrder) {
    std::vector<int> ran;
    runLoop().post([&] { ran.push_back(1); });
    runLoop().post([&] {
        ran.push_back(2);
        runLoop().post([&] { ran.push_back(4); });
    });
    runLoop().post([&] { ran.push_back(3); });
    EXPECT_THAT(ran, IsEmpty());

    EXPECT_TRUE(desktop->runUntil([&] { return ran.size() == 4; }, deadline));
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST_P(RunLoopContract, RunsOnTheMainThreadWhatAnotherThreadPosts) {
    std::vector<bool> onMainThread;
    std::thread([&] { runLoop().post([&] { onMainThread.push_back(runLoop().isMainThread()); }); }).join();

    EXPECT_TRUE(desktop->runUntil([&] { return !onMainThread.empty(); }, deadline));
    EXPECT_THAT(onMainThread, ElementsAre(true));
}

TEST_P(RunLoopContract, KnowsTheMainThread) {
    bool elsewhere = true;
    std::thread([&] { elsewhere = runLoop().isMainThread(); }).join();

    EXPECT_TRUE(runLoop().isMainThread());
    EXPECT_FALSE(elsewhere);
}

TEST_P(RunLoopContract, RunsADelayedTaskOnceAndNotTooEarly) {
    int runs = 0;
    const MonotonicTime start = runLoop().now();
    MonotonicTime ranAt{};
    const RunLoop::Timer timer = runLoop().after(40ms, [&] {
        ++runs;
        ranAt = runLoop().now();
    });

    EXPECT_TRUE(desktop->runUntil([&] { return runs > 0; }, deadline));
    EXPECT_GE(ranAt - start, 40ms);

    EXPECT_FALSE(desktop->runUntil([&] { return runs > 1; }, patience));
}

TEST_P(RunLoopContract, RunsTheEarlierOfTwoDelayedTasksFirst) {
    std::vector<int> ran;
    const RunLoop::Timer late = runLoop().after(80ms, [&] { ran.push_back(2); });
    const RunLoop::Timer early = runLoop().after(20ms, [&] { ran.push_back(1); });

    EXPECT_TRUE(desktop->runUntil([&] { return ran.size() == 2; }, deadline));
    EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_P(RunLoopContract, ADelayOfNothingStillRunsLater) {
    int runs = 0;
    const RunLoop::Timer timer = runLoop().after(0ms, [&] { ++runs; });
    EXPECT_EQ(runs, 0);

    EXPECT_TRUE(desktop->runUntil([&] { return runs == 1; }, deadline));
}

TEST_P(RunLoopContract, ACancelledTimerNeverFires) {
    int runs = 0;
    RunLoop::Timer once = runLoop().after(20ms, [&] { ++runs; });
    RunLoop::Timer repeated = runLoop().every(20ms, [&] { ++runs; });

    once.cancel();
    repeated.cancel();

    EXPECT_FALSE(desktop->runUntil([&] { return runs > 0; }, patience));
}

TEST_P(RunLoopContract, ATimerThatDiesNeverFires) {
    int runs = 0;
    {
        const RunLoop::Timer timer = runLoop().after(20ms, [&] { ++runs; });
    }

    EXPECT_FALSE(desktop->runUntil([&] { return runs > 0; }, patience));
}

TEST_P(RunLoopContract, ATimerThatIsDueButCancelledBeforeItsTurnNeverFires) {
    int runs = 0;
    RunLoop::Timer timer = runLoop().after(20ms, [&] { ++runs; });

    desktop->keepMainThreadBusy(60ms);
    timer.cancel();

    EXPECT_FALSE(desktop->runUntil([&] { return runs > 0; }, patience));
}

TEST_P(RunLoopContract, RepeatsATaskAtMultiplesOfItsInterval) {
    std::vector<Duration> times;
    const MonotonicTime start = runLoop().now();
    const RunLoop::Timer timer = runLoop().every(50ms, [&] { times.push_back(runLoop().now() - start); });

    EXPECT_TRUE(desktop->runUntil([&] { return times.size() == 3; }, deadline));
    EXPECT_GE(times[0], 50ms);
    EXPECT_GE(times[1], 100ms);
    EXPECT_GE(times[2], 150ms);
}

TEST_P(RunLoopContract, RunsALateTickOnceAndSkipsTheMissedOnes) {
    int ticks = 0;
    const MonotonicTime start = runLoop().now();
    const RunLoop::Timer timer = runLoop().every(100ms, [&] { ++ticks; });

    desktop->keepMainThreadBusy(550ms);
    EXPECT_TRUE(desktop->runUntil([&] { return ticks >= 2; }, deadline));

    // One late tick for the five that were missed; the next is the multiple after it.
    EXPECT_EQ(ticks, 2);
    EXPECT_GE(runLoop().now() - start, 600ms);
}

TEST_P(RunLoopContract, ATimerMayBeCancelledInItsOwnTask) {
    int ticks = 0;
    RunLoop::Timer timer;
    timer = runLoop().every(20ms, [&] {
        ++ticks;
        timer.cancel();
    });

    EXPECT_TRUE(desktop->runUntil([&] { return ticks > 0; }, deadline));
    EXPECT_FALSE(desktop->runUntil([&] { return ticks > 1; }, patience));
}

TEST_P(RunLoopContract, BothClocksGoOnWhileTheMainThreadIsBusy) {
    const MonotonicTime start = runLoop().now();
    const Date startDate = runLoop().date();

    desktop->keepMainThreadBusy(30ms);

    EXPECT_GE(runLoop().now() - start, 30ms);
    EXPECT_GT(runLoop().date(), startDate);
}

}  // namespace velmorand

#include "platform/linux/QtRunLoop.h"

#include "platform/linux/support/QtFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;

class QtRunLoopTest : public QtFixture {
protected:
    [[nodiscard]] RunLoop::Task note(const std::string& name) {
        return [this, name] { ran.push_back(name); };
    }
    /// Notes how long after the start it ran.
    [[nodiscard]] RunLoop::Task noteTime() {
        return [this] { times.push_back(runLoop.now() - start); };
    }
    /// Keeps the main thread busy, as a call that blocks would.
    void blockUntil(MonotonicTime end) const {
        while (runLoop.now() < end) {}
    }

    std::vector<std::string> ran;
    std::vector<Duration> times;
    MonotonicTime start = runLoop.now();
};

TEST_F(QtRunLoopTest, RunsPostedTasksInTheirOrderAndNotBeforeTheTurn) {
    runLoop.post(note("a"));
    runLoop.post(note("b"));
    EXPECT_THAT(ran, IsEmpty());

    runPosted();
    EXPECT_THAT(ran, ElementsAre("a", "b"));
}

TEST_F(QtRunLoopTest, RunsWhatATaskPostsAfterEverythingPostedBefore) {
    runLoop.post([this] { runLoop.post(note("inner")); });
    runLoop.post(note("b"));

    runPosted();
    runPosted();

    EXPECT_THAT(ran, ElementsAre("b", "inner"));
}

TEST_F(QtRunLoopTest, TakesTasksThatCanOnlyBeMoved) {
    runLoop.post([this, owned = std::make_unique<std::string>("owned")] { ran.push_back(*owned); });

    runPosted();

    EXPECT_THAT(ran, ElementsAre("owned"));
}

TEST_F(QtRunLoopTest, RunsTasksOfOtherThreadsOnTheMainOne) {
    bool onMainThread = false;
    std::thread([&] { runLoop.post([&] { onMainThread = runLoop.isMainThread(); }); }).join();

    EXPECT_TRUE(runUntil([&] { return onMainThread; }));
}

TEST_F(QtRunLoopTest, WakesUpForATaskThatAnotherThreadPostsWhileItSleeps) {
    bool asleep = false;
    bool ranIt = false;
    std::thread other;
    const Subscription sleeping = runLoop.beforeSleeping([&] {
        if (std::exchange(asleep, true)) return;
        other = std::thread([&] { runLoop.post([&] { ranIt = true; }); });
    });

    EXPECT_TRUE(runUntil([&] { return ranIt; }));
    other.join();
}

TEST_F(QtRunLoopTest, KnowsTheMainThread) {
    bool otherIsMain = true;
    std::thread([&] { otherIsMain = runLoop.isMainThread(); }).join();

    EXPECT_TRUE(runLoop.isMainThread());
    EXPECT_FALSE(otherIsMain);
}

TEST_F(QtRunLoopTest, ForgetsPostedTasksWhenItDies) {
    auto loop = std::make_unique<QtRunLoop>();
    loop->post(note("posted"));
    loop.reset();

    runPosted();

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(QtRunLoopTest, FiresADelayedTaskOnceAndNotEarly) {
    const RunLoop::Timer timer = runLoop.after(20ms, noteTime());
    const RunLoop::Timer later = runLoop.after(60ms, note("later"));

    EXPECT_TRUE(runUntil([this] { return !ran.empty(); }));
    EXPECT_THAT(times, ElementsAre(Ge(20ms)));
}

TEST_F(QtRunLoopTest, RoundsADelayUpSoThatItIsNotEarly) {
    const RunLoop::Timer timer = runLoop.after(1500us, noteTime());

    EXPECT_TRUE(runUntil([this] { return !times.empty(); }));
    EXPECT_THAT(times, ElementsAre(Ge(1500us)));
}

TEST_F(QtRunLoopTest, FiresDelayedTasksInTheOrderOfTheirTimes) {
    const RunLoop::Timer last = runLoop.after(40ms, note("last"));
    const RunLoop::Timer first = runLoop.after(5ms, note("first"));

    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
    EXPECT_THAT(ran, ElementsAre("first", "last"));
}

TEST_F(QtRunLoopTest, FiresATaskWithoutOrWithANegativeDelayInALaterTurn) {
    const RunLoop::Timer none = runLoop.after(0ms, note("none"));
    const RunLoop::Timer negative = runLoop.after(-1s, note("negative"));
    EXPECT_THAT(ran, IsEmpty());

    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
}

TEST_F(QtRunLoopTest, NeverFiresACancelledTimer) {
    RunLoop::Timer cancelled = runLoop.after(1ms, note("cancelled"));
    cancelled.cancel();
    { const RunLoop::Timer dropped = runLoop.after(1ms, note("dropped")); }
    RunLoop::Timer ticking = runLoop.every(1ms, note("ticking"));
    ticking.cancel();
    const RunLoop::Timer end = runLoop.after(20ms, note("end"));

    EXPECT_TRUE(runUntil([this] { return !ran.empty(); }));
    EXPECT_THAT(ran, ElementsAre("end"));
}

TEST_F(QtRunLoopTest, NeverFiresATimerThatIsCancelledWhenItIsDueAlready) {
    RunLoop::Timer due = runLoop.after(1ms, note("due"));
    blockUntil(start + 5ms);
    due.cancel();

    runPosted();

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(QtRunLoopTest, LetsADelayedTaskEndItsOwnTimer) {
    RunLoop::Timer timer;
    timer = runLoop.after(1ms, [&, kept = std::string("still there")] {
        timer = {};
        ran.push_back(kept);
    });

    EXPECT_TRUE(runUntil([this] { return !ran.empty(); }));
    EXPECT_THAT(ran, ElementsAre("still there"));
}

TEST_F(QtRunLoopTest, LetsATickEndItsOwnTimer) {
    RunLoop::Timer timer;
    timer = runLoop.every(1ms, [&, kept = std::string("still there")] {
        timer = {};
        ran.push_back(kept);
    });
    const RunLoop::Timer end = runLoop.after(20ms, note("end"));

    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
    EXPECT_THAT(ran, ElementsAre("still there", "end"));
}

TEST_F(QtRunLoopTest, TicksAtMultiplesOfTheIntervalAndNotEarly) {
    const RunLoop::Timer timer = runLoop.every(10ms, noteTime());

    EXPECT_TRUE(runUntil([this] { return times.size() >= 3; }));
    EXPECT_THAT(times[0], Ge(10ms));
    EXPECT_THAT(times[1], Ge(20ms));
    EXPECT_THAT(times[2], Ge(30ms));
}

TEST_F(QtRunLoopTest, RunsATickThatComesLateOnceAndSkipsThoseThatWereMissed) {
    const RunLoop::Timer timer = runLoop.every(20ms, noteTime());
    blockUntil(start + 70ms);  // past the ticks at 20, 40 and 60 ms

    EXPECT_TRUE(runUntil([this] { return times.size() >= 2; }));
    EXPECT_THAT(times[0], Ge(70ms));
    EXPECT_THAT(times[1], Ge(80ms));
}

TEST_F(QtRunLoopTest, SkipsTheTicksThatPassDuringATick) {
    const RunLoop::Timer timer = runLoop.every(20ms, [this] {
        times.push_back(runLoop.now() - start);
        blockUntil(start + times.front() + 50ms);
    });

    EXPECT_TRUE(runUntil([this] { return times.size() >= 2; }));
    EXPECT_THAT(times[1], Ge(times[0] + 50ms));
}

TEST_F(QtRunLoopTest, SurvivesAnIntervalOfZero) {
    const RunLoop::Timer timer = runLoop.every(0ms, noteTime());

    EXPECT_TRUE(runUntil([this] { return times.size() >= 3; }));
}

TEST_F(QtRunLoopTest, TellsTheTimeOfTheSystemsClocks) {
    const Date before = std::chrono::system_clock::now();
    const Date told = runLoop.date();

    EXPECT_GE(told, before);
    EXPECT_LE(told, std::chrono::system_clock::now());
    EXPECT_LE(start, std::chrono::steady_clock::now());
    EXPECT_GT(start, MonotonicTime());
}

TEST_F(QtRunLoopTest, CallsBeforeEachSleepUntilTheSubscriptionEnds) {
    int sleeps = 0;
    Subscription sleeping = runLoop.beforeSleeping([&sleeps] { ++sleeps; });
    const RunLoop::Timer first = runLoop.after(1ms, note("first"));
    EXPECT_TRUE(runUntil([this] { return ran.size() == 1; }));
    EXPECT_GE(sleeps, 1);

    sleeping.cancel();
    const int before = sleeps;
    const RunLoop::Timer second = runLoop.after(1ms, note("second"));
    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
    EXPECT_EQ(sleeps, before);
}

/// A file that can be made readable and read empty.
class QtRunLoopFileTest : public QtRunLoopTest {
protected:
    ~QtRunLoopFileTest() override { close(file); }

    void makeReadable() const { ASSERT_EQ(eventfd_write(file, 1), 0); }
    void readAll() const {
        eventfd_t value = 0;
        ASSERT_EQ(eventfd_read(file, &value), 0);
    }

    int file = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
};

TEST_F(QtRunLoopFileTest, CallsWhenAFileBecomesReadable) {
    const Subscription watching = runLoop.watch(file, [this] {
        readAll();
        ran.emplace_back("readable");
    });
    runPosted();
    EXPECT_THAT(ran, IsEmpty());

    makeReadable();
    EXPECT_TRUE(runUntil([this] { return ran.size() == 1; }));

    makeReadable();
    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
}

TEST_F(QtRunLoopFileTest, CallsAgainUntilTheFileIsRead) {
    const Subscription watching = runLoop.watch(file, [this] { ran.emplace_back("readable"); });
    makeReadable();

    EXPECT_TRUE(runUntil([this] { return ran.size() >= 3; }));
}

TEST_F(QtRunLoopFileTest, DoesNotCallOnceTheSubscriptionHasEnded) {
    Subscription watching = runLoop.watch(file, [this] { ran.emplace_back("readable"); });
    makeReadable();
    watching.cancel();
    const RunLoop::Timer end = runLoop.after(10ms, note("end"));

    EXPECT_TRUE(runUntil([this] { return !ran.empty(); }));
    EXPECT_THAT(ran, ElementsAre("end"));
}

TEST_F(QtRunLoopFileTest, LetsTheCallEndItsOwnSubscription) {
    Subscription watching;
    watching = runLoop.watch(file, [&] {
        watching = {};
        ran.emplace_back("readable");
    });
    makeReadable();
    const RunLoop::Timer end = runLoop.after(20ms, note("end"));

    EXPECT_TRUE(runUntil([this] { return ran.size() == 2; }));
    EXPECT_THAT(ran, ElementsAre("readable", "end"));
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/ProcessWatcher.h"

#include "platform/linux/support/ChildProcess.h"
#include "platform/linux/support/QtFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <memory>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class ProcessWatcherTest : public QtFixture {
protected:
    /// Lets every end that is told already arrive, and those of later turns that follow from it.
    void runSomeTurns() {
        for (int turn = 0; turn < 5; ++turn) runPosted();
    }

    [[nodiscard]] static std::ptrdiff_t openFiles() {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    }

    std::vector<std::int32_t> ended;
    std::unique_ptr<ProcessWatcher> watcher =
        std::make_unique<ProcessWatcher>(runLoop, [this](std::int32_t pid) { ended.push_back(pid); });
};

TEST_F(ProcessWatcherTest, TellsTheEndOfAWatchedProcessOnce) {
    ChildProcess child;
    watcher->watch(child.pid());
    runSomeTurns();
    EXPECT_THAT(ended, IsEmpty());
    EXPECT_TRUE(watcher->isRunning(child.pid()));

    child.end();
    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));
    EXPECT_FALSE(watcher->isRunning(child.pid()));

    runSomeTurns();
    EXPECT_THAT(ended, ElementsAre(child.pid()));
}

TEST_F(ProcessWatcherTest, TellsTheEndOnceOfAProcessThatIsWatchedTwice) {
    ChildProcess child;
    watcher->watch(child.pid());
    watcher->watch(child.pid());

    child.end();
    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));

    runSomeTurns();
    EXPECT_THAT(ended, ElementsAre(child.pid()));
}

TEST_F(ProcessWatcherTest, OpensOneFileForEachProcessAndClosesItAfterTheEnd) {
    ChildProcess child;
    runSomeTurns();
    const std::ptrdiff_t before = openFiles();

    watcher->watch(child.pid());
    watcher->watch(child.pid());
    EXPECT_EQ(openFiles(), before + 1);

    child.end();
    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));
    EXPECT_EQ(openFiles(), before);
}

TEST_F(ProcessWatcherTest, ClosesItsFilesWhenItDies) {
    ChildProcess child;
    runSomeTurns();
    const std::ptrdiff_t before = openFiles();

    watcher->watch(child.pid());
    watcher.reset();

    EXPECT_EQ(openFiles(), before);
}

TEST_F(ProcessWatcherTest, TellsNothingOfProcessesThatAreNotWatched) {
    ChildProcess unwatched;
    ChildProcess watched;
    watcher->watch(watched.pid());

    unwatched.end();
    watched.end();
    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));

    runSomeTurns();
    EXPECT_THAT(ended, ElementsAre(watched.pid()));
    EXPECT_FALSE(watcher->isRunning(unwatched.pid()));
}

TEST_F(ProcessWatcherTest, TellsTheEndOfEachOfSeveral) {
    ChildProcess first;
    ChildProcess second;
    ChildProcess third;
    watcher->watch(first.pid());
    watcher->watch(second.pid());
    watcher->watch(third.pid());

    third.end();
    first.end();
    EXPECT_TRUE(runUntil([this] { return ended.size() == 2; }));

    EXPECT_THAT(ended, UnorderedElementsAre(first.pid(), third.pid()));
    EXPECT_TRUE(watcher->isRunning(second.pid()));
}

TEST_F(ProcessWatcherTest, TellsTheEndOfAProcessThatEndedBeforeTheLoopRan) {
    ChildProcess child;
    const pid_t pid = child.pid();
    watcher->watch(pid);
    child.endAndCollect();
    EXPECT_THAT(ended, IsEmpty());
    EXPECT_FALSE(watcher->isRunning(pid));

    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));
    EXPECT_THAT(ended, ElementsAre(pid));
}

TEST_F(ProcessWatcherTest, IgnoresProcessesThatAreGone) {
    ChildProcess child;
    const pid_t pid = child.pid();
    child.endAndCollect();

    watcher->watch(pid);
    runSomeTurns();

    EXPECT_FALSE(watcher->isRunning(pid));
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(ProcessWatcherTest, IgnoresNumbersThatAreNoProcess) {
    for (const std::int32_t pid :
         {0, -1, -4711, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
        watcher->watch(pid);

        EXPECT_FALSE(watcher->isRunning(pid)) << pid;
    }
    runSomeTurns();
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(ProcessWatcherTest, IgnoresAProcessThatHasEndedButIsNotCollected) {
    ChildProcess child;
    child.endWithoutCollecting();

    watcher->watch(child.pid());
    runSomeTurns();

    EXPECT_FALSE(watcher->isRunning(child.pid()));
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(ProcessWatcherTest, WatchesTheProcessThatGetsTheNumberOfOneWhoseEndIsNotToldYet) {
    ChildProcess first;
    const pid_t pid = first.pid();
    watcher->watch(pid);
    first.endAndCollect();
    const auto second = ChildProcess::withPid(pid);
    if (!second) GTEST_SKIP() << "only a privileged process may choose the number of another one";

    watcher->watch(pid);
    EXPECT_TRUE(watcher->isRunning(pid));
    EXPECT_TRUE(runUntil([this] { return !ended.empty(); }));
    runSomeTurns();
    EXPECT_THAT(ended, ElementsAre(pid));
    EXPECT_TRUE(watcher->isRunning(pid));

    second->end();
    EXPECT_TRUE(runUntil([this] { return ended.size() == 2; }));
    EXPECT_FALSE(watcher->isRunning(pid));
}

TEST_F(ProcessWatcherTest, TellsNothingOnceItIsGone) {
    ChildProcess child;
    watcher->watch(child.pid());
    watcher.reset();

    child.endAndCollect();
    runSomeTurns();

    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(ProcessWatcherTest, CanWatchAnotherProcessWhileItTellsOfAnEnd) {
    ChildProcess first;
    ChildProcess second;
    ProcessWatcher chained(runLoop, [&](std::int32_t pid) {
        ended.push_back(pid);
        chained.watch(second.pid());
        second.end();
    });
    chained.watch(first.pid());

    first.end();
    EXPECT_TRUE(runUntil([this] { return ended.size() == 2; }));

    EXPECT_THAT(ended, ElementsAre(first.pid(), second.pid()));
}

}  // namespace
}  // namespace velmorand

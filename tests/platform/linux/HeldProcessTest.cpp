#include "platform/linux/HeldProcess.h"

#include "platform/linux/support/ChildProcess.h"
#include "platform/linux/support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

namespace velmorand {
namespace {

using namespace std::chrono_literals;

TEST(HeldProcessTest, KnowsTheProgramOfAProcess) {
    const ChildProcess child;

    const auto held = HeldProcess::hold(child.pid());

    ASSERT_TRUE(held);
    EXPECT_EQ(held->programName(), "velmorand_platform_linux_tests");
    EXPECT_EQ(held->programName(), ownProgramName());
    EXPECT_FALSE(held->endsWithin(0ms));
}

TEST(HeldProcessTest, KnowsTheProgramWhoseFileWasReplacedSinceItsStart) {
    const ScratchFolder folder;
    std::string program = folder.path() / "sleeper";
    std::filesystem::copy_file("/bin/sleep", program);
    std::string time = "1000";
    char* arguments[] = {program.data(), time.data(), nullptr};
    pid_t pid = -1;
    ASSERT_EQ(posix_spawn(&pid, program.c_str(), nullptr, nullptr, arguments, environ), 0);
    std::filesystem::remove(program);

    const auto held = HeldProcess::hold(pid);

    ASSERT_TRUE(held);
    EXPECT_EQ(held->programName(), "sleeper");
    held->sendSignal(SIGKILL);
    EXPECT_TRUE(held->endsWithin(15s));
    waitpid(pid, nullptr, 0);
}

TEST(HeldProcessTest, WhatHasEndedIsNothingAnyMore) {
    ChildProcess child;
    const pid_t pid = child.pid();
    const auto held = HeldProcess::hold(pid);
    ASSERT_TRUE(held);

    child.endAndCollect();

    EXPECT_TRUE(held->endsWithin(0ms));
    EXPECT_EQ(held->programName(), std::nullopt);
    EXPECT_FALSE(HeldProcess::hold(pid));
}

TEST(HeldProcessTest, ASignalDoesNotReachTheProcessThatGotTheNumber) {
    ChildProcess child;
    const pid_t pid = child.pid();
    const auto held = HeldProcess::hold(pid);
    ASSERT_TRUE(held);
    child.endAndCollect();
    const auto next = ChildProcess::withPid(pid);
    if (!next) GTEST_SKIP() << "this program may not choose the number of a process";

    held->sendSignal(SIGKILL);

    EXPECT_EQ(held->programName(), std::nullopt);
    EXPECT_EQ(kill(next->pid(), 0), 0);
    EXPECT_FALSE(HeldProcess::hold(next->pid()).value().endsWithin(100ms));
}

}  // namespace
}  // namespace velmorand

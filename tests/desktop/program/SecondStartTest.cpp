#include "desktop/harness/Deadline.h"
#include "desktop/program/CopiesTest.h"

#include <fmt/format.h>
#include <sys/ptrace.h>

#include <algorithm>
#include <csignal>
#include <vector>

namespace velmorand::desktop {
namespace {

constexpr std::string_view silentBus =
    "velmorand [app] error: The session bus does not answer. There will be no status item and no notification.\n";
constexpr std::string_view ended = "does not answer and is ended.";

class SecondStartTest : public CopiesTest {};

TEST_F(SecondStartTest, ShowsTheSettingsOfTheCopyThatRunsAndEndsWell) {
    ChildProcess first = startFully();

    ChildProcess second = start();

    expectHandedOver(second);
    expectSettingsInFront();
    expectShortcutWorks(first);
}

TEST_F(SecondStartTest, OfTenAtOnceExactlyOneStaysAndHasEveryShortcut) {
    std::vector<ChildProcess> programs;
    for (int copy = 0; copy < 10; ++copy) programs.push_back(start());
    const auto running = [&] { return std::ranges::count_if(programs, &ChildProcess::isRunning); };

    EXPECT_TRUE(observer().waitUntil([&] { return running() == 1; })) << running();

    const auto stays = std::ranges::find_if(programs, &ChildProcess::isRunning);
    ASSERT_NE(stays, programs.end());
    EXPECT_TRUE(logs(*stays, "Registered shortcut restore id 19")) << stays->logTail();
    EXPECT_FALSE(stays->log().contains("failed")) << stays->logTail();
    for (ChildProcess& program : programs) {
        if (&program != &*stays) expectHandedOver(program);
    }
    expectSettingsInFront();
    expectShortcutWorks(*stays);
}

TEST_F(SecondStartTest, OneThatMeetsTheEndOfTheOtherStays) {
    ChildProcess program = startFully();
    for (int start = 0; start < 10; ++start) {
        program.sendSignal(SIGTERM);
        ChildProcess next = startFully();
        EXPECT_FALSE(next.log().contains("failed")) << next.logTail();
        EXPECT_FALSE(next.log().contains(ended)) << next.logTail();
        program = std::move(next);
    }
    expectShortcutWorks(program);
}

TEST_F(SecondStartTest, ReplacesACopyThatWasStopped) {
    ChildProcess first = startFully();
    first.freeze();

    ChildProcess second = startFully();

    EXPECT_TRUE(first.wait(patience)) << "still running";
    EXPECT_TRUE(second.log().contains(fmt::format("The copy that runs already, process {}, {}", first.pid(), ended)))
        << second.logTail();
    EXPECT_FALSE(second.log().contains("failed")) << second.logTail();
    expectShortcutWorks(second);
    ChildProcess third = start();
    expectHandedOver(third);
}

TEST_F(SecondStartTest, ReplacesACopyWhoseMainLoopIsStuck) {
    ChildProcess first = startFully();
    // Its main thread only, and in a way that no signal undoes but the last one.
    ASSERT_EQ(ptrace(PTRACE_SEIZE, first.pid(), nullptr, nullptr), 0);
    ASSERT_EQ(ptrace(PTRACE_INTERRUPT, first.pid(), nullptr, nullptr), 0);

    ChildProcess second = startFully();

    const auto status = first.wait(patience);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->signal, SIGKILL) << status->text();
    EXPECT_FALSE(second.log().contains("failed")) << second.logTail();
    expectShortcutWorks(second);
    ChildProcess third = start();
    expectHandedOver(third);
}

TEST_F(SecondStartTest, OfTwoThatReplaceACopyOneStays) {
    ChildProcess first = startFully();
    first.freeze();

    ChildProcess second = start();
    ChildProcess third = start();

    EXPECT_TRUE(observer().waitUntil([&] { return !second.isRunning() || !third.isRunning(); }));
    EXPECT_TRUE(first.wait(patience)) << "still running";  // woken up, it may have answered one before its end
    ChildProcess& stays = second.isRunning() ? second : third;
    EXPECT_TRUE(logs(stays, "Registered shortcut restore id 19")) << stays.logTail();
    expectSettingsInFront();
    expectShortcutWorks(stays);
}

TEST_F(SecondStartTest, FollowsACopyThatWasKilled) {
    ChildProcess first = startFully();
    first.sendSignal(SIGKILL);
    ASSERT_TRUE(first.wait(patience));

    ChildProcess second = startFully();

    EXPECT_FALSE(second.log().contains(ended)) << second.logTail();
    expectShortcutWorks(second);
}

TEST_F(SecondStartTest, LeavesAForeignProgramAloneThatHasTheNameAndDoesNotAnswer) {
    ChildProcess foreign = takeName("silent");

    ChildProcess program = startFully();

    EXPECT_TRUE(program.log().contains(
        "velmorand [app] error: Another program has the name of this one and does not answer. Starting the program "
        "again will not find this copy.\n"))
        << program.logTail();
    EXPECT_TRUE(foreign.isRunning());
    expectShortcutWorks(program);
}

TEST_F(SecondStartTest, StartsBesideAForeignProgramThatHasTheNameAndRefuses) {
    ChildProcess foreign = takeName("refuses");

    ChildProcess program = startFully();

    EXPECT_TRUE(
        program.log().contains("velmorand [app] error: Another program has the name of this one and cannot come "
                               "to the front."))
        << program.logTail();
    EXPECT_TRUE(foreign.isRunning());
    expectShortcutWorks(program);
}

TEST_F(SecondStartTest, PassesOnWhatTheLauncherGave) {
    ChildProcess first = takeName("answers");

    ChildProcess second = start({{"XDG_ACTIVATION_TOKEN", "token-1"}, {"DESKTOP_STARTUP_ID", "launcher-1_TIME42"}});

    expectHandedOver(second);
    EXPECT_EQ(first.log(), "owns\nactivation-token token-1\ndesktop-startup-id launcher-1_TIME42\nactivated\n");
}

TEST_F(SecondStartTest, HandsOverWithoutATokenThatTheBusWouldNotTake) {
    for (const char* token : {"\uFFFE", "\uFDD0", "cut\xC3", "two\nlines"}) {
        ChildProcess first = takeName("answers");

        ChildProcess second = start({{"XDG_ACTIVATION_TOKEN", token}, {"DESKTOP_STARTUP_ID", token}});

        expectHandedOver(second);
        EXPECT_EQ(first.log(), "owns\nactivated\n");
    }
}

TEST_F(SecondStartTest, WithoutASessionBusTheProgramStarts) {
    ChildProcess program = startFully({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"}});

    EXPECT_TRUE(program.log().contains(
        "velmorand [app] info: There is no session bus. Starting the program again will not find this copy.\n"));
    expectShortcutWorks(program);
}

TEST_F(SecondStartTest, WithASessionBusThatDoesNotAnswerTheProgramStarts) {
    desktop().sessionBus().freeze();

    ChildProcess program = startFully();

    EXPECT_TRUE(program.log().contains(silentBus)) << program.logTail();
    expectShortcutWorks(program);
    desktop().sessionBus().thaw();
}

TEST_F(SecondStartTest, WithASessionBusThatFallsSilentWhileTheOtherCopyIsAskedTheProgramStarts) {
    ChildProcess other = takeName("quiet");
    ChildProcess program = start();
    ASSERT_TRUE(logs(other, "activated\n")) << other.logTail();

    desktop().sessionBus().freeze();

    EXPECT_TRUE(
        observer().waitUntil([&] { return program.log().contains("Registered shortcut restore id 19"); }, 3 * patience))
        << program.logTail();
    EXPECT_TRUE(program.log().contains(silentBus)) << program.logTail();
    EXPECT_TRUE(other.isRunning());
    expectShortcutWorks(program);
    desktop().sessionBus().thaw();
}

TEST_F(SecondStartTest, TheEndOfTheSessionBusIsNotTheEndOfTheProgram) {
    ChildProcess program = startFully();

    desktop().sessionBus().terminate();

    expectShortcutWorks(program);
    EXPECT_TRUE(program.terminate().isSuccess()) << program.logTail();
}

}  // namespace
}  // namespace velmorand::desktop

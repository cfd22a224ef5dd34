#include "platform/linux/LinuxLog.h"

#include "base/UnicodeText.h"
#include "platform/linux/support/RedirectedStandardError.h"
#include "platform/linux/support/ScopedEnvironment.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

namespace velmorand {
namespace {

using namespace std::string_literals;
using testing::ExitedWithCode;

class OneLineTest : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(OneLineTest, ShowsControlCharactersEscaped) {
    EXPECT_EQ(asOneLine(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Table, OneLineTest,
                         testing::Values(std::pair("", ""), std::pair("plain text", "plain text"),
                                         std::pair("a\nb\n", "a\\nb\\n"), std::pair("a\r\nb", "a\\x0d\\nb"),
                                         std::pair("a\tb", "a\\x09b"), std::pair("\x1B[31mred", "\\x1b[31mred"),
                                         std::pair("a\0b"s, "a\\x00b"), std::pair("\x7F", "\\x7f"),
                                         std::pair("Käfer 窓 🪟", "Käfer 窓 🪟"), std::pair("{} %s %n", "{} %s %n")));

TEST(OneLineTest, EscapesControlCharactersBeyondAscii) {
    EXPECT_FALSE(hasControlCharacter(asOneLine("next line \xC2\x85 end")));
    EXPECT_FALSE(hasControlCharacter(asOneLine("terminal command \xC2\x9B"
                                               "31m")));
}

TEST(OneLineTest, KeepsLongTextsWhole) {
    const std::string text(100'000, 'x');

    EXPECT_EQ(asOneLine(text), text);
}

/// A log whose standard error is a file and not the journal's.
class LinuxLogTest : public testing::Test {
protected:
    ScopedEnvironment journal{"JOURNAL_STREAM", std::nullopt};
    RedirectedStandardError standardError;
    LinuxLog log{"app.velmorand.Velmorand"};
};

TEST_F(LinuxLogTest, WritesProgramCategoryLevelAndText) {
    log.write(LogLevel::info, "shortcuts", "registered 19 shortcuts");

    EXPECT_EQ(standardError.text(), "velmorand [shortcuts] info: registered 19 shortcuts\n");
}

TEST_F(LinuxLogTest, NamesEveryLevel) {
    log.write(LogLevel::debug, "a", "1");
    log.write(LogLevel::info, "b", "2");
    log.write(LogLevel::error, "c", "3");

    EXPECT_EQ(standardError.text(), "velmorand [a] debug: 1\n"
                                    "velmorand [b] info: 2\n"
                                    "velmorand [c] error: 3\n");
}

TEST_F(LinuxLogTest, KeepsATextWithLineEndsOnOneLine) {
    log.write(LogLevel::error, "ax", "one\ntwo\nvelmorand [ax] info: forged");

    EXPECT_EQ(standardError.text(), "velmorand [ax] error: one\\ntwo\\nvelmorand [ax] info: forged\n");
}

TEST_F(LinuxLogTest, TakesTextsAsTheyAre) {
    log.write(LogLevel::info, "ax", "{} %s %n {0}");

    EXPECT_EQ(standardError.text(), "velmorand [ax] info: {} %s %n {0}\n");
}

TEST_F(LinuxLogTest, WritesAnEmptyText) {
    log.write(LogLevel::info, "ax", "");

    EXPECT_EQ(standardError.text(), "velmorand [ax] info: \n");
}

TEST_F(LinuxLogTest, WritesEachLineAtOnce) {
    log.write(LogLevel::info, "ax", "first");
    EXPECT_EQ(standardError.text(), "velmorand [ax] info: first\n");

    log.write(LogLevel::info, "ax", "second");
    EXPECT_EQ(standardError.text(), "velmorand [ax] info: first\nvelmorand [ax] info: second\n");
}

TEST_F(LinuxLogTest, KeepsToStandardErrorWhenTheJournalIsConnectedToAnotherStream) {
    const ScopedEnvironment other{"JOURNAL_STREAM", "1:1"};
    LinuxLog redirected("app.velmorand.Velmorand");
    redirected.write(LogLevel::info, "ax", "text");

    EXPECT_EQ(standardError.text(), "velmorand [ax] info: text\n");
}

TEST_F(LinuxLogTest, LeavesStandardErrorAloneWhenItIsTheJournals) {
    const ScopedEnvironment same{"JOURNAL_STREAM", standardError.streamName()};
    LinuxLog journalled("app.velmorand.Velmorand");
    journalled.write(LogLevel::info, "test", "a line of the unit tests");

    EXPECT_EQ(standardError.text(), "");
}

/// Makes standard error a pipe. Its other end is left open or closed by the caller.
std::array<int, 2> standardErrorAsPipe() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || dup2(ends[1], STDERR_FILENO) < 0) std::_Exit(2);
    return ends;
}

[[noreturn]] void writeForAReaderThatWentAway() {
    const auto [reading, writing] = standardErrorAsPipe();
    close(reading);
    LinuxLog("app.velmorand.Velmorand").write(LogLevel::error, "ax", "nobody reads this");
    std::_Exit(0);
}

[[noreturn]] void writeMoreThanAPipeHolds() {
    const auto [reading, writing] = standardErrorAsPipe();
    const int capacity = fcntl(writing, F_GETPIPE_SZ);
    alarm(5);  // ends a process that waits
    LinuxLog log("app.velmorand.Velmorand");
    for (int written = 0; written <= capacity; written += 100) log.write(LogLevel::error, "ax", std::string(100, 'x'));
    std::_Exit(0);
}

using LinuxLogDeathTest = LinuxLogTest;

TEST_F(LinuxLogDeathTest, SurvivesAReaderThatWentAway) {
    EXPECT_EXIT(writeForAReaderThatWentAway(), ExitedWithCode(0), "");
}

TEST_F(LinuxLogDeathTest, DoesNotWaitForAReaderThatIsAsleep) {
    EXPECT_EXIT(writeMoreThanAPipeHolds(), ExitedWithCode(0), "");
}

}  // namespace
}  // namespace velmorand

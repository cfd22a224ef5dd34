#include "platform/linux/RunningExecutable.h"

#include "platform/linux/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

class RunningExecutableTest : public testing::Test {
protected:
    /// The executable where the system tells this of it.
    [[nodiscard]] fs::path told(const std::string& target) const {
        scratch.link("exe", target);
        return executableBehind(scratch.path() / "exe");
    }

    ScratchFolder scratch;
    const std::string program = scratch.path() / "velmorand";
};

TEST_F(RunningExecutableTest, IsThisOne) {
    EXPECT_EQ(runningExecutable().filename(), "velmorand_platform_linux_tests");
    EXPECT_TRUE(runningExecutable().is_absolute());
    EXPECT_TRUE(fs::exists(runningExecutable()));
}

TEST_F(RunningExecutableTest, IsWhereItIsInstalledAlsoWhenAnUpgradeHasReplacedIt) {
    scratch.write("velmorand", "the next version");

    EXPECT_EQ(told(program + " (deleted)"), program);
}

TEST_F(RunningExecutableTest, IsWhereItWasWhenItIsGone) {
    EXPECT_EQ(told(program + " (deleted)"), program);
}

TEST_F(RunningExecutableTest, MayHaveANameThatOnlyLooksDeleted) {
    scratch.write("velmorand (deleted)", "");

    EXPECT_EQ(told(program + " (deleted)"), program + " (deleted)");
}

TEST_F(RunningExecutableTest, IsUnknownWhereTheSystemDoesNotTell) {
    EXPECT_EQ(executableBehind(scratch.path() / "nothing"), fs::path());
}

}  // namespace
}  // namespace velmorand

#include "desktop/login/LoginTest.h"
#include "platform/linux/LinuxLog.h"
#include "platform/linux/LoginItemSettings.h"
#include "platform/linux/XdgLoginItems.h"

#include <fstream>
#include <optional>
#include <ostream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

/// The name of the folder in which the program lies.
struct PathRow {
    const char* name;
    std::string folder;
    /// What systemd is to start, in the writing of its units; "@" stands for the path of the test's folder. Absent where
    /// it does not understand the entry.
    std::optional<std::string> unitCommand;

    friend void PrintTo(const PathRow& row, std::ostream* out) { *out << row.name; }
};

/// Starts the application of an entry, which leaves a file, and waits for that file.
constexpr const char* launcher = R"(
import os, sys, time
from gi.repository import Gio
entry, trace = sys.argv[1:]
Gio.DesktopAppInfo.new_from_filename(entry).launch([], None)
end = time.monotonic() + 15
while not os.path.exists(trace):
    if time.monotonic() > end:
        sys.exit("not started")
    time.sleep(0.01)
)";

class LoginItemToolsTest : public LoginTest, public testing::WithParamInterface<PathRow> {
protected:
    void SetUp() override {
        LoginTest::SetUp();
        write(program(), "#!/bin/sh\n: >\"${0%/*}/trace\"\n");
        fs::permissions(program(), fs::perms::owner_all);
        for (const char* name : {"units", "early", "late"}) fs::create_directory(at(name));
    }

    [[nodiscard]] fs::path program() const { return at(GetParam().folder) / "velmorand"; }

    [[nodiscard]] XdgLoginItems items() const {
        return {VELMORAND_IDENTIFIER,
                {program(), at("config/autostart"), {at("system/autostart")}, {at("data")}},
                settings_};
    }

    /// The command of the unit that systemd makes of the user's entries; absent when it makes none.
    [[nodiscard]] std::optional<std::string> unitCommand() {
        const auto end = run(
            {"/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator", at("units"), at("early"), at("late")});
        EXPECT_TRUE(end.status.isSuccess()) << end.output;
        std::ifstream unit(at("late/app-" VELMORAND_IDENTIFIER "@autostart.service"));
        constexpr std::string_view key = "ExecStart=:";
        for (std::string line; std::getline(unit, line);) {
            if (line.starts_with(key)) return line.substr(key.size());
        }
        return std::nullopt;
    }

private:
    LinuxLog log_{VELMORAND_IDENTIFIER};
    LoginItemSettings settings_{log_};
};

TEST_P(LoginItemToolsTest, TheValidatorFindsNothingWrong) {
    ASSERT_TRUE(items().registerItem());

    const auto end = run({"desktop-file-validate", entry()});

    EXPECT_TRUE(end.status.isSuccess());
    EXPECT_EQ(end.output, "");
}

TEST_P(LoginItemToolsTest, SystemdStartsTheProgram) {
    if (!GetParam().unitCommand) GTEST_SKIP() << "systemd takes a backslash away too often";
    ASSERT_TRUE(items().registerItem());

    std::string expected = *GetParam().unitCommand;
    expected.replace(expected.find('@'), 1, at("").parent_path());
    EXPECT_EQ(unitCommand(), expected);
}

TEST_P(LoginItemToolsTest, DesktopsStartTheProgram) {
    ASSERT_TRUE(items().registerItem());

    const auto end = run({"/usr/bin/python3", "-c", launcher, entry(), program().parent_path() / "trace"});

    EXPECT_TRUE(end.status.isSuccess()) << end.output;
}

TEST_P(LoginItemToolsTest, NobodyStartsAProgramThatIsGone) {
    ASSERT_TRUE(items().registerItem());
    fs::remove(program());

    EXPECT_EQ(unitCommand(), std::nullopt);
    EXPECT_FALSE(
        run({"/usr/bin/python3", "-c", launcher, entry(), program().parent_path() / "trace"}).status.isSuccess());
}

INSTANTIATE_TEST_SUITE_P(
    Path, LoginItemToolsTest,
    testing::Values(PathRow{"Plain", "bin", "@/bin/velmorand"},
                    PathRow{"WithSpaces", "a folder of mine", R"("@/a folder of mine/velmorand")"},
                    PathRow{"WithDoubleQuotes", R"(the "best" one)", R"("@/the \"best\" one/velmorand")"},
                    PathRow{"WithASingleQuote", "it's", R"("@/it's/velmorand")"},
                    PathRow{"WithADollarSign", "$HOME ${HOME}", R"("@/\$HOME \${HOME}/velmorand")"},
                    PathRow{"WithABacktick", "`id`", R"("@/\`id\`/velmorand")"},
                    PathRow{"WithPercentSigns", "100% %u", R"(/usr/bin/env "@/100%% %%u/velmorand")"},
                    PathRow{"WithSigns", "a;b&c|d<e>f(g)h*i?j#k~l=m", R"("@/a;b&c|d<e>f(g)h*i?j#k~l=m/velmorand")"},
                    PathRow{"WithBackslashes", R"(a\b\n\\)", std::nullopt},
                    PathRow{"WithOtherLetters", "gr\u00f6\u00dfer \u65e5\u672c",
                            "\"@/gr\u00f6\u00dfer \u65e5\u672c/velmorand\""}),
    [](const auto& row) { return row.param.name; });

class LoginItemSwitchedOffTest : public LoginItemToolsTest {};

TEST_P(LoginItemSwitchedOffTest, SystemdStartsNothing) {
    ASSERT_TRUE(items().registerItem());
    ASSERT_TRUE(items().unregisterItem());

    EXPECT_EQ(unitCommand(), std::nullopt);
}

TEST_P(LoginItemSwitchedOffTest, SystemdStartsNothingInPlaceOfTheSystemsEntryEither) {
    ASSERT_TRUE(items().registerItem());
    fs::create_directories(at("system/autostart"));
    fs::rename(entry(), at("system/autostart") / fileName);
    ASSERT_TRUE(unitCommand());
    fs::remove(at("late/app-" VELMORAND_IDENTIFIER "@autostart.service"));

    ASSERT_TRUE(items().unregisterItem());

    EXPECT_EQ(unitCommand(), std::nullopt);
    EXPECT_EQ(run({"desktop-file-validate", entry()}).output, "");
}

INSTANTIATE_TEST_SUITE_P(Path, LoginItemSwitchedOffTest, testing::Values(PathRow{"Plain", "bin", std::nullopt}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace velmorand::desktop

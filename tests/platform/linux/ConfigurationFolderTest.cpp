#include "platform/linux/BaseFolders.h"
#include "platform/linux/support/ScopedEnvironment.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace velmorand {
namespace {

/// What the two variables may say, and the folder that follows; "~" in it is the home of the user's account.
struct Row {
    const char* name;
    std::optional<std::string> configured;
    std::optional<std::string> home;
    const char* folder;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

class ConfigurationFolderTest : public testing::TestWithParam<Row> {};

std::string withHome(std::string folder) {
    const passwd* user = getpwuid(getuid());
    if (folder.starts_with('~')) folder.replace(0, 1, user == nullptr ? "" : user->pw_dir);
    return folder;
}

TEST_P(ConfigurationFolderTest, FollowsFromTheEnvironment) {
    const ScopedEnvironment configured("XDG_CONFIG_HOME", GetParam().configured);
    const ScopedEnvironment home("HOME", GetParam().home);

    EXPECT_EQ(configurationFolder("velmorand"), withHome(GetParam().folder));
}

constexpr std::nullopt_t unset = std::nullopt;

INSTANTIATE_TEST_SUITE_P(Where, ConfigurationFolderTest,
                         testing::Values(Row{"IsConfigured", "/config", "/home/user", "/config/velmorand"},
                                         Row{"IsConfiguredWithoutAHome", "/config", unset, "/config/velmorand"},
                                         Row{"EndsWithASlash", "/config/", "/home/user", "/config/velmorand"},
                                         Row{"IsUnset", unset, "/home/user", "/home/user/.config/velmorand"},
                                         Row{"IsEmpty", "", "/home/user", "/home/user/.config/velmorand"},
                                         Row{"IsRelative", "config", "/home/user", "/home/user/.config/velmorand"},
                                         Row{"IsRelativeToHere", "./config", "/home/user",
                                             "/home/user/.config/velmorand"},
                                         Row{"AndHomeAreUnset", unset, unset, "~/.config/velmorand"},
                                         Row{"IsUnsetAndHomeEmpty", unset, "", "~/.config/velmorand"},
                                         Row{"AndHomeAreRelative", "config", "home", "~/.config/velmorand"}),
                         [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

}  // namespace
}  // namespace velmorand

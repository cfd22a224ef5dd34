#include "platform/linux/BaseFolders.h"

#include "platform/linux/support/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmorand {
namespace {

using testing::ElementsAre;

class BaseFoldersTest : public testing::Test {
protected:
    ScopedEnvironment home{"HOME", "/home/user"};
    ScopedEnvironment configuration{"XDG_CONFIG_DIRS", std::nullopt};
    ScopedEnvironment usersData{"XDG_DATA_HOME", std::nullopt};
    ScopedEnvironment systemsData{"XDG_DATA_DIRS", std::nullopt};
};

TEST_F(BaseFoldersTest, AreTheUsualOnesUnlessOthersAreNamed) {
    EXPECT_THAT(systemConfigurationFolders(), ElementsAre("/etc/xdg"));
    EXPECT_THAT(dataFolders(), ElementsAre("/home/user/.local/share", "/usr/local/share", "/usr/share"));

    const ScopedEnvironment noConfiguration("XDG_CONFIG_DIRS", "");
    const ScopedEnvironment noData("XDG_DATA_DIRS", "");
    EXPECT_THAT(systemConfigurationFolders(), ElementsAre("/etc/xdg"));
    EXPECT_THAT(dataFolders(), ElementsAre("/home/user/.local/share", "/usr/local/share", "/usr/share"));
}

TEST_F(BaseFoldersTest, AreInTheOrderInWhichTheyAreNamed) {
    const ScopedEnvironment configurationFolders("XDG_CONFIG_DIRS", "/b:/a");
    const ScopedEnvironment usersFolder("XDG_DATA_HOME", "/z");
    const ScopedEnvironment systemsFolders("XDG_DATA_DIRS", "/d:/c");

    EXPECT_THAT(systemConfigurationFolders(), ElementsAre("/b", "/a"));
    EXPECT_THAT(dataFolders(), ElementsAre("/z", "/d", "/c"));
}

TEST_F(BaseFoldersTest, DoNotCountWhenTheyAreRelative) {
    const ScopedEnvironment configurationFolders("XDG_CONFIG_DIRS", "b::/a:./c:");
    const ScopedEnvironment usersFolder("XDG_DATA_HOME", "share");
    const ScopedEnvironment systemsFolders("XDG_DATA_DIRS", "share:/c");

    EXPECT_THAT(systemConfigurationFolders(), ElementsAre("/a"));
    EXPECT_THAT(dataFolders(), ElementsAre("/home/user/.local/share", "/c"));
}

}  // namespace
}  // namespace velmorand

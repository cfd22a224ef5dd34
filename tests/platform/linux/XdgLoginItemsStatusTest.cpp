#include "platform/linux/support/OrdinaryUser.h"
#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/XdgLoginItemsFixture.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

constexpr auto notRegistered = LoginItemStatus::notRegistered;
constexpr auto enabled = LoginItemStatus::enabled;
constexpr auto requiresApproval = LoginItemStatus::requiresApproval;
constexpr auto notFound = LoginItemStatus::notFound;
constexpr auto other = LoginItemStatus::other;

/// Entries by their lines, in which "@" stands for the path of the program.
struct EntryRow {
    const char* name;
    std::string lines;
    LoginItemStatus expected;

    friend void PrintTo(const EntryRow& row, std::ostream* out) { *out << row.name; }
};

std::string nameOfRow(const testing::TestParamInfo<EntryRow>& row) {
    return row.param.name;
}

class XdgLoginItemsEntryTest : public XdgLoginItemsFixture, public testing::WithParamInterface<EntryRow> {
protected:
    [[nodiscard]] std::string lines() const {
        std::string text = GetParam().lines;
        for (auto at = text.find('@'); at != std::string::npos; at = text.find('@'))
            text.replace(at, 1, program.native());
        return text;
    }
};

class XdgLoginItemsUsersEntryTest : public XdgLoginItemsEntryTest {};

TEST_P(XdgLoginItemsUsersEntryTest, DecidesTheStatus) {
    writeUsers(lines());

    EXPECT_EQ(items.status(), GetParam().expected);
}

TEST_P(XdgLoginItemsUsersEntryTest, CountsBeforeOneOfTheSystem) {
    writeSystems("first", starting());
    writeUsers(lines());

    EXPECT_EQ(items.status(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XdgLoginItemsUsersEntryTest,
    testing::Values(
        EntryRow{"Starting", "Type=Application\nExec=@\n", enabled},
        EntryRow{"WithArguments", "Type=Application\nExec=\"@\" --quiet\n", enabled},
        EntryRow{"StartingAnotherProgram", "Type=Application\nExec=sh -c @\n", enabled},
        EntryRow{"NotHidden", "Type=Application\nExec=@\nHidden=false\n", enabled},
        EntryRow{"Enabled", "Type=Application\nExec=@\nX-GNOME-Autostart-enabled=true\n", enabled},
        EntryRow{"NotShownInMenus", "Type=Application\nExec=@\nNoDisplay=true\n", enabled},
        EntryRow{"ThatTriesAProgramThatIsThere", "Type=Application\nExec=@\nTryExec=@\n", enabled},
        EntryRow{"Hidden", "Type=Application\nExec=@\nHidden=true\n", requiresApproval},
        EntryRow{"HiddenAndNothingElse", "Hidden=true\n", requiresApproval},
        EntryRow{"NotEnabled", "Type=Application\nExec=@\nX-GNOME-Autostart-enabled=false\n", requiresApproval},
        EntryRow{"HiddenAndEnabled", "Type=Application\nExec=@\nX-GNOME-Autostart-enabled=true\nHidden=true\n",
                 requiresApproval},
        EntryRow{"SwitchedOffHere", "Type=Application\nHidden=true\nX-Velmorand-Unregistered=true\n", notRegistered},
        EntryRow{"SwitchedOffHereAndOnByTheUser",
                 "Type=Application\nExec=@\nHidden=false\nX-Velmorand-Unregistered=true\n", enabled},
        EntryRow{"WhoseProgramIsMissing", "Type=Application\nExec=@-of-old\n", notRegistered},
        EntryRow{"WithoutAProgram", "Type=Application\n", notRegistered},
        EntryRow{"ThatTriesAMissingProgram", "Type=Application\nExec=@\nTryExec=@-of-old\n", notRegistered},
        EntryRow{"OfALink", "Type=Link\nURL=https://example.org\n", other}, EntryRow{"OfNoType", "Exec=@\n", other},
        EntryRow{"WithoutLines", "", other}, EntryRow{"WithNonsense", "\xFF\xFE\x01 nonsense", other}),
    nameOfRow);

class XdgLoginItemsSystemsEntryTest : public XdgLoginItemsEntryTest {};

TEST_P(XdgLoginItemsSystemsEntryTest, DecidesTheStatusWhereTheUserHasNone) {
    writeSystems("second", lines());

    EXPECT_EQ(items.status(), GetParam().expected);
}

TEST_P(XdgLoginItemsSystemsEntryTest, CountsBeforeALessImportantOne) {
    writeSystems("first", lines());
    writeSystems("second", starting());

    EXPECT_EQ(items.status(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XdgLoginItemsSystemsEntryTest,
    testing::Values(EntryRow{"Starting", "Type=Application\nExec=@\n", enabled},
                    EntryRow{"Hidden", "Type=Application\nExec=@\nHidden=true\n", notRegistered},
                    EntryRow{"NotEnabled", "Type=Application\nExec=@\nX-GNOME-Autostart-enabled=false\n",
                             notRegistered},
                    EntryRow{"WhoseProgramIsMissing", "Type=Application\nExec=@-of-old\n", notRegistered},
                    EntryRow{"WithNonsense", "nonsense", notRegistered}),
    nameOfRow);

class XdgLoginItemsInstalledTest : public XdgLoginItemsEntryTest {};

TEST_P(XdgLoginItemsInstalledTest, DecidesWhetherTheProgramIsFound) {
    writeInstalled(lines());

    EXPECT_EQ(items.status(), GetParam().expected);
}

TEST_P(XdgLoginItemsInstalledTest, CountsBeforeALessImportantOne) {
    places.dataFolders.push_back(scratch.path() / "less");
    writeEntry("less/applications", starting());
    writeInstalled(lines());

    EXPECT_EQ(XdgLoginItems("app.velmorand.Velmorand", places, settings).status(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XdgLoginItemsInstalledTest,
    testing::Values(EntryRow{"Application", "Type=Application\nExec=velmorand\n", notRegistered},
                    EntryRow{"NotShownInMenus", "Type=Application\nNoDisplay=true\n", notRegistered},
                    EntryRow{"ThatTriesAProgramThatIsThere", "Type=Application\nTryExec=@\n", notRegistered},
                    EntryRow{"ThatTriesAMissingProgram", "Type=Application\nTryExec=@-of-old\n", notFound},
                    EntryRow{"Hidden", "Type=Application\nHidden=true\n", notFound},
                    EntryRow{"OfALink", "Type=Link\n", notFound}, EntryRow{"WithoutLines", "", notFound}),
    nameOfRow);

class XdgLoginItemsStatusTest : public XdgLoginItemsFixture {};

TEST_F(XdgLoginItemsStatusTest, IsNotFoundWithoutAnInstalledEntry) {
    fs::remove_all(scratch.path() / "data");

    EXPECT_EQ(items.status(), notFound);
}

TEST_F(XdgLoginItemsStatusTest, IsThatOfTheEntryAlsoWhereTheProgramIsNoLongerInstalled) {
    fs::remove_all(scratch.path() / "data");
    writeUsers(starting());
    EXPECT_EQ(items.status(), enabled) << "it is started";

    fs::remove(program);
    EXPECT_EQ(items.status(), notFound) << "it is not started";
}

TEST_F(XdgLoginItemsStatusTest, FollowsWhateverHappensInTheFolders) {
    EXPECT_EQ(items.status(), notRegistered);
    writeUsers(starting());
    EXPECT_EQ(items.status(), enabled);
    writeUsers(starting() + "Hidden=true\n");
    EXPECT_EQ(items.status(), requiresApproval);
    fs::remove(file);
    EXPECT_EQ(items.status(), notRegistered);
}

TEST_F(XdgLoginItemsStatusTest, MakesNothing) {
    EXPECT_EQ(items.status(), notRegistered);

    EXPECT_FALSE(fs::exists(scratch.path() / "config"));
}

TEST_F(XdgLoginItemsStatusTest, DoesNotFollowFromWhatIsBehindAnEntryThatCannotBeRead) {
    writeSystems("second", starting());
    fs::create_directories(places.systemFolders.front() / fileName);
    EXPECT_EQ(items.status(), notRegistered);

    fs::create_directories(scratch.path() / "nothing/applications" / fileName);
    EXPECT_EQ(items.status(), notFound);
}

TEST_F(XdgLoginItemsStatusTest, FindsAProgramToTryWhosePathIsEscaped) {
    writeProgram("my programs/velmorand");
    const std::string tryExec = "TryExec=" + scratch.path().native() + "/my\\sprograms/velmorand\n";

    writeInstalled("Type=Application\n" + tryExec);
    EXPECT_EQ(items.status(), notRegistered);
    writeUsers(starting() + tryExec);
    EXPECT_EQ(items.status(), enabled);
}

TEST_F(XdgLoginItemsStatusTest, IsThatOfTheFileThatALinkLeadsTo) {
    scratch.write("dotfiles/entry", "[Desktop Entry]\n" + starting());
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_EQ(items.status(), enabled);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForALinkThatLeadsNowhere) {
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForLinksInACircle) {
    scratch.link("config/autostart" / fs::path(fileName), fileName);

    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForAFolder) {
    fs::create_directories(file);

    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForAPipeWhichIsNotWaitedFor) {
    scratch.makePipe("config/autostart" / fs::path(fileName));

    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForWhatTheUserMayNotRead) {
    writeUsers(starting());
    const OrdinaryUser user(scratch.path());
    fs::permissions(file, fs::perms::none);

    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsUnknownForMoreThanAMebibyte) {
    writeUsers(starting() + "#");
    fs::resize_file(file, 1U << 20U);
    EXPECT_EQ(items.status(), enabled);

    fs::resize_file(file, (1U << 20U) + 1);
    EXPECT_EQ(items.status(), other);
}

TEST_F(XdgLoginItemsStatusTest, IsThatOfNoEntryWhereTheFolderIsAFile) {
    scratch.write("config/autostart", "");

    EXPECT_EQ(items.status(), notRegistered);
}

TEST(LoginItemPlacesTest, FollowFromTheEnvironment) {
    const ScopedEnvironment home("HOME", "/home/user");
    const ScopedEnvironment configuration("XDG_CONFIG_HOME", "relative");
    const ScopedEnvironment systemsConfiguration("XDG_CONFIG_DIRS", "/b:/a");
    const ScopedEnvironment data("XDG_DATA_HOME", "/data");
    const ScopedEnvironment systemsData("XDG_DATA_DIRS", "/usr/share");

    const LoginItemPlaces places = LoginItemPlaces::ofSession();

    EXPECT_EQ(places.usersFolder, "/home/user/.config/autostart");
    EXPECT_EQ(places.systemFolders, (std::vector<fs::path>{"/b/autostart", "/a/autostart"}));
    EXPECT_EQ(places.dataFolders, (std::vector<fs::path>{"/data", "/usr/share"}));
    EXPECT_EQ(places.executable, fs::read_symlink("/proc/self/exe"));
}

}  // namespace
}  // namespace velmorand

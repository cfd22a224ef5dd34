#include "platform/linux/XdgLoginItems.h"

#include "platform/linux/support/OrdinaryUser.h"
#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/SmallFileSystem.h"
#include "platform/linux/support/StorageCalls.h"
#include "platform/linux/support/XdgLoginItemsFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class XdgLoginItemsTest : public XdgLoginItemsFixture {
protected:
    /// What the user's entry is once it is registered.
    [[nodiscard]] std::string registered() const {
        return "[Desktop Entry]\n"
               "Type=Application\n"
               "Name=Velmorand\n"
               "Comment=Arranges windows by keyboard shortcuts\n"
               "TryExec=" +
               program.native() + "\nExec=" + program.native() +
               "\n"
               "Icon=app.velmorand.Velmorand\n"
               "Terminal=false\n"
               "StartupNotify=false\n";
    }
    /// An item for a program at another path.
    [[nodiscard]] XdgLoginItems itemsOf(const fs::path& executable) {
        places.executable = executable;
        return {"app.velmorand.Velmorand", places, settings};
    }
};

TEST_F(XdgLoginItemsTest, RegisteringWritesAnEntryAndTheFoldersAboveIt) {
    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_EQ(contentOf(file), registered());
    EXPECT_THAT(namesIn(folder), ElementsAre(fileName));
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(XdgLoginItemsTest, RegisteringTakesBackBothWaysOfSwitchingOff) {
    for (const std::string line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        writeUsers(starting() + line);

        EXPECT_EQ(failureOf(items.registerItem()), "no failure");

        EXPECT_EQ(contentOf(file), registered());
        EXPECT_EQ(items.status(), LoginItemStatus::enabled);
    }
}

TEST_F(XdgLoginItemsTest, RegisteringMendsAnEntryWhoseProgramIsMissing) {
    writeUsers("Type=Application\nName=Velmorand\nExec=/opt/of-old/velmorand\n");

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_EQ(contentOf(file), registered());
}

TEST_F(XdgLoginItemsTest, RegisteringLeavesAnEntryThatStartsAProgram) {
    writeUsers(starting() + "X-GNOME-Autostart-Delay=5\n");

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_EQ(contentOf(file), "[Desktop Entry]\n" + starting() + "X-GNOME-Autostart-Delay=5\n");
}

TEST_F(XdgLoginItemsTest, RegisteringWritesNothingWhereTheSystemStartsTheProgram) {
    writeSystems("second", starting());

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(XdgLoginItemsTest, RegisteringWritesThroughALinkWhichStays) {
    scratch.write("dotfiles/entry", "[Desktop Entry]\n" + starting() + "Hidden=true\n");
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contentOf(scratch.path() / "dotfiles/entry"), registered());
}

TEST_F(XdgLoginItemsTest, RegisteringMakesTheEntrySafe) {
    fs::create_directories(folder);
    const StorageCalls calls;

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    ASSERT_EQ(calls.seen().size(), 3U);
    EXPECT_THAT(calls.seen()[0], testing::StartsWith("fsync " + (folder / ".app.velmorand").native()));
    EXPECT_THAT(calls.seen()[1], testing::EndsWith(" " + file.native()));
    EXPECT_EQ(calls.seen()[2], "fsync " + folder.native());
}

TEST_F(XdgLoginItemsTest, UnregisteringRemovesTheEntryAndMakesThatSafe) {
    writeUsers(starting());
    const StorageCalls calls;

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_THAT(namesIn(folder), IsEmpty());
    EXPECT_THAT(calls.seen(), ElementsAre("fsync " + folder.native()));
}

TEST_F(XdgLoginItemsTest, UnregisteringMakesNothingWhereThereIsNothing) {
    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_FALSE(fs::exists(scratch.path() / "config"));
}

TEST_F(XdgLoginItemsTest, UnregisteringRemovesALinkAndLeavesWhatItLeadsTo) {
    scratch.write("dotfiles/entry", "[Desktop Entry]\n" + starting());
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_THAT(namesIn(folder), IsEmpty());
    EXPECT_EQ(contentOf(scratch.path() / "dotfiles/entry"), "[Desktop Entry]\n" + starting());
}

TEST_F(XdgLoginItemsTest, UnregisteringHidesAnEntryOfTheSystem) {
    writeSystems("second", starting());

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_EQ(contentOf(file), "[Desktop Entry]\n"
                               "Type=Application\n"
                               "Name=Velmorand\n"
                               "Hidden=true\n"
                               "X-Velmorand-Unregistered=true\n");
    EXPECT_EQ(items.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");
    EXPECT_EQ(items.status(), LoginItemStatus::notRegistered);
}

TEST_F(XdgLoginItemsTest, UnregisteringKeepsHidingAnEntryOfTheSystemThatMayComeBack) {
    writeSystems("second", starting());
    ASSERT_TRUE(items.unregisterItem());
    fs::remove_all(scratch.path() / "second");

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    writeSystems("second", starting());
    EXPECT_EQ(items.status(), LoginItemStatus::notRegistered);
}

TEST_F(XdgLoginItemsTest, UnregisteringHidesAnEntryOfTheSystemThatTheUsersSettingsHaveSwitchedOff) {
    writeSystems("second", starting());
    writeUsers("Hidden=true\n");
    ASSERT_EQ(items.status(), LoginItemStatus::requiresApproval);

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_EQ(items.status(), LoginItemStatus::notRegistered);
}

TEST_F(XdgLoginItemsTest, UnregisteringPutsAFileInALinksPlaceToHideAnEntryOfTheSystem) {
    writeSystems("second", starting());
    scratch.write("dotfiles/entry", "[Desktop Entry]\n" + starting());
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_FALSE(fs::is_symlink(file));
    EXPECT_EQ(items.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(contentOf(scratch.path() / "dotfiles/entry"), "[Desktop Entry]\n" + starting());
}

TEST_F(XdgLoginItemsTest, WhatIsHiddenHereIsRegisteredAgain) {
    writeSystems("second", starting());
    ASSERT_TRUE(items.unregisterItem());

    EXPECT_EQ(failureOf(items.registerItem()), "no failure");

    EXPECT_EQ(contentOf(file), registered());
    EXPECT_EQ(items.status(), LoginItemStatus::enabled);
}

TEST_F(XdgLoginItemsTest, NoticesThatARegisteredProgramIsGoneAlsoWhereAnotherOneStartsIt) {
    writeProgram("100%/velmorand");
    XdgLoginItems percentItems = itemsOf(scratch.path() / "100%/velmorand");
    ASSERT_EQ(failureOf(percentItems.registerItem()), "no failure");
    ASSERT_EQ(percentItems.status(), LoginItemStatus::enabled);

    fs::remove(scratch.path() / "100%/velmorand");

    EXPECT_EQ(percentItems.status(), LoginItemStatus::notRegistered);
}

TEST_F(XdgLoginItemsTest, OpenTheSettingsOfTheDesktop) {
    const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", "i3");

    items.openSystemSettingsLoginItems();

    EXPECT_EQ(log.lines().size(), 1U) << "there are none";
}

class XdgLoginItemsFailureTest : public XdgLoginItemsTest {};

TEST_F(XdgLoginItemsFailureTest, AProgramThatIsNotInstalledIsNotRegistered) {
    fs::remove_all(scratch.path() / "data");

    EXPECT_EQ(failureOf(items.registerItem()), "This copy of Velmorand is not installed.");

    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(XdgLoginItemsFailureTest, AProgramThatIsGoneIsNotRegistered) {
    fs::remove(program);

    EXPECT_EQ(failureOf(items.registerItem()), "There is no program at " + program.native() + " any more.");

    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(XdgLoginItemsFailureTest, AProgramAtAPathThatNoEntryCanNameIsNotRegistered) {
    const std::string sentence =
        "The path of this copy of Velmorand has characters with which it cannot be started at log-in.";
    for (const std::string name : {"a\nb", "a\x7F", "a\xFF", "a=b%"}) {
        writeProgram(name);
        EXPECT_EQ(failureOf(itemsOf(scratch.path() / name).registerItem()), sentence);
    }
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(XdgLoginItemsFailureTest, AFolderInTheEntrysPlaceStays) {
    fs::create_directories(file);

    EXPECT_EQ(failureOf(items.registerItem()), file.native() + " is a folder.");
    EXPECT_EQ(failureOf(items.unregisterItem()), file.native() + " is a folder.");

    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(XdgLoginItemsFailureTest, WhatIsNoEntryStays) {
    scratch.write("config/autostart" / fs::path(fileName), "mine");
    const std::string sentence = file.native() + " cannot be read as a desktop entry and was left as it is.";

    EXPECT_EQ(failureOf(items.registerItem()), sentence);
    EXPECT_EQ(failureOf(items.unregisterItem()), sentence);

    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(XdgLoginItemsFailureTest, ALinkThatLeadsNowhereStays) {
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");

    EXPECT_FALSE(items.registerItem());
    EXPECT_FALSE(items.unregisterItem());

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(scratch.path() / "dotfiles"));
}

TEST_F(XdgLoginItemsFailureTest, AFolderThatMayNotBeWrittenKeepsWhatItHolds) {
    writeUsers(starting() + "Hidden=true\n");
    const OrdinaryUser user(scratch.path());
    fs::permissions(folder, fs::perms(0500));
    const std::string sentence = "Nothing in the folder " + folder.native() + " may be changed.";

    EXPECT_EQ(failureOf(items.registerItem()), sentence);
    EXPECT_EQ(failureOf(items.unregisterItem()), sentence);

    EXPECT_EQ(contentOf(file), "[Desktop Entry]\n" + starting() + "Hidden=true\n");
    EXPECT_THAT(namesIn(folder), ElementsAre(fileName));
    fs::permissions(folder, fs::perms(0700));
}

TEST_F(XdgLoginItemsFailureTest, AFileInTheFoldersPlaceStays) {
    scratch.write("config/autostart", "mine");

    EXPECT_EQ(failureOf(items.registerItem()), folder.native() + " is not a folder.");
    EXPECT_EQ(failureOf(items.unregisterItem()), "no failure");

    EXPECT_EQ(contentOf(folder), "mine");
}

TEST_F(XdgLoginItemsFailureTest, AFileInThePlaceOfAFolderAboveIsTheOneThatIsNamed) {
    scratch.write("config", "mine");

    EXPECT_EQ(failureOf(items.registerItem()), (scratch.path() / "config").native() + " is not a folder.");
}

TEST_F(XdgLoginItemsFailureTest, AFolderAboveThatMayNotBeWrittenIsTheOneThatIsNamed) {
    fs::create_directories(scratch.path() / "config");
    const OrdinaryUser user(scratch.path());
    fs::permissions(scratch.path() / "config", fs::perms(0500));

    EXPECT_EQ(failureOf(items.registerItem()),
              "Nothing in the folder " + (scratch.path() / "config").native() + " may be changed.");

    fs::permissions(scratch.path() / "config", fs::perms(0700));
}

TEST_F(XdgLoginItemsFailureTest, TheFolderToWhichALinkLeadsIsTheOneThatIsNamed) {
    const std::string entry = "[Desktop Entry]\n" + starting() + "Hidden=true\n";
    scratch.write("dotfiles/entry", entry);
    scratch.link("config/autostart" / fs::path(fileName), "../../dotfiles/entry");
    const OrdinaryUser user(scratch.path());
    fs::permissions(scratch.path() / "dotfiles", fs::perms(0500));

    EXPECT_EQ(failureOf(items.registerItem()),
              "Nothing in the folder " + (scratch.path() / "dotfiles").native() + " may be changed.");

    EXPECT_EQ(contentOf(scratch.path() / "dotfiles/entry"), entry);
    fs::permissions(scratch.path() / "dotfiles", fs::perms(0700));
}

TEST_F(XdgLoginItemsFailureTest, AFullDiskLeavesTheItemAsItIs) {
    const SmallFileSystem disk(65536);
    if (!disk.isMounted()) GTEST_SKIP() << "no small file system to fill: " << disk.whyNot();
    places.usersFolder = disk.path() / "autostart";
    XdgLoginItems onDisk("app.velmorand.Velmorand", places, settings);
    fs::create_directory(places.usersFolder);
    disk.fill();

    EXPECT_EQ(failureOf(onDisk.registerItem()),
              "There is no space left for " + (places.usersFolder / fileName).native() + ".");

    EXPECT_EQ(onDisk.status(), LoginItemStatus::notRegistered);
    EXPECT_THAT(namesIn(places.usersFolder), IsEmpty());
}

TEST_F(XdgLoginItemsFailureTest, WhatCannotBeMadeSafeDoesNotTakeTheOldEntrysPlace) {
    writeUsers(starting() + "Hidden=true\n");
    StorageCalls calls;
    calls.failSynchronizing([this](const fs::path& path) { return path != folder; }, EIO);

    EXPECT_THAT(failureOf(items.registerItem()), testing::EndsWith(": Input/output error."));

    EXPECT_EQ(items.status(), LoginItemStatus::requiresApproval);
}

TEST_F(XdgLoginItemsFailureTest, AUsersShareOfTheDiskThatIsUsedUpIsAFullDisk) {
    StorageCalls calls;
    calls.failSynchronizing([](const fs::path& path) { return !fs::is_directory(path); }, EDQUOT);

    EXPECT_EQ(failureOf(items.registerItem()), "There is no space left for " + file.native() + ".");
}

}  // namespace
}  // namespace velmorand

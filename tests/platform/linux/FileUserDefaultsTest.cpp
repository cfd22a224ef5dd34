#include "platform/linux/FileUserDefaults.h"

#include "platform/linux/support/StorageCalls.h"
#include "platform/linux/support/StoredFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::StartsWith;

class FileUserDefaultsTest : public StoredFilesTest {
protected:
    /// A file such as a process leaves that is killed while it stores a value.
    void leave(const fs::path& relative, std::chrono::seconds age) {
        scratch.write(relative, "half");
        fs::last_write_time(scratch.path() / relative, fs::file_time_type::clock::now() - age);
    }
};

TEST_F(FileUserDefaultsTest, HoldNothingWithoutTheirFolder) {
    EXPECT_EQ(stored(), "nothing");
    EXPECT_FALSE(fs::exists(folder)) << "reading made it";
}

TEST_F(FileUserDefaultsTest, HoldNothingUnderAKeyThatWasNeverStored) {
    store("value");

    EXPECT_EQ(defaults.data("Other"), std::nullopt);
}

TEST_F(FileUserDefaultsTest, HoldNothingWhereTheFolderIsAFile) {
    scratch.write("settings", "");

    EXPECT_EQ(stored(), "nothing");
}

TEST_F(FileUserDefaultsTest, HoldWhatWasStoredByteForByte) {
    const std::string value("a\0b\r\n\xff\xfe", 7);
    store(value);

    EXPECT_EQ(stored(), value);
    EXPECT_EQ(contentOf(file), value);
    EXPECT_EQ(FileUserDefaults(folder).data(key), value) << "for the next run of the program";
}

TEST_F(FileUserDefaultsTest, HoldAnEmptyValue) {
    store("");

    EXPECT_EQ(defaults.data(key), "");
}

TEST_F(FileUserDefaultsTest, HoldTheLastValue) {
    store(std::string(100'000, 'a'));
    store("short");

    EXPECT_EQ(stored(), "short");
    EXPECT_THAT(namesIn(folder), ElementsAre(key));
}

TEST_F(FileUserDefaultsTest, KeepKeysApart) {
    store("value");
    ASSERT_TRUE(defaults.setData("Other", "other value"));

    EXPECT_EQ(stored(), "value");
    EXPECT_EQ(defaults.data("Other"), "other value");
}

TEST_F(FileUserDefaultsTest, MakeTheFolderAndThoseAboveItForTheUserAlone) {
    FileUserDefaults deep(folder / "one/two");
    ASSERT_TRUE(deep.setData(key, "value"));

    for (const auto& made : {folder, folder / "one", folder / "one/two"}) EXPECT_EQ(modeOf(made), 0700U) << made;
    EXPECT_EQ(modeOf(folder / "one/two" / key), 0600U);
}

TEST_F(FileUserDefaultsTest, LeaveTheModeOfAFolderThatIsThere) {
    fs::create_directory(folder);
    fs::permissions(folder, fs::perms(0750));

    store("value");

    EXPECT_EQ(modeOf(folder), 0750U);
}

TEST_F(FileUserDefaultsTest, ReplaceAFileForEverybodyByOneForTheUserAlone) {
    scratch.write("settings/State", "old");
    fs::permissions(file, fs::perms(0666));

    store("new");

    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(stored(), "new");
}

TEST_F(FileUserDefaultsTest, ReplaceTheFileAndDoNotWriteIntoIt) {
    store("old");
    fs::create_hard_link(file, folder / "same");

    store("new");

    EXPECT_EQ(contentOf(folder / "same"), "old");
}

TEST_F(FileUserDefaultsTest, MakeTheBytesSafeFirstThenPutThemInPlaceAndMakeThatSafe) {
    store("old");
    const StorageCalls calls;

    store("new");

    const std::string temporary = folder / ".State.new-";
    EXPECT_THAT(calls.seen(), ElementsAre(StartsWith("fsync " + temporary), StartsWith("rename " + temporary),
                                          "fsync " + folder.native()));
    EXPECT_THAT(calls.seen()[1], testing::EndsWith(" " + file.native()));
}

TEST_F(FileUserDefaultsTest, MakeEachNewFolderSafeInTheOneAboveIt) {
    const StorageCalls calls;

    ASSERT_TRUE(FileUserDefaults(folder / "one/two").setData(key, "value"));

    ASSERT_EQ(calls.seen().size(), 6U);
    EXPECT_EQ(calls.seen()[0], "fsync " + scratch.path().native());
    EXPECT_EQ(calls.seen()[1], "fsync " + folder.native());
    EXPECT_EQ(calls.seen()[2], "fsync " + (folder / "one").native());
}

TEST_F(FileUserDefaultsTest, FollowARelativeLinkInTheFilesPlace) {
    scratch.write("elsewhere/document", "old");
    scratch.link("settings/State", "../elsewhere/document");
    EXPECT_EQ(stored(), "old");

    store("new");

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contentOf(scratch.path() / "elsewhere/document"), "new");
    EXPECT_THAT(namesIn(folder), ElementsAre(key));
    EXPECT_THAT(namesIn(scratch.path() / "elsewhere"), ElementsAre("document"));
}

TEST_F(FileUserDefaultsTest, FollowAnAbsoluteLink) {
    scratch.write("elsewhere/document", "old");
    scratch.link("settings/State", (scratch.path() / "elsewhere/document").native());

    store("new");

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contentOf(scratch.path() / "elsewhere/document"), "new");
}

TEST_F(FileUserDefaultsTest, FollowAChainOfLinks) {
    scratch.write("elsewhere/document", "old");
    scratch.link("settings/second", "../elsewhere/third");
    scratch.link("settings/State", "second");
    scratch.link("elsewhere/third", "document");

    store("new");

    for (const char* link : {"settings/State", "settings/second", "elsewhere/third"})
        EXPECT_TRUE(fs::is_symlink(scratch.path() / link)) << link;
    EXPECT_EQ(contentOf(scratch.path() / "elsewhere/document"), "new");
    EXPECT_EQ(stored(), "new");
}

TEST_F(FileUserDefaultsTest, MakeTheFileThatALinkLeadsTo) {
    fs::create_directory(scratch.path() / "elsewhere");
    scratch.link("settings/State", "../elsewhere/document");
    EXPECT_EQ(stored(), "nothing");

    store("new");

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contentOf(scratch.path() / "elsewhere/document"), "new");
}

TEST_F(FileUserDefaultsTest, UseAFolderThatIsALink) {
    fs::create_directory(scratch.path() / "elsewhere");
    scratch.link("settings", "elsewhere");

    store("new");

    EXPECT_TRUE(fs::is_symlink(folder));
    EXPECT_EQ(contentOf(scratch.path() / "elsewhere/State"), "new");
}

TEST_F(FileUserDefaultsTest, RemoveWhatKilledProcessesLeftMoreThanAMinuteAgo) {
    leave("settings/.State.new-old123", 61s);
    leave("settings/.State.new-young1", 50s);

    store("value");

    EXPECT_THAT(namesIn(folder), ElementsAre(".State.new-young1", key));
}

TEST_F(FileUserDefaultsTest, RemoveLeftoversWhereALinkLeads) {
    leave("elsewhere/.document.new-old123", 61s);
    scratch.link("settings/State", "../elsewhere/document");

    store("value");

    EXPECT_THAT(namesIn(scratch.path() / "elsewhere"), ElementsAre("document"));
}

TEST_F(FileUserDefaultsTest, RemoveNothingElse) {
    leave("settings/State.new-mine", 1h);
    leave("settings/.State.old-mine", 1h);
    leave("settings/.Other.new-old123", 1h);

    store("value");

    EXPECT_THAT(namesIn(folder), ElementsAre(".Other.new-old123", ".State.old-mine", key, "State.new-mine"));
}

TEST_F(FileUserDefaultsTest, RemoveNothingBeforeAValueIsStored) {
    leave("settings/.State.new-old123", 1h);

    EXPECT_EQ(stored(), "nothing");

    EXPECT_THAT(namesIn(folder), ElementsAre(".State.new-old123"));
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/support/OrdinaryUser.h"
#include "platform/linux/support/SmallFileSystem.h"
#include "platform/linux/support/StorageCalls.h"
#include "platform/linux/support/StoredFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <csignal>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

/// What goes wrong is told with its path and reason, and takes nothing away.
class FileUserDefaultsFailureTest : public StoredFilesTest {
protected:
    /// That "old" is there, and nothing beside it.
    void expectOldValueAlone() {
        EXPECT_EQ(stored(), "old");
        EXPECT_THAT(namesIn(folder), ElementsAre(key));
    }
};

/// Lets no file grow beyond a size until the object dies: writing goes on up to there and then fails.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : signalBefore_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalBefore_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_{};
    void (*signalBefore_)(int);
};

TEST_F(FileUserDefaultsFailureTest, APipeInTheFilesPlaceIsNeitherWaitedForNorReplaced) {
    scratch.makePipe("settings/State");

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": it is no file");
    EXPECT_EQ(failureToStore("new"), "Cannot replace " + file.native() + ": it is no file");

    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_THAT(namesIn(folder), ElementsAre(key));
}

TEST_F(FileUserDefaultsFailureTest, AFolderInTheFilesPlaceIsNotReplaced) {
    fs::create_directories(file);

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": it is no file");
    EXPECT_EQ(failureToStore("new"), "Cannot replace " + file.native() + ": it is no file");

    EXPECT_TRUE(fs::is_directory(file));
    EXPECT_THAT(namesIn(folder), ElementsAre(key));
}

TEST_F(FileUserDefaultsFailureTest, WhatIsNoFileBehindALinkIsNotReplaced) {
    scratch.makePipe("elsewhere/pipe");
    scratch.link("settings/State", "../elsewhere/pipe");

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": it is no file");
    EXPECT_EQ(failureToStore("new"), "Cannot replace " + (folder / "../elsewhere/pipe").native() + ": it is no file");

    EXPECT_TRUE(fs::is_fifo(scratch.path() / "elsewhere/pipe"));
    EXPECT_THAT(namesIn(scratch.path() / "elsewhere"), ElementsAre("pipe"));
}

TEST_F(FileUserDefaultsFailureTest, ADeviceIsNotRead) {
    scratch.link("settings/State", "/dev/zero");

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": it is no file");
}

TEST_F(FileUserDefaultsFailureTest, ASocketInTheFilesPlaceIsNotReplaced) {
    fs::create_directory(folder);
    const int socketFile = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    ASSERT_LT(file.native().size(), sizeof address.sun_path);
    std::ranges::copy(file.native(), address.sun_path);
    const int bound = bind(socketFile, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(socketFile);
    ASSERT_EQ(bound, 0);

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": No such device or address");
    EXPECT_EQ(failureToStore("new"), "Cannot replace " + file.native() + ": it is no file");

    EXPECT_TRUE(fs::is_socket(file));
}

TEST_F(FileUserDefaultsFailureTest, LinksInACircleAreAFailureAndStay) {
    scratch.link("settings/State", "other");
    scratch.link("settings/other", "State");

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": Too many levels of symbolic links");
    EXPECT_EQ(failureToStore("new"), "Cannot follow the link " + file.native() + ": Too many levels of symbolic links");

    EXPECT_EQ(fs::read_symlink(file), "other");
    EXPECT_EQ(fs::read_symlink(folder / "other"), "State");
    EXPECT_THAT(namesIn(folder), ElementsAre(key, "other"));
}

TEST_F(FileUserDefaultsFailureTest, ALinkIntoAFolderThatIsNotThereIsAFailureAndStays) {
    scratch.link("settings/State", "../elsewhere/document");

    EXPECT_EQ(failureToStore("new"),
              "Cannot make a file in " + (folder / "../elsewhere").native() + ": No such file or directory");

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(scratch.path() / "elsewhere"));
}

TEST_F(FileUserDefaultsFailureTest, AFileInAFoldersPlaceStays) {
    scratch.write("settings", "mine");

    EXPECT_EQ(failureToStore("new"), "Cannot make a file in " + folder.native() + ": Not a directory");
    EXPECT_EQ(contentOf(folder), "mine");
}

TEST_F(FileUserDefaultsFailureTest, AFolderCannotBeMadeBelowAFile) {
    scratch.write("settings", "mine");
    FileUserDefaults below(folder / "one");

    const auto outcome = below.setData(key, "new");

    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description, "Cannot make the folder " + (folder / "one").native() + ": Not a directory");
    EXPECT_EQ(contentOf(folder), "mine");
}

TEST_F(FileUserDefaultsFailureTest, AFolderIsNotMadeWhereTheUserMayNotWrite) {
    const OrdinaryUser user(scratch.path());
    fs::permissions(scratch.path(), fs::perms(0500));

    EXPECT_EQ(failureToStore("new"), "Cannot make the folder " + folder.native() + ": Permission denied");

    fs::permissions(scratch.path(), fs::perms(0700));
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(FileUserDefaultsFailureTest, AReadOnlyFolderKeepsWhatItHolds) {
    store("old");
    const OrdinaryUser user(scratch.path());
    fs::permissions(folder, fs::perms(0500));

    EXPECT_EQ(failureToStore("new"), "Cannot make a file in " + folder.native() + ": Permission denied");

    expectOldValueAlone();
    fs::permissions(folder, fs::perms(0700));
}

TEST_F(FileUserDefaultsFailureTest, AReadOnlyFileInAFolderOfTheUsersIsReplaced) {
    store("old");
    const OrdinaryUser user(scratch.path());
    fs::permissions(file, fs::perms(0400));

    store("new");

    EXPECT_EQ(stored(), "new");
}

TEST_F(FileUserDefaultsFailureTest, AFileThatTheUserMayNotReadIsNoAbsence) {
    store("old");
    const OrdinaryUser user(scratch.path());
    fs::permissions(file, fs::perms::none);

    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": Permission denied");
}

TEST_F(FileUserDefaultsFailureTest, AFileOfSixteenMebibytesIsReadAndALargerOneIsNot) {
    scratch.write("settings/State", "");
    fs::resize_file(file, 16U << 20U);
    EXPECT_EQ(stored().size(), 16U << 20U);

    fs::resize_file(file, (16U << 20U) + 1);
    EXPECT_EQ(stored(), "Cannot read " + file.native() + ": File too large");
}

TEST_F(FileUserDefaultsFailureTest, AValueThatIsCutShortLeavesTheOldOneAndNothingElse) {
    store("old");
    {
        const FileSizeLimit limit(4096);
        EXPECT_THAT(
            failureToStore(std::string(10'000, 'n')),
            AllOf(StartsWith("Cannot write " + (folder / ".State.new-").native()), EndsWith(": File too large")));
    }

    expectOldValueAlone();
}

TEST_F(FileUserDefaultsFailureTest, AFullDiskLeavesTheOldValueAndNothingElse) {
    const SmallFileSystem disk(65536);
    if (!disk.isMounted()) GTEST_SKIP() << "no small file system to fill: " << disk.whyNot();
    FileUserDefaults onDisk(disk.path() / "settings");
    ASSERT_TRUE(onDisk.setData(key, "old"));
    disk.fill();

    const auto outcome = onDisk.setData(key, "new");

    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().description,
                AllOf(StartsWith("Cannot write " + (disk.path() / "settings/.State.new-").native()),
                      EndsWith(": No space left on device")));
    EXPECT_EQ(onDisk.data(key), "old");
    EXPECT_THAT(namesIn(disk.path() / "settings"), ElementsAre(key));
    fs::remove(disk.path() / "filler");
    EXPECT_TRUE(onDisk.setData(key, "new")) << "there is room again";
}

TEST_F(FileUserDefaultsFailureTest, BytesThatCannotBeMadeSafeDoNotTakeTheOldOnesPlace) {
    store("old");
    {
        StorageCalls calls;
        calls.failSynchronizing([this](const fs::path& path) { return path != folder; }, EIO);
        EXPECT_THAT(failureToStore("new"), AllOf(StartsWith("Cannot write "), EndsWith(": Input/output error")));
    }

    expectOldValueAlone();
}

TEST_F(FileUserDefaultsFailureTest, AFolderThatCannotBeMadeSafeIsToldOf) {
    store("old");
    StorageCalls calls;
    calls.failSynchronizing([this](const fs::path& path) { return path == folder; }, EIO);

    EXPECT_EQ(failureToStore("new"), "Cannot store " + folder.native() + ": Input/output error");
    EXPECT_EQ(stored(), "new") << "whole, but perhaps not for long";
}

TEST_F(FileUserDefaultsFailureTest, AFileSystemThatCannotSynchroniseFoldersIsNoFailure) {
    StorageCalls calls;
    calls.failSynchronizing([](const fs::path& path) { return fs::is_directory(path); }, EINVAL);

    store("new");

    EXPECT_EQ(stored(), "new");
}

TEST_F(FileUserDefaultsFailureTest, AFolderThatCannotBeListedIsNoFailure) {
    store("old");
    StorageCalls calls;
    calls.failListing(EIO);

    store("new");

    EXPECT_EQ(stored(), "new");
}

}  // namespace
}  // namespace velmorand

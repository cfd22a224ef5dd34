#include "platform/linux/support/ScratchFolder.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "settings/ApplicationChooserModel.h"
#include "settings/support/QtPrinting.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

using Answer = std::optional<std::vector<fs::path>>;

/// A chooser whose user looks for an application that is not in the list.
class ApplicationChooserElsewhereTest : public testing::Test {
protected:
    ApplicationChooserElsewhereTest() {
        applications().install("/Applications/Editor", {"org.example.Editor", "Editor"});
    }

    [[nodiscard]] SimulatedApplications& applications() { return platform.workspace().applications(); }
    /// An application in the folder that is not in the list.
    fs::path install(const fs::path& file, const std::string& identifier, const std::string& name) {
        folder.write(file, "");
        applications().install(folder.path() / file, {identifier, name, {}, false});
        return folder.path() / file;
    }
    void open(const fs::path& startingFolder) {
        model.choose({.message = "Choose", .startingFolder = startingFolder, .allowsSeveral = true},
                     [this](Answer answer) { answers.push_back(std::move(answer)); });
    }
    void lookElsewhere() {
        open(folder.path());
        model.lookElsewhere();
    }
    [[nodiscard]] std::string shown() { return model.folder()->path().toStdString(); }

    ScratchFolder folder;
    SimulatedPlatform platform;
    ApplicationChooserModel model{platform.workspace(), platform.runLoop()};
    std::vector<Answer> answers;
};

TEST_F(ApplicationChooserElsewhereTest, BeginsInTheWantedFolderOrElseAtHome) {
    lookElsewhere();
    EXPECT_TRUE(model.isElsewhere());
    EXPECT_EQ(shown(), folder.path());
    model.cancel();

    open("/nowhere/at/all");
    EXPECT_FALSE(model.isElsewhere());
    model.lookElsewhere();
    EXPECT_EQ(shown(), QDir::homePath().toStdString());
}

TEST_F(ApplicationChooserElsewhereTest, ComesBackToTheFolderThatWasLeft) {
    folder.write("inner/some.txt", "");
    lookElsewhere();
    model.open(0);
    model.back();
    EXPECT_FALSE(model.isElsewhere());
    EXPECT_TRUE(model.isOpen());

    model.lookElsewhere();

    EXPECT_EQ(shown(), folder.path() / "inner");
}

TEST_F(ApplicationChooserElsewhereTest, NeedsAnOpenPanel) {
    model.lookElsewhere();
    EXPECT_FALSE(model.isElsewhere());

    lookElsewhere();
    model.back();
    model.back();
    EXPECT_FALSE(model.isOpen());
}

TEST_F(ApplicationChooserElsewhereTest, GoesIntoFoldersAndOutOfThem) {
    folder.write("a/some.txt", "");
    folder.write("b/some.txt", "");
    lookElsewhere();

    model.open(1);
    EXPECT_EQ(shown(), folder.path() / "b");

    EXPECT_EQ(model.leaveFolder(), 1) << "the row of the folder that was left";
    EXPECT_EQ(shown(), folder.path());
}

TEST_F(ApplicationChooserElsewhereTest, TakesAnApplicationAndShowsItInTheList) {
    const fs::path own = install("own.desktop", "org.example.Own", "Own");
    std::vector<int> rows;
    QObject::connect(&model, &ApplicationChooserModel::otherAdded, [&](int row) { rows.push_back(row); });
    lookElsewhere();

    model.open(0);

    EXPECT_FALSE(model.isElsewhere());
    EXPECT_THAT(rows, ElementsAre(1)) << "behind the editor";
    EXPECT_EQ(model.applications()->chosenCount(), 1);
    model.confirm();
    platform.runLoop().runPending();
    EXPECT_THAT(answers, ElementsAre(Answer({own})));
}

TEST_F(ApplicationChooserElsewhereTest, AddsNothingThatIsInTheList) {
    install("copy.desktop", "org.example.Editor", "A copy");
    lookElsewhere();

    model.open(0);

    EXPECT_EQ(model.applications()->count(), 1);
    EXPECT_THAT(model.applications()->chosenLocations(), ElementsAre("/Applications/Editor"));
}

TEST_F(ApplicationChooserElsewhereTest, SaysWhatIsNoApplication) {
    folder.write("broken.desktop", "");
    lookElsewhere();

    model.open(0);

    EXPECT_EQ(model.otherProblem(), "“broken.desktop” is not an application with windows of its own.");
    EXPECT_TRUE(model.isElsewhere());
    EXPECT_EQ(model.applications()->chosenCount(), 0);
    EXPECT_EQ(model.applications()->count(), 1);
}

TEST_F(ApplicationChooserElsewhereTest, ForgetsWhatWasWrong) {
    folder.write("broken.desktop", "");
    const fs::path own = install("own.desktop", "org.example.Own", "Own");
    const auto fail = [&] { model.openPath(QString::fromStdString(folder.path() / "broken.desktop")); };
    lookElsewhere();

    fail();
    model.openPath(QString::fromStdString(own));
    EXPECT_EQ(model.otherProblem(), "");
    fail();
    model.openPath("/");
    EXPECT_EQ(model.otherProblem(), "");
    model.lookElsewhere();
    fail();
    model.back();
    EXPECT_EQ(model.otherProblem(), "");
    fail();
    model.cancel();
    open("/");
    EXPECT_EQ(model.otherProblem(), "");
}

TEST_F(ApplicationChooserElsewhereTest, OpensPathsAsUsersWriteThem) {
    folder.write("inner/deep/some.txt", "");
    lookElsewhere();

    model.openPath("inner");
    EXPECT_EQ(shown(), folder.path() / "inner");
    model.openPath(" deep/ ");
    EXPECT_EQ(shown(), folder.path() / "inner/deep");
    model.openPath("..");
    EXPECT_EQ(shown(), folder.path() / "inner");
    model.openPath(QString::fromStdString("file://" + folder.path().string()));
    EXPECT_EQ(shown(), folder.path());
    model.openPath("~");
    EXPECT_EQ(shown(), QDir::homePath().toStdString());
    model.openPath(" ");
    EXPECT_EQ(shown(), QDir::homePath().toStdString());
    EXPECT_EQ(model.otherProblem(), "");
}

TEST_F(ApplicationChooserElsewhereTest, SaysWhatIsNotThere) {
    lookElsewhere();

    model.openPath("/nowhere/at/all");

    EXPECT_EQ(model.otherProblem(), "There is no “/nowhere/at/all”.");
    EXPECT_EQ(shown(), folder.path());
}

TEST_F(ApplicationChooserElsewhereTest, SaysWhichFolderCannotBeOpened) {
    if (geteuid() == 0) GTEST_SKIP() << "nothing is closed to root";
    folder.write("closed/some.txt", "");
    chmod((folder.path() / "closed").c_str(), 0);
    lookElsewhere();

    model.open(0);

    EXPECT_EQ(model.otherProblem().toStdString(), "“" + (folder.path() / "closed").string() + "” cannot be opened.");
    EXPECT_EQ(shown(), folder.path());
    chmod((folder.path() / "closed").c_str(), 0700);
}

}  // namespace
}  // namespace velmorand

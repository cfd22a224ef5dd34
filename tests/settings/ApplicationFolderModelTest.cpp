#include "settings/ApplicationFolderModel.h"

#include "platform/linux/support/ScratchFolder.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "settings/support/QtPrinting.h"

#include <gmock/gmock.h>

#include <QLocale>
#include <QStringList>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class ApplicationFolderModelTest : public testing::Test {
protected:
    ApplicationFolderModelTest() { QLocale::setDefault(QLocale(QStringLiteral("en_US"))); }
    ~ApplicationFolderModelTest() override { QLocale::setDefault(before_); }

    void write(const fs::path& file) { folder.write(file, ""); }
    void writeApplication(const fs::path& file, SimulatedInstalledApplication application) {
        write(file);
        platform.workspace().applications().install(folder.path() / file, std::move(application));
    }
    [[nodiscard]] QStringList texts(int role) {
        QStringList found;
        for (int row = 0; row < model.rowCount(); ++row) found.append(model.index(row).data(role).toString());
        return found;
    }
    [[nodiscard]] QStringList names() { return texts(ApplicationFolderModel::nameRole); }

    ScratchFolder folder;
    SimulatedPlatform platform;
    ApplicationFolderModel model{platform.workspace(), nullptr};

private:
    QLocale before_;
};

TEST_F(ApplicationFolderModelTest, ShowsNothingAtFirst) {
    EXPECT_EQ(model.count(), 0);
    EXPECT_EQ(model.path(), "");
    EXPECT_FALSE(model.hasParent());
}

TEST_F(ApplicationFolderModelTest, ShowsWhatCannotBeShownAsItIs) {
    write("a\nb/some.txt");
    writeApplication("\u202Emoc.desktop", {"org.example.Editor", "Two\nLines"});

    EXPECT_TRUE(model.enter(folder.path()));

    EXPECT_THAT(names(), ElementsAre("a�b", "Two�Lines"));
    EXPECT_THAT(texts(ApplicationFolderModel::fileNameRole), ElementsAre("a�b", "�moc.desktop"));
    EXPECT_EQ(model.location(0), folder.path() / "a\nb");
}

TEST_F(ApplicationFolderModelTest, ShowsFoldersAndThenApplicationsByTheirNames) {
    write("Tools/some.txt");
    write("archive 10/some.txt");
    write("Archive 9/some.txt");
    writeApplication("1.desktop", {"org.example.Viewer", "viewer"});
    writeApplication("2.desktop", {"org.example.Editor", "Editor"});
    write("broken.desktop");

    EXPECT_TRUE(model.enter(folder.path()));

    EXPECT_THAT(names(), ElementsAre("Archive 9", "archive 10", "Tools", "broken.desktop", "Editor", "viewer"));
    EXPECT_THAT(texts(ApplicationFolderModel::fileNameRole),
                ElementsAre("Archive 9", "archive 10", "Tools", "broken.desktop", "2.desktop", "1.desktop"));
    EXPECT_TRUE(model.isFolder(2));
    EXPECT_FALSE(model.isFolder(3));
    EXPECT_EQ(model.location(4), folder.path() / "2.desktop");
}

TEST_F(ApplicationFolderModelTest, LeavesOutWhatIsHiddenAndWhatIsNoApplication) {
    write(".hidden/some.txt");
    write(".hidden.desktop");
    write("picture.png");
    write("program");

    EXPECT_TRUE(model.enter(folder.path()));

    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ApplicationFolderModelTest, TellsWhatARowShows) {
    writeApplication("a.desktop",
                     {"org.example.Editor", "Editor", ApplicationIcon{ApplicationIcon::Source::theme, "editor"}});
    writeApplication("b.desktop", {"org.example.Viewer", "Viewer"});
    model.enter(folder.path());

    EXPECT_NE(model.index(0).data(ApplicationFolderModel::iconRole), "");
    EXPECT_EQ(model.index(1).data(ApplicationFolderModel::iconRole), "");
    EXPECT_EQ(model.index(0).data(ApplicationFolderModel::folderRole), false);
    EXPECT_THAT(model.roleNames().values(), testing::UnorderedElementsAre("name", "fileName", "icon", "isFolder"));
    EXPECT_FALSE(model.data(QModelIndex(), ApplicationFolderModel::nameRole).isValid());
}

TEST_F(ApplicationFolderModelTest, ShowsNamesThatAreNoTextAllTheSame) {
    write("caf\xE9/some.txt");
    model.enter(folder.path());

    EXPECT_THAT(names(), ElementsAre("caf\uFFFD"));
    EXPECT_TRUE(model.enter(*model.location(0)));
}

TEST_F(ApplicationFolderModelTest, FollowsLinks) {
    write("real/some.txt");
    folder.link("link", "real");
    folder.link("nowhere", "gone");
    model.enter(folder.path());

    EXPECT_THAT(names(), ElementsAre("link", "real"));
    EXPECT_TRUE(model.isFolder(0));
}

TEST_F(ApplicationFolderModelTest, StaysWhereItIsWhenAFolderCannotBeRead) {
    write("inner/some.txt");
    write("file.desktop");
    model.enter(folder.path());

    EXPECT_FALSE(model.enter(folder.path() / "gone"));
    EXPECT_FALSE(model.enter(folder.path() / "file.desktop"));

    EXPECT_EQ(model.folder(), folder.path());
    EXPECT_EQ(model.count(), 2);
}

TEST_F(ApplicationFolderModelTest, KnowsItsFolderWithoutDetours) {
    write("inner/some.txt");
    model.enter(folder.path() / "inner/../inner/.");

    EXPECT_EQ(model.folder(), folder.path() / "inner");
    EXPECT_EQ(model.path().toStdString(), (folder.path() / "inner").string());
    EXPECT_TRUE(model.hasParent());

    EXPECT_TRUE(model.enter("/"));
    EXPECT_EQ(model.path(), "/");
    EXPECT_FALSE(model.hasParent());
}

TEST_F(ApplicationFolderModelTest, HasNothingWhereThereIsNoRow) {
    model.enter(folder.path());

    EXPECT_EQ(model.location(0), std::nullopt);
    EXPECT_EQ(model.location(-1), std::nullopt);
    EXPECT_FALSE(model.isFolder(0));
    EXPECT_EQ(model.rowOf("gone"), 0);
}

}  // namespace
}  // namespace velmorand

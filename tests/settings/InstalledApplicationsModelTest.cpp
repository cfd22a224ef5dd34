#include "settings/InstalledApplicationsModel.h"

#include "settings/SearchKey.h"
#include "settings/support/QtPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLocale>
#include <QStringList>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

InstalledApplication application(const std::string& identifier, const std::string& name) {
    return {"/Applications/" + identifier, identifier, name, std::nullopt};
}

class InstalledApplicationsModelTest : public testing::Test {
protected:
    ~InstalledApplicationsModelTest() override { QLocale::setDefault(before_); }

    /// With these names, and identifiers that count them.
    void setNames(const std::vector<std::string>& names) {
        std::vector<InstalledApplication> applications;
        for (const std::string& name : names)
            applications.push_back(application("org.example.number" + std::to_string(applications.size()), name));
        model.setApplications(applications, true);
    }
    [[nodiscard]] QStringList texts(int role) {
        QStringList found;
        for (int row = 0; row < model.rowCount(); ++row) found.append(model.index(row).data(role).toString());
        return found;
    }
    [[nodiscard]] QStringList names() { return texts(InstalledApplicationsModel::nameRole); }
    [[nodiscard]] QStringList chosen() {
        QStringList found;
        for (const auto& location : model.chosenLocations())
            found.append(QString::fromStdString(location.filename().string()));
        return found;
    }
    [[nodiscard]] QStringList namesFoundBy(const QString& text) {
        model.setSearchText(text);
        return names();
    }

    InstalledApplicationsModel model{nullptr};

private:
    QLocale before_;
};

TEST_F(InstalledApplicationsModelTest, ShowsAndChoosesWhatCannotBeShownAsItIs) {
    model.setApplications({application("a\nb", "Two\nLines"), application("blank", " ")}, true);

    EXPECT_THAT(names(), ElementsAre("Unnamed app", "Two�Lines"));
    EXPECT_THAT(texts(InstalledApplicationsModel::identifierRole), ElementsAre("blank", "a�b"));
    model.setChosen(1, true);
    EXPECT_THAT(chosen(), ElementsAre("a\nb"));
}

TEST_F(InstalledApplicationsModelTest, IsEmptyAtFirst) {
    EXPECT_EQ(model.count(), 0);
    EXPECT_EQ(model.chosenCount(), 0);
    EXPECT_THAT(model.chosenLocations(), IsEmpty());
}

TEST_F(InstalledApplicationsModelTest, TellsWhatARowShows) {
    model.setApplications(
        {{"/a", "org.example.Editor", "Editor", ApplicationIcon{ApplicationIcon::Source::theme, "editor"}},
         {"/b", "org.example.Viewer", "Viewer", std::nullopt}},
        true);

    EXPECT_THAT(names(), ElementsAre("Editor", "Viewer"));
    EXPECT_THAT(texts(InstalledApplicationsModel::identifierRole),
                ElementsAre("org.example.Editor", "org.example.Viewer"));
    EXPECT_NE(model.index(0).data(InstalledApplicationsModel::iconRole), "");
    EXPECT_EQ(model.index(1).data(InstalledApplicationsModel::iconRole), "");
    EXPECT_EQ(model.index(0).data(InstalledApplicationsModel::chosenRole), false);
    EXPECT_EQ(model.roleNames().value(InstalledApplicationsModel::nameRole), "name");
    EXPECT_EQ(model.roleNames().value(InstalledApplicationsModel::identifierRole), "identifier");
    EXPECT_EQ(model.roleNames().value(InstalledApplicationsModel::iconRole), "icon");
    EXPECT_EQ(model.roleNames().value(InstalledApplicationsModel::chosenRole), "chosen");
    EXPECT_FALSE(model.data(QModelIndex(), InstalledApplicationsModel::nameRole).isValid());
}

TEST_F(InstalledApplicationsModelTest, OrdersNamesAsTheUsersLanguageDoes) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    setNames({"Zebra", "editor 10", "Äpfel", "Editor 9", "apfel", "Birne"});

    EXPECT_THAT(names(), ElementsAre("apfel", "Äpfel", "Birne", "Editor 9", "editor 10", "Zebra"));
}

TEST_F(InstalledApplicationsModelTest, OrdersEqualNamesByTheirIdentifiers) {
    model.setApplications({application("b", "Files"), application("A", "Files"), application("a", "Files")}, true);

    EXPECT_THAT(texts(InstalledApplicationsModel::identifierRole), ElementsAre("A", "a", "b"));
}

TEST_F(InstalledApplicationsModelTest, FindsNamesWhateverTheirLetterCaseAndAccents) {
    setNames({"Éditeur", "Kalender", "Überblick", "Smørrebrød"});

    EXPECT_THAT(namesFoundBy("EDI"), ElementsAre("Éditeur"));
    EXPECT_THAT(namesFoundBy("ubér"), ElementsAre("Überblick"));
    EXPECT_THAT(namesFoundBy("smorrebr"), ElementsAre("Smørrebrød"));
    EXPECT_THAT(namesFoundBy("brød"), ElementsAre("Smørrebrød"));
    EXPECT_THAT(namesFoundBy("q"), IsEmpty());
}

TEST_F(InstalledApplicationsModelTest, FindsIdentifiersToo) {
    model.setApplications({application("org.example.Nautilus", "Files"), application("org.other.Editor", "Text")},
                          true);

    EXPECT_THAT(namesFoundBy("nautilus"), ElementsAre("Files"));
    EXPECT_THAT(namesFoundBy("OTHER"), ElementsAre("Text"));
}

TEST_F(InstalledApplicationsModelTest, FindsWhatHasEveryWordOfTheSearch) {
    setNames({"Text Editor", "Image Editor", "Text Viewer"});

    EXPECT_THAT(namesFoundBy("  edit   text "), ElementsAre("Text Editor"));
    EXPECT_THAT(namesFoundBy("edit number1"), ElementsAre("Image Editor"));
    EXPECT_THAT(namesFoundBy("   "), ElementsAre("Image Editor", "Text Editor", "Text Viewer"));
}

TEST_F(InstalledApplicationsModelTest, FindsNothingAcrossTheEndOfTheName) {
    model.setApplications({application("org", "Editor")}, true);

    EXPECT_THAT(namesFoundBy("editororg"), IsEmpty());
}

TEST_F(InstalledApplicationsModelTest, FindsNamesFromRightToLeft) {
    setNames({"עורך טקסט", "محرر"});

    EXPECT_THAT(namesFoundBy("טקסט"), ElementsAre("עורך טקסט"));
    EXPECT_THAT(namesFoundBy("مُحرّر"), ElementsAre("محرر"));
}

TEST_F(InstalledApplicationsModelTest, TellsItsCountWithEverySearch) {
    setNames({"One", "Two"});
    std::vector<int> counts;
    QObject::connect(&model, &InstalledApplicationsModel::countChanged, [&] { counts.push_back(model.count()); });

    model.setSearchText("two");
    model.setSearchText("two");
    model.setSearchText("");

    EXPECT_THAT(counts, ElementsAre(1, 2));
}

TEST_F(InstalledApplicationsModelTest, KeepsWhatIsChosenInTheOrderOfTheList) {
    model.setApplications({application("a", "A"), application("b", "B"), application("c", "C")}, true);
    int told = 0;
    QObject::connect(&model, &InstalledApplicationsModel::chosenCountChanged, [&] { ++told; });

    model.setChosen(2, true);
    model.setChosen(0, true);
    model.setChosen(1, true);
    model.setChosen(1, false);

    EXPECT_THAT(chosen(), ElementsAre("a", "c"));
    EXPECT_EQ(model.chosenCount(), 2);
    EXPECT_EQ(told, 4);
    EXPECT_EQ(model.index(2).data(InstalledApplicationsModel::chosenRole), true);
}

TEST_F(InstalledApplicationsModelTest, KeepsWhatIsChosenWhileTheSearchHidesIt) {
    model.setApplications({application("a", "Alpha"), application("b", "Beta")}, true);
    model.setChosen(0, true);

    model.setSearchText("beta");
    model.setChosen(0, true);
    EXPECT_THAT(chosen(), ElementsAre("a", "b"));

    model.setSearchText("nothing has this");
    model.setChosen(0, false);
    EXPECT_THAT(chosen(), ElementsAre("a", "b"));
}

TEST_F(InstalledApplicationsModelTest, ReplacesTheChosenOneWhereOneAloneIsWanted) {
    model.setApplications({application("a", "A"), application("b", "B")}, false);

    model.setChosen(0, true);
    model.setChosen(1, true);
    EXPECT_THAT(chosen(), ElementsAre("b"));

    model.setChosen(1, false);
    EXPECT_THAT(chosen(), IsEmpty());
}

TEST_F(InstalledApplicationsModelTest, ChangesNothingForWhatIsNoRow) {
    model.setApplications({application("a", "A")}, true);

    model.setChosen(-1, true);
    model.setChosen(1, true);

    EXPECT_THAT(chosen(), IsEmpty());
}

TEST_F(InstalledApplicationsModelTest, TakesAnApplicationFromElsewhereAndShowsIt) {
    model.setApplications({application("a", "Alpha"), application("c", "Gamma")}, true);
    model.setSearchText("gamma");

    model.choose(application("b", "Beta"));

    EXPECT_EQ(model.searchText(), "");
    EXPECT_THAT(names(), ElementsAre("Alpha", "Beta", "Gamma"));
    EXPECT_THAT(chosen(), ElementsAre("b"));
}

TEST_F(InstalledApplicationsModelTest, ChoosesTheRowOfAnApplicationThatIsThereAlready) {
    model.setApplications({application("a", "Alpha"), application("A", "Other")}, true);

    model.choose({"/elsewhere", "a", "Alpha from elsewhere", std::nullopt});

    EXPECT_THAT(names(), ElementsAre("Alpha", "Other"));
    EXPECT_THAT(chosen(), ElementsAre("a"));
}

TEST_F(InstalledApplicationsModelTest, ForgetsChoiceAndSearchWithANewList) {
    model.setApplications({application("a", "A")}, true);
    model.setChosen(0, true);
    model.setSearchText("a");

    model.setApplications({application("a", "A"), application("b", "B")}, true);

    EXPECT_EQ(model.count(), 2);
    EXPECT_EQ(model.searchText(), "");
    EXPECT_EQ(model.chosenCount(), 0);
}

TEST(SearchKeyTest, LeavesOutAccentsAndCapitals) {
    EXPECT_EQ(searchKey("ÀÉÎÕÜ Çñ"), "aeiou cn");
    EXPECT_EQ(searchKey("STRASSE"), searchKey("Straße"));
    EXPECT_EQ(searchKey("ŁÓDŹ Ærø Œuvre"), "lodz aero oeuvre");
    EXPECT_EQ(searchKey("İıI"), "iii");
    EXPECT_EQ(searchKey("ﬁle ２"), "file 2");
    EXPECT_EQ(searchKey(""), "");
}

}  // namespace
}  // namespace velmorand

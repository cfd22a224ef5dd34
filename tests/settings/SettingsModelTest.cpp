#include "settings/SettingsModel.h"

#include "settings/SettingsFixture.h"
#include "settings/SettingsPane.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QVariantMap>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsModelTest : public SettingsFixture {
protected:
    SettingsModel model{services(), settingsPlatform(),
                        [this](std::string_view message) { failures.emplace_back(message); }};
};

TEST(SettingsPaneTest, ThePanesHaveTheirNamesTitlesAndSymbolsInTheOrderOfTheSidebar) {
    std::vector<std::string> rows;
    for (const SettingsPaneDescription& pane : settingsPanes)
        rows.push_back(std::string(pane.rawValue) + "|" + std::string(pane.title) + "|" + std::string(pane.symbol));
    EXPECT_THAT(rows, ElementsAre("general|General|gearshape", "shortcuts|Shortcuts|keyboard",
                                  "ignoredApps|Ignored Apps|nosign.app", "about|About|info.circle"));
}

TEST(SettingsPaneTest, EachPaneStandsAtThePlaceOfItsValue) {
    for (std::size_t i = 0; i < settingsPanes.size(); ++i)
        EXPECT_EQ(static_cast<std::size_t>(settingsPanes.at(i).pane), i) << settingsPanes.at(i).rawValue;
}

TEST_F(SettingsModelTest, ListsThePanesForTheSidebar) {
    ASSERT_EQ(model.panes().size(), 4);
    EXPECT_EQ(model.panes().at(2).toMap().value("rawValue").toString(), QStringLiteral("ignoredApps"));
    EXPECT_EQ(model.panes().at(2).toMap().value("title").toString(), QStringLiteral("Ignored Apps"));
    EXPECT_EQ(model.panes().at(2).toMap().value("symbol").toString(), QStringLiteral("nosign.app"));
}

TEST_F(SettingsModelTest, StartsWithTheGeneralPane) {
    EXPECT_EQ(model.selectedPane(), "general");
    EXPECT_EQ(model.selectedView(), "GeneralSettingsView.qml");
}

TEST_F(SettingsModelTest, SelectsAnotherPaneAndTellsItOnce) {
    int told = 0;
    QObject::connect(&model, &SettingsModel::selectedPaneChanged, [&] { ++told; });
    model.setSelectedPane("about");
    model.setSelectedPane("about");
    EXPECT_EQ(model.selectedPane(), "about");
    EXPECT_EQ(model.selectedView(), "AboutSettingsView.qml");
    EXPECT_EQ(told, 1);
}

TEST_F(SettingsModelTest, IgnoresAPaneThatDoesNotExist) {
    model.setSelectedPane("About");
    model.setSelectedPane("");
    EXPECT_EQ(model.selectedPane(), "general");
}

TEST_F(SettingsModelTest, ARowOfTheShortcutsPaneBeginsToRecordForItsAction) {
    const ShortcutSection& edges = *model.shortcuts()->sections().front();
    edges.rows().at(1)->record();
    EXPECT_EQ(recorder.recordedAction().value(), WindowAction::rightHalf);
}

TEST_F(SettingsModelTest, ApplicationsToIgnoreAreChosenInThePanelOfTheWindow) {
    platform.workspace().applications().install("/Applications/Editor", {"editor", "Editor", std::nullopt});
    model.ignoredApps()->addApplications();
    ASSERT_TRUE(model.applicationChooser()->isOpen());
    model.applicationChooser()->applications()->setChosen(0, true);
    model.applicationChooser()->confirm();
    platform.runLoop().runPending();
    EXPECT_THAT(preferencesStore->current().ignoredApps, ElementsAre("editor"));
}

TEST_F(SettingsModelTest, LooksAgainForIgnoredApplicationsWhileTheirPaneIsShown) {
    preferencesStore->addIgnoredApps(std::vector<std::string>{"editor"});
    platform.workspace().applications().install("/Applications/Editor", {"editor", "Editor", std::nullopt});
    const auto name = [&] { return model.ignoredApps()->index(0).data(IgnoredAppsModel::nameRole).toString(); };

    model.becameActive();
    EXPECT_EQ(name(), "editor");
    model.setSelectedPane("ignoredApps");
    model.becameActive();
    EXPECT_EQ(name(), "Editor");
}

TEST_F(SettingsModelTest, WritesToTheContactAddress) {
    model.writeToSupport();
    platform.runLoop().runPending();
    EXPECT_THAT(platform.workspace().openedURLs(), ElementsAre("mailto:support@velmorand.app"));
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(SettingsModelTest, TellsTheAddressWhenNoProgramWritesMail) {
    platform.workspace().setOpensURLs(false);
    model.writeToSupport();
    platform.runLoop().runPending();
    EXPECT_THAT(failures, ElementsAre("No mail program could be opened. Please write to support@velmorand.app."));
}

TEST_F(SettingsModelTest, AnAnswerAfterTheEndOfTheWindowIsIgnored) {
    platform.workspace().setOpensURLs(false);
    auto other = std::make_unique<SettingsModel>(services(), settingsPlatform(),
                                                 [this](std::string_view message) { failures.emplace_back(message); });
    other->writeToSupport();
    other.reset();
    platform.runLoop().runPending();
    EXPECT_THAT(failures, IsEmpty());
}

}  // namespace
}  // namespace velmorand

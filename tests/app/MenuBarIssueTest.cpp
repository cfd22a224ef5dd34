#include "app/MenuBarFixture.h"

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class MenuBarIssueTest : public MenuBarFixture {};

TEST_F(MenuBarIssueTest, WithoutAButtonNothingIsShownButIssuesAreListed) {
    platform.statusBar().setMakesButtons(false);
    controller->install();
    controller->showIssue("Something failed.");

    EXPECT_EQ(item().image(), std::nullopt);
    EXPECT_EQ(item().toolTip(), "");
    EXPECT_EQ(openMenu().front().title, "Something failed.");
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(MenuBarIssueTest, AnIssueBeforeTheInstallationIsListedAfterwards) {
    controller->showIssue("Too early.");
    controller->install();

    EXPECT_EQ(item().image(), normalIcon);
    EXPECT_EQ(openMenu().front().title, "Too early.");
}

TEST_F(MenuBarIssueTest, ARefusedActionIsLoggedAndListed) {
    controller->install();
    choose("Move to Left Half");

    EXPECT_THAT(logLines("menu"), ElementsAre(LogLine{LogLevel::error, "menu", "menu action left rejected"}));
    EXPECT_EQ(openMenu().front().title, "No focused window is available.");
    EXPECT_EQ(item().image(), warningIcon("No focused window is available."));
}

TEST_F(MenuBarIssueTest, AnActionThatSucceedsEndsTheListingOfTheLastIssue) {
    openWindow();
    controller->install();
    controller->showIssue("Something failed.");
    choose("Move to Left Half");
    EXPECT_EQ(openMenu().front().title, "Edges");
}

TEST_F(MenuBarIssueTest, AMoveThatDoesNotLandWarnsButIsNotListed) {
    const auto id = openWindow();
    window(id).minimumSize = {900, 1};
    controller->install();
    choose("Move to Left Half");

    EXPECT_EQ(item().image(), warningIcon("The window did not move to the requested position."));
    EXPECT_EQ(openMenu().front().title, "Edges");
}

TEST_F(MenuBarIssueTest, AShortcutThatSucceedsLeavesTheIssueListed) {
    openWindow();
    controller->install();
    controller->showIssue("Something failed.");
    ASSERT_TRUE(windowManager->perform(WindowAction::leftHalf));
    EXPECT_EQ(openMenu().front().title, "Something failed.");
}

TEST_F(MenuBarIssueTest, AnIssueWarnsForTwoAndAHalfSeconds) {
    controller->install();
    controller->showIssue("Something failed.");
    EXPECT_EQ(item().image(), warningIcon("Something failed."));
    EXPECT_EQ(item().toolTip(), "Something failed.");

    advance(2499ms);
    EXPECT_EQ(item().image(), warningIcon("Something failed."));
    advance(1ms);
    EXPECT_EQ(item().image(), normalIcon);
    EXPECT_EQ(item().toolTip(), "Velmorand");
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

TEST_F(MenuBarIssueTest, ASecondIssueStartsTheTimeAnew) {
    controller->install();
    controller->showIssue("First");
    advance(1s);
    controller->showIssue("Second");
    advance(2499ms);
    EXPECT_EQ(item().image(), warningIcon("Second"));
    advance(1ms);
    EXPECT_EQ(item().image(), normalIcon);
}

TEST_F(MenuBarIssueTest, WithoutAWarningSymbolTheToolTipAloneTells) {
    platform.statusBar().removeImage(StatusImageKind::symbol, "exclamationmark.triangle");
    controller->install();
    controller->showIssue("Something failed.");

    EXPECT_EQ(item().image(), normalIcon);
    EXPECT_EQ(item().toolTip(), "Something failed.");
    advance(2500ms);
    EXPECT_EQ(item().toolTip(), "Velmorand");
}

TEST_F(MenuBarIssueTest, AnIssueIsListedForLessThanAMinute) {
    controller->install();
    controller->showIssue("Something failed.");
    advance(59s);
    EXPECT_EQ(openMenu().front().title, "Something failed.");
    advance(999ms);
    EXPECT_EQ(openMenu().front().title, "Something failed.");
    advance(1ms);
    EXPECT_EQ(openMenu().front().title, "Edges");
}

TEST_F(MenuBarIssueTest, ProblemsOfShortcutsAreListedBehindTheIssue) {
    platform.hotKeyService().setTaken(123, 0x900, true);
    platform.hotKeyService().setTaken(124, 0x900, true);
    shortcutManager->start();
    controller->install();
    controller->showIssue("Something failed.");

    const auto titles = openedTitles();
    EXPECT_EQ(titles[0], "Something failed.");
    EXPECT_THAT(titles[1], testing::StartsWith("Could not register Left "));
    EXPECT_THAT(titles[2], testing::StartsWith("Could not register Right "));
    EXPECT_EQ(openMenu()[3].kind, MenuItemKind::separator);
}

TEST_F(MenuBarIssueTest, AMissingHandlerIsListed) {
    platform.hotKeyService().failInstallations(-9868);
    shortcutManager->start();
    controller->install();
    EXPECT_EQ(openMenu().front(), (MenuItem{.title = "Could not install the keyboard shortcut handler."}));
}

TEST_F(MenuBarIssueTest, WhatPreventsTheSettingsWindowIsLoggedAndShown) {
    settingsWindows.failure = "No module.";
    controller->install();
    choose("Settings...");

    EXPECT_THAT(logLines("settings"), ElementsAre(LogLine{LogLevel::error, "settings",
                                                          "The settings window could not be opened. No module."}));
    EXPECT_EQ(item().image(), warningIcon("The settings window could not be opened."));
}

}  // namespace
}  // namespace velmorand

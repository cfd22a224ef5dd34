#include "app/MenuBarFixture.h"

namespace velmorand {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class MenuBarControllerTest : public MenuBarFixture {};

TEST_F(MenuBarControllerTest, ThereIsNoStatusItemBeforeItIsInstalled) {
    EXPECT_THAT(platform.statusBar().items(), IsEmpty());
    EXPECT_EQ(controller->menuCapabilities(), MenuCapabilitySnapshot{});
    EXPECT_THAT(controller->menu(), IsEmpty());
}

TEST_F(MenuBarControllerTest, InstallingShowsTheIconWithAnEmptyMenu) {
    controller->install();

    EXPECT_EQ(item().image(), normalIcon);
    EXPECT_EQ(item().toolTip(), "Velmorand");
    EXPECT_EQ(item().title(), "");
    EXPECT_THAT(item().menuItems(), IsEmpty());
}

TEST_F(MenuBarControllerTest, InstallingTwiceLeavesOneStatusItem) {
    controller->install();
    controller->install();
    EXPECT_THAT(platform.statusBar().items(), SizeIs(1));
}

TEST_F(MenuBarControllerTest, WithoutTheResourceTheSymbolStandsForIt) {
    platform.statusBar().removeImage(StatusImageKind::resource, "MenuBarTemplate");
    controller->install();

    EXPECT_EQ(item().image(), (StatusImage{.kind = StatusImageKind::symbol,
                                           .name = "rectangle.3.group",
                                           .description = "Velmorand",
                                           .isTemplate = true}));
}

TEST_F(MenuBarControllerTest, WithoutAnyImageTheNameStandsForIt) {
    platform.statusBar().removeImage(StatusImageKind::resource, "MenuBarTemplate");
    platform.statusBar().removeImage(StatusImageKind::symbol, "rectangle.3.group");
    controller->install();

    EXPECT_EQ(item().image(), std::nullopt);
    EXPECT_EQ(item().title(), "Velmorand");
    EXPECT_EQ(item().toolTip(), "Velmorand");
}

TEST_F(MenuBarControllerTest, TheMenuIsTheFourSectionsInOrder) {
    controller->install();
    permissionsManager->refresh();
    desktop().trusted = false;
    controller->showIssue("Something failed.");

    const auto titles = openedTitles();
    ASSERT_THAT(titles, SizeIs(4 + 2 + 6 + 19 + 6 + 5));
    EXPECT_EQ(titles[0], "Accessibility permission required");
    EXPECT_EQ(titles[4], "Something failed.");
    EXPECT_EQ(titles[6], "Edges");
    EXPECT_EQ(titles[titles.size() - 5], "Ignore Editor");
    EXPECT_EQ(titles.back(), "Quit Velmorand");
    EXPECT_EQ(controller->menu(), item().menuItems());
}

TEST_F(MenuBarControllerTest, EachOpeningReadsTrustAndPublishesIt) {
    controller->install();
    desktop().trusted = false;
    openMenu();
    EXPECT_FALSE(permissionsManager->isTrusted().value());
    EXPECT_FALSE(controller->menuCapabilities().isTrusted);

    desktop().trusted = true;
    openMenu();
    EXPECT_TRUE(permissionsManager->isTrusted().value());
    EXPECT_EQ(openMenu().front().title, "Edges");
}

TEST_F(MenuBarControllerTest, WithoutTrustEveryActionIsDisabledAndTheRestIsNot) {
    controller->install();
    desktop().trusted = false;
    for (const MenuItem& line : openMenu())
        EXPECT_FALSE(line.action == menu_action::performAction && line.isEnabled) << line.title;
    for (const std::string_view title : {"Ignore Editor", "Refresh Permissions", "Settings...", "Quit Velmorand"})
        EXPECT_TRUE(isEnabled(title)) << title;
}

TEST_F(MenuBarControllerTest, TheDisplaysAreCountedAtEachOpening) {
    controller->install();
    openMenu();
    EXPECT_EQ(controller->menuCapabilities().screenCount, 1);
    EXPECT_FALSE(isEnabled("Move to Next Display"));
    EXPECT_TRUE(isEnabled("Move to Left Half"));

    setDisplays({mainDisplay(), rightDisplay()});
    EXPECT_TRUE(isEnabled("Move to Next Display"));
    EXPECT_TRUE(isEnabled("Move to Previous Display"));
}

TEST_F(MenuBarControllerTest, RestoreIsEnabledOnceAWindowOfTheFrontmostApplicationWasMoved) {
    openWindow();
    controller->install();
    EXPECT_FALSE(isEnabled("Restore Previous Frame"));

    choose("Move to Left Half");
    EXPECT_TRUE(isEnabled("Restore Previous Frame"));

    choose("Restore Previous Frame");
    EXPECT_FALSE(isEnabled("Restore Previous Frame"));
}

TEST_F(MenuBarControllerTest, WithoutAFrontmostApplicationNothingCanBeArrangedOrIgnored) {
    platform.terminateProcess(pid);
    controller->install();
    const auto titles = openedTitles();

    EXPECT_FALSE(controller->menuCapabilities().frontmostEligible);
    EXPECT_FALSE(controller->menuCapabilities().hasRestoreEntryForFrontmostPid);
    EXPECT_FALSE(isEnabled("Move to Left Half"));
    EXPECT_THAT(titles, Not(Contains(testing::StartsWith("Ignore"))));
}

TEST_F(MenuBarControllerTest, WhileTheProgramItselfIsFrontmostNothingCanBeArrangedOrIgnored) {
    frontmost().bundleIdentifier = platform.bundle().identifier();
    controller->install();

    EXPECT_FALSE(isEnabled("Move to Left Half"));
    EXPECT_THAT(openedTitles(), Not(Contains(testing::StartsWith("Ignore"))));
}

TEST_F(MenuBarControllerTest, TwoAbsentIdentifiersAreEqual) {
    frontmost().bundleIdentifier.reset();
    platform.settableBundle().setIdentifier(std::nullopt);
    controller->install();
    EXPECT_FALSE(isEnabled("Move to Left Half"));
}

TEST_F(MenuBarControllerTest, ACopyWithoutAnIdentifierOffersToIgnoreAll) {
    platform.settableBundle().setIdentifier(std::nullopt);
    controller->install();
    EXPECT_TRUE(isEnabled("Move to Left Half"));
    EXPECT_TRUE(isEnabled("Ignore Editor"));
}

TEST_F(MenuBarControllerTest, AnApplicationWithoutAnIdentifierCanBeArrangedButNotIgnored) {
    frontmost().bundleIdentifier.reset();
    controller->install();

    EXPECT_TRUE(isEnabled("Move to Left Half"));
    EXPECT_THAT(openedTitles(), Not(Contains(testing::StartsWith("Ignore"))));
}

TEST_F(MenuBarControllerTest, AnApplicationWithoutANameIsCalledByItsIdentifier) {
    frontmost().localizedName.reset();
    controller->install();
    EXPECT_TRUE(isEnabled("Ignore org.example.Editor"));
}

TEST_F(MenuBarControllerTest, TheFrontmostApplicationIsIgnoredAndTakenBack) {
    controller->install();
    choose("Ignore Editor");
    EXPECT_THAT(preferencesStore->current().ignoredApps, ElementsAre("org.example.Editor"));
    EXPECT_THAT(platform.userDefaults().writes(), SizeIs(1)) << "it is stored at once";
    EXPECT_FALSE(isEnabled("Move to Left Half"));
    EXPECT_THAT(openedTitles(), Not(Contains("Ignore Editor")));

    choose("Stop Ignoring Editor");
    EXPECT_THAT(preferencesStore->current().ignoredApps, IsEmpty());
    EXPECT_THAT(platform.userDefaults().writes(), SizeIs(2)) << "this too";
    EXPECT_TRUE(isEnabled("Move to Left Half"));
}

TEST_F(MenuBarControllerTest, IdentifiersAreComparedExactly) {
    preferencesStore->addIgnoredApp("org.example.editor");
    controller->install();
    EXPECT_TRUE(isEnabled("Move to Left Half"));
    EXPECT_TRUE(isEnabled("Ignore Editor"));
}

TEST_F(MenuBarControllerTest, AnActionIsPerformedOnTheFrontmostWindow) {
    const auto id = openWindow();
    controller->install();
    choose("Move to Left Half");

    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
    EXPECT_EQ(item().image(), normalIcon);
}

TEST_F(MenuBarControllerTest, TheShortcutsOfTheActionsAreThoseThatCount) {
    preferencesStore->removeShortcut(WindowAction::leftHalf);
    preferencesStore->setShortcut(WindowAction::rightHalf, {{122, ShortcutModifiers::command}, "F1"});
    controller->install();

    const auto titles = openedTitles();
    EXPECT_THAT(titles, Contains("Move to Left Half"));
    EXPECT_THAT(titles, Contains("Move to Right Half (⌘ + F1)"));
    EXPECT_EQ(openMenu()[1].keyEquivalent, "");
    EXPECT_EQ(openMenu()[3].keyEquivalent, "\uF700");
}

TEST_F(MenuBarControllerTest, AskingForAccessPromptsAndOpensTheSettings) {
    controller->install();
    desktop().trusted = false;
    choose("Open Accessibility Settings...");

    EXPECT_EQ(desktop().promptCount, 1);
    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 1);
    EXPECT_FALSE(permissionsManager->isTrusted().value());

    desktop().trusted = false;
    desktop().trustedAfterPrompt = true;
    choose("Open Accessibility Settings...");
    EXPECT_TRUE(permissionsManager->isTrusted().value()) << "what the prompt answers is published";
}

TEST_F(MenuBarControllerTest, LinesThatAreNotAboutAnythingDoNothing) {
    openWindow();
    controller->install();
    const std::vector<MenuItem> lines{
        {.title = "No action", .action = "performAction:", .isEnabled = true},
        {.title = "Unknown", .action = "performAction:", .representedObject = "sideways", .isEnabled = true},
        {.title = "Ignore nobody", .action = "ignoreCurrentApp:", .isEnabled = true},
        {.title = "Take nobody back", .action = "unignoreCurrentApp:", .isEnabled = true},
        {.title = "Nonsense", .action = "nonsense", .isEnabled = true}};
    for (const MenuItem& line : lines) {
        openMenu();
        item().setMenuItems({line});
        EXPECT_TRUE(item().choose(line.title)) << line.title;
        platform.runLoop().runPending();
    }

    EXPECT_FALSE(platform.log().contains(LogLevel::error, "menu", "menu action sideways rejected"));
    EXPECT_THAT(preferencesStore->current().ignoredApps, IsEmpty());
    EXPECT_THAT(platform.userDefaults().writes(), IsEmpty());
}

TEST_F(MenuBarControllerTest, RefreshingThePermissionsRebuildsTheMenu) {
    controller->install();
    openMenu();
    desktop().trusted = false;
    EXPECT_TRUE(item().choose("Refresh Permissions"));
    platform.runLoop().runPending();

    EXPECT_FALSE(permissionsManager->isTrusted().value());
    EXPECT_EQ(item().menuItems().front().title, "Accessibility permission required");
}

TEST_F(MenuBarControllerTest, QuittingTerminatesTheApplication) {
    controller->install();
    choose("Quit Velmorand");
    EXPECT_TRUE(platform.application().isTerminating());
}

TEST_F(MenuBarControllerTest, AControllerThatGoesTakesItsItemAndItsTimerWithIt) {
    controller->install();
    controller->showIssue("Something failed.");
    windowManager->setOnFailure({});
    settings->setOnFailure({});
    controller.reset();

    EXPECT_THAT(platform.statusBar().items(), IsEmpty());
    EXPECT_EQ(platform.runLoop().timerCount(), 0U);
}

}  // namespace
}  // namespace velmorand

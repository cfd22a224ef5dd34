#include "platform/Workspace.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <optional>

namespace velmorand {

using testing::Contains;
using testing::Each;
using testing::Field;
using testing::Not;

TEST_P(WorkspaceContract, TheApplicationOfTheFocusedWindowIsFrontmost) {
    const ContractWindow window = desktop->openWindow({.applicationIdentifier = "org.example.Editor"});

    const auto frontmost = desktop->platform().workspace().frontmostApplication();

    ASSERT_TRUE(frontmost.has_value());
    EXPECT_EQ(frontmost->pid, desktop->pidOf(window));
    EXPECT_EQ(frontmost->bundleIdentifier, "org.example.Editor");
    EXPECT_NE(frontmost->localizedName.value_or(""), "");
}

TEST_P(WorkspaceContract, FollowsTheUserToAnotherApplicationAndBack) {
    const ContractWindow first = desktop->openWindow({.applicationIdentifier = "org.example.Editor"});
    const ContractWindow second = desktop->openWindow({.applicationIdentifier = "org.example.Viewer"});
    Workspace& workspace = desktop->platform().workspace();

    EXPECT_EQ(workspace.frontmostApplication().value_or(RunningApplication{}).pid, desktop->pidOf(second));
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier, "org.example.Viewer");

    desktop->focusWindow(first);
    EXPECT_EQ(workspace.frontmostApplication().value_or(RunningApplication{}).pid, desktop->pidOf(first));
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier, "org.example.Editor");
}

TEST_P(WorkspaceContract, AnApplicationWithoutAnIdentifierIsFrontmostWithoutOne) {
    VELMORAND_NEEDS(Ability::hideIdentifiers);
    const ContractWindow window = desktop->openWindow({.hidesIdentifier = true});

    const auto frontmost = desktop->platform().workspace().frontmostApplication();

    ASSERT_TRUE(frontmost.has_value());
    EXPECT_EQ(frontmost->pid, desktop->pidOf(window));
    EXPECT_EQ(frontmost->bundleIdentifier, std::nullopt);
}

TEST_P(WorkspaceContract, NothingIsFrontmostOnADesktopWithoutApplications) {
    VELMORAND_NEEDS(Ability::leaveNothingInFront);
    desktop->leaveNothingInFront();

    EXPECT_EQ(desktop->platform().workspace().frontmostApplication(), std::nullopt);
}

TEST_P(WorkspaceContract, AnApplicationThatEndedIsNotFrontmost) {
    const ContractWindow window = desktop->openWindow({});
    const std::int32_t pid = desktop->pidOf(window);

    desktop->endApplicationOf(window);

    EXPECT_NE(desktop->platform().workspace().frontmostApplication().value_or(RunningApplication{}).pid, pid);
}

TEST_P(WorkspaceContract, OpensAMailAddressWithTheProgramThatWritesMail) {
    std::optional<bool> opened;
    desktop->setMailProgram(true);

    desktop->platform().workspace().openURL("mailto:somebody@example.org", [&](bool answer) { opened = answer; });
    EXPECT_EQ(opened, std::nullopt);

    EXPECT_TRUE(desktop->runUntil([&] { return opened.has_value(); }, deadline));
    EXPECT_EQ(opened, true);
    EXPECT_TRUE(desktop->runUntil([&] { return !desktop->begunMails().empty(); }, deadline));
    EXPECT_THAT(desktop->begunMails(), testing::ElementsAre("mailto:somebody@example.org"));
}

TEST_P(WorkspaceContract, TellsThatNoProgramOpensAnAddress) {
    std::optional<bool> opened;
    desktop->setMailProgram(false);

    desktop->platform().workspace().openURL("mailto:somebody@example.org", [&](bool answer) { opened = answer; });

    EXPECT_TRUE(desktop->runUntil([&] { return opened.has_value(); }, deadline));
    EXPECT_EQ(opened, false);
    EXPECT_THAT(desktop->begunMails(), testing::IsEmpty());
}

TEST_P(WorkspaceContract, MotionIsNotReducedUnlessTheUserAsksForIt) {
    EXPECT_FALSE(desktop->platform().workspace().accessibilityDisplayShouldReduceMotion());
}

TEST_P(WorkspaceContract, FollowsTheUsersWishForLittleMotion) {
    VELMORAND_NEEDS(Ability::reduceMotion);
    Workspace& workspace = desktop->platform().workspace();

    desktop->setReducesMotion(true);
    EXPECT_TRUE(desktop->runUntil([&] { return workspace.accessibilityDisplayShouldReduceMotion(); }, deadline));

    desktop->setReducesMotion(false);
    EXPECT_TRUE(desktop->runUntil([&] { return !workspace.accessibilityDisplayShouldReduceMotion(); }, deadline));
}

TEST_P(WorkspaceContract, FindsAnInstalledApplicationByItsIdentifier) {
    Workspace& workspace = desktop->platform().workspace();
    const auto location = desktop->install({.identifier = "org.example.Editor", .name = "Text Editor"});

    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.Editor"), location);
    EXPECT_EQ(workspace.displayName(location), "Text Editor");
    EXPECT_EQ(workspace.bundleIdentifier(location), "org.example.Editor");
}

TEST_P(WorkspaceContract, TakesIdentifiersOfDifferentLetterCaseForDifferentApplications) {
    Workspace& workspace = desktop->platform().workspace();
    const auto large = desktop->install({.identifier = "org.example.Editor", .name = "Large"});
    const auto small = desktop->install({.identifier = "org.example.editor", .name = "Small"});

    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.Editor"), large);
    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.editor"), small);
    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.EDITOR"), std::nullopt);
    EXPECT_EQ(workspace.applicationWithIdentifier(""), std::nullopt);
}

TEST_P(WorkspaceContract, NoLongerFindsAnApplicationThatIsGone) {
    Workspace& workspace = desktop->platform().workspace();
    const auto location = desktop->install({.identifier = "org.example.Editor"});
    ASSERT_EQ(workspace.applicationWithIdentifier("org.example.Editor"), location);

    desktop->uninstall(location);

    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.Editor"), std::nullopt);
    EXPECT_EQ(workspace.bundleIdentifier(location), std::nullopt);
    EXPECT_EQ(workspace.icon(location), std::nullopt);
    EXPECT_NE(workspace.displayName(location), "");
}

TEST_P(WorkspaceContract, WhatIsNoApplicationHasANameAndNothingElse) {
    Workspace& workspace = desktop->platform().workspace();
    const auto location = desktop->install({.identifier = "org.example.Editor"});

    desktop->breakApplication(location);

    EXPECT_EQ(workspace.bundleIdentifier(location), std::nullopt);
    EXPECT_EQ(workspace.icon(location), std::nullopt);
    EXPECT_NE(workspace.displayName(location), "");
    EXPECT_NE(workspace.displayName("/"), "");
}

TEST_P(WorkspaceContract, AnApplicationMayHaveAnIconOrNone) {
    Workspace& workspace = desktop->platform().workspace();
    const auto with = desktop->install({.identifier = "org.example.With", .icon = "editor"});
    const auto without = desktop->install({.identifier = "org.example.Without", .icon = ""});

    EXPECT_EQ(workspace.icon(with), (ApplicationIcon{ApplicationIcon::Source::theme, "editor"}));
    EXPECT_EQ(workspace.icon(without), std::nullopt);
}

TEST_P(WorkspaceContract, OffersTheApplicationsOfTheMenus) {
    Workspace& workspace = desktop->platform().workspace();
    const auto listed = desktop->install({.identifier = "org.example.Editor", .name = "Editor", .icon = "editor"});
    const auto hidden = desktop->install({.identifier = "org.example.Helper", .isListed = false});

    const auto offered = workspace.installedApplications();

    EXPECT_THAT(offered, Contains(InstalledApplication{listed, "org.example.Editor", "Editor",
                                                       ApplicationIcon{ApplicationIcon::Source::theme, "editor"}}));
    EXPECT_THAT(offered, Each(Field(&InstalledApplication::bundleIdentifier, Not("org.example.Helper"))));
    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.Helper"), hidden);
}

TEST_P(WorkspaceContract, AnApplicationRunsUnderTheIdentifierOfItsLocation) {
    Workspace& workspace = desktop->platform().workspace();
    const auto location = desktop->install({.identifier = "org.example.Editor"});
    desktop->openWindow({.applicationIdentifier = "org.example.Editor"});

    const auto frontmost = workspace.frontmostApplication();

    ASSERT_TRUE(frontmost.has_value());
    EXPECT_EQ(frontmost->bundleIdentifier, workspace.bundleIdentifier(location));
    EXPECT_EQ(workspace.applicationWithIdentifier(frontmost->bundleIdentifier.value_or("")), location);
}

}  // namespace velmorand

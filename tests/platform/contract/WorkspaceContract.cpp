#include "platform/Workspace.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <optional>

namespace velmorand {

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

}  // namespace velmorand

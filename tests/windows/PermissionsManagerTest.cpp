#include "windows/PermissionsManager.h"

#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;

class PermissionsManagerTest : public DesktopFixture {
protected:
    std::vector<bool> published;
    Subscription subscription =
        permissionsManager->isTrusted().subscribe([this](bool trusted) { published.push_back(trusted); });
};

TEST_F(PermissionsManagerTest, StartsWithTheAnswerOfTheSystemWithoutAPrompt) {
    desktop().trusted = false;
    PermissionsManager untrusted(accessibility, platform.workspace());
    desktop().trusted = true;
    PermissionsManager trusted(accessibility, platform.workspace());

    EXPECT_FALSE(untrusted.isTrusted().value());
    EXPECT_TRUE(trusted.isTrusted().value());
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted", "trusted"));
    EXPECT_EQ(desktop().promptCount, 0);
}

TEST_F(PermissionsManagerTest, DoesNotNoticeAChangeBeforeItIsRefreshed) {
    desktop().trusted = false;

    EXPECT_TRUE(permissionsManager->isTrusted().value());

    permissionsManager->refresh();
    EXPECT_FALSE(permissionsManager->isTrusted().value());
}

TEST_F(PermissionsManagerTest, NoticesAccessThatWasGrantedAtTheNextRefresh) {
    desktop().trusted = false;
    permissionsManager->refresh();
    desktop().trusted = true;

    EXPECT_FALSE(permissionsManager->isTrusted().value());

    permissionsManager->refresh();
    EXPECT_TRUE(permissionsManager->isTrusted().value());
}

TEST_F(PermissionsManagerTest, PublishesEveryChange) {
    desktop().trusted = false;
    permissionsManager->refresh();
    desktop().trusted = true;
    permissionsManager->refresh();

    EXPECT_THAT(published, ElementsAre(false, true));
}

TEST_F(PermissionsManagerTest, RefreshingNeverPrompts) {
    desktop().trusted = false;

    permissionsManager->refresh();

    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted"));
    EXPECT_EQ(desktop().promptCount, 0);
}

TEST_F(PermissionsManagerTest, RefreshingWithPromptTakesTheAnswerToThePrompt) {
    desktop().trusted = false;
    desktop().trustedAfterPrompt = true;

    permissionsManager->refreshWithPrompt();

    EXPECT_TRUE(permissionsManager->isTrusted().value());
    EXPECT_EQ(desktop().promptCount, 1);
    EXPECT_THAT(published, ElementsAre(true));
}

TEST_F(PermissionsManagerTest, RefreshingWithPromptStaysUntrustedWhenTheUserRefuses) {
    desktop().trusted = false;

    permissionsManager->refreshWithPrompt();

    EXPECT_FALSE(permissionsManager->isTrusted().value());
    EXPECT_EQ(desktop().promptCount, 1);
}

TEST_F(PermissionsManagerTest, ARequestForAccessPromptsAndOpensTheSettingsWhateverTheAnswer) {
    desktop().trusted = false;
    desktop().trustedAfterPrompt = false;
    permissionsManager->requestAccess();
    EXPECT_FALSE(permissionsManager->isTrusted().value());
    EXPECT_EQ(desktop().promptCount, 1);
    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 1);

    desktop().trusted = true;
    permissionsManager->requestAccess();
    EXPECT_TRUE(permissionsManager->isTrusted().value());
    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 2);
}

TEST_F(PermissionsManagerTest, OpeningTheSettingsAsksForNothing) {
    permissionsManager->openAccessibilitySettings();

    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 1);
    EXPECT_THAT(published, testing::IsEmpty());
    EXPECT_EQ(desktop().promptCount, 0);
}

}  // namespace
}  // namespace velmorand

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
    PermissionsManager untrusted(accessibility);
    desktop().trusted = true;
    PermissionsManager trusted(accessibility);

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

}  // namespace
}  // namespace velmorand

#include "settings/GeneralSettingsModel.h"

#include "preferences/PreferencesStore.h"
#include "settings/SettingsFixture.h"
#include "windows/PermissionsManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace velmorand {
namespace {

class GeneralSettingsModelTest : public SettingsFixture {
protected:
    /// The pane as it is when the window opens on it.
    [[nodiscard]] GeneralSettingsModel& pane() {
        if (!model_) {
            model_ = std::make_unique<GeneralSettingsModel>(services(), settingsPlatform());
            model_->paneAppeared();
        }
        return *model_;
    }
    [[nodiscard]] SimulatedLoginItemService& loginItem() { return platform.loginItemService(); }

private:
    std::unique_ptr<GeneralSettingsModel> model_;
};

TEST_F(GeneralSettingsModelTest, SaysWhetherWindowsCanBeArranged) {
    EXPECT_TRUE(pane().isTrusted());
    EXPECT_EQ(pane().accessibilityStatus(), "Velmorand is ready to arrange your windows.");
    EXPECT_EQ(pane().accessibilitySymbol(), "checkmark.circle.fill");

    platform.desktop().trusted = false;
    pane().checkStatus();

    EXPECT_FALSE(pane().isTrusted());
    EXPECT_EQ(pane().accessibilityStatus(), "Accessibility permission is required to arrange windows.");
    EXPECT_EQ(pane().accessibilitySymbol(), "exclamationmark.triangle.fill");
}

TEST_F(GeneralSettingsModelTest, CheckingTheStatusAsksWithoutAPrompt) {
    platform.desktop().trusted = false;
    pane().checkStatus();
    EXPECT_EQ(platform.desktop().promptCount, 0);
    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 0);
}

TEST_F(GeneralSettingsModelTest, OpeningTheSettingsAsksWithThePromptFirst) {
    platform.desktop().trusted = false;
    platform.desktop().trustedAfterPrompt = true;
    permissionsManager->refresh();

    pane().openAccessibilitySettings();

    EXPECT_EQ(platform.desktop().promptCount, 1);
    EXPECT_EQ(platform.workspace().openedAccessibilitySettings(), 1);
    EXPECT_TRUE(pane().isTrusted());
}

TEST_F(GeneralSettingsModelTest, TellsOfTrustThatOthersAskedFor) {
    int told = 0;
    QObject::connect(&pane(), &GeneralSettingsModel::trustChanged, [&] { ++told; });
    platform.desktop().trusted = false;
    permissionsManager->refresh();
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(pane().isTrusted());
}

TEST_F(GeneralSettingsModelTest, ComingBackToTheProgramReadsTrustAndLoginItemAfresh) {
    EXPECT_FALSE(pane().launchAtLogin());
    platform.desktop().trusted = false;
    loginItem().setStatus(LoginItemStatus::enabled);

    becomeActive();

    EXPECT_FALSE(pane().isTrusted());
    EXPECT_TRUE(pane().launchAtLogin());
}

TEST_F(GeneralSettingsModelTest, ComingBackChangesNothingWhileAnotherPaneIsShown) {
    pane().paneDisappeared();
    platform.desktop().trusted = false;
    loginItem().setStatus(LoginItemStatus::enabled);

    becomeActive();

    EXPECT_TRUE(pane().isTrusted());
    EXPECT_FALSE(pane().launchAtLogin());
}

struct LoginItemCase {
    LoginItemStatus status;
    bool isOn;
    const char* note;
    bool offersLoginItems;
};

TEST_F(GeneralSettingsModelTest, ShowsTheStatusOfTheLoginItem) {
    const LoginItemCase cases[] = {
        {LoginItemStatus::enabled, true, "", false},
        {LoginItemStatus::notRegistered, false, "", false},
        {LoginItemStatus::requiresApproval, true, "Pending approval — enable Velmorand under Login Items to finish.",
         true},
        {LoginItemStatus::notFound, false, "Launch at Login is unavailable for this copy of the app.", false},
        {LoginItemStatus::other, false, "Launch at Login is unavailable for this copy of the app.", false},
    };
    for (const LoginItemCase& given : cases) {
        loginItem().setStatus(given.status);
        pane().paneAppeared();
        EXPECT_EQ(pane().launchAtLogin(), given.isOn) << given.note;
        EXPECT_EQ(pane().launchAtLoginNote(), QString::fromUtf8(given.note));
        EXPECT_EQ(pane().offersLoginItems(), given.offersLoginItems) << given.note;
        EXPECT_EQ(pane().launchAtLoginError(), "");
    }
}

TEST_F(GeneralSettingsModelTest, SwitchingLaunchAtLoginFollowsThePlatform) {
    pane().setLaunchAtLogin(true);
    EXPECT_EQ(loginItem().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(pane().launchAtLogin());

    pane().setLaunchAtLogin(false);
    EXPECT_EQ(loginItem().status(), LoginItemStatus::notRegistered);
    EXPECT_FALSE(pane().launchAtLogin());
}

TEST_F(GeneralSettingsModelTest, AFailedAttemptLeavesTheSwitchAtTheRealStatusAndShowsTheError) {
    loginItem().setRegisterFailure(LoginItemError{"The disk is full."});
    int told = 0;
    QObject::connect(&pane(), &GeneralSettingsModel::launchAtLoginChanged, [&] { ++told; });

    pane().setLaunchAtLogin(true);

    EXPECT_FALSE(pane().launchAtLogin());
    EXPECT_EQ(pane().launchAtLoginError(), "The disk is full.");
    EXPECT_EQ(told, 1);
}

TEST_F(GeneralSettingsModelTest, ASuccessfulAttemptTakesTheErrorAway) {
    loginItem().setRegisterFailure(LoginItemError{"The disk is full."});
    pane().setLaunchAtLogin(true);
    pane().setLaunchAtLogin(false);
    EXPECT_EQ(pane().launchAtLoginError(), "");
}

TEST_F(GeneralSettingsModelTest, AnErrorGoesWithThePane) {
    loginItem().setRegisterFailure(LoginItemError{"The disk is full."});
    pane().setLaunchAtLogin(true);
    pane().paneDisappeared();
    pane().paneAppeared();
    EXPECT_EQ(pane().launchAtLoginError(), "");
}

TEST_F(GeneralSettingsModelTest, SaysOnceThatThisCopyCannotBeStarted) {
    loginItem().setStatus(LoginItemStatus::notFound);
    pane().setLaunchAtLogin(true);
    EXPECT_EQ(pane().launchAtLoginError(), "Launch at Login is unavailable for this copy of the app.");
    EXPECT_EQ(pane().launchAtLoginNote(), "");
}

TEST_F(GeneralSettingsModelTest, OpensTheListOfLoginItems) {
    pane().openLoginItems();
    EXPECT_EQ(loginItem().openedSettings(), 1);
}

TEST_F(GeneralSettingsModelTest, SwitchesWriteIntoThePreferences) {
    pane().setClampToVisibleArea(false);
    pane().setEnableAnimations(true);
    EXPECT_FALSE(preferencesStore->current().clampToVisibleArea);
    EXPECT_TRUE(preferencesStore->current().enableAnimations);
    EXPECT_FALSE(pane().clampToVisibleArea());
    EXPECT_TRUE(pane().enableAnimations());
}

TEST_F(GeneralSettingsModelTest, SlidersWriteTheNearestStepIntoThePreferences) {
    pane().animationDuration()->setValue(0.3149);
    pane().outerPadding()->setValue(12.4);
    pane().innerGap()->setValue(7.6);
    EXPECT_EQ(preferencesStore->current().animationDuration, 0.31);
    EXPECT_EQ(preferencesStore->current().outerPadding, 12);
    EXPECT_EQ(preferencesStore->current().innerGap, 8);
    EXPECT_EQ(pane().animationDuration()->text(), "0.31 s");
    EXPECT_EQ(pane().outerPadding()->text(), "12 px");
    EXPECT_EQ(pane().innerGap()->text(), "8 px");
}

TEST_F(GeneralSettingsModelTest, WhatIsNoNumberLeavesASliderWhereItIs) {
    pane().outerPadding()->setValue(12);
    pane().outerPadding()->setValue(std::numeric_limits<double>::quiet_NaN());
    pane().outerPadding()->setValue(std::numeric_limits<double>::infinity());
    EXPECT_EQ(preferencesStore->current().outerPadding, 12);
}

TEST_F(GeneralSettingsModelTest, ASliderThatWasPutBetweenStepsIsToldToGoBack) {
    pane().outerPadding()->setValue(12);
    int told = 0;
    QObject::connect(pane().outerPadding(), &PreferenceSlider::valueChanged, [&] { ++told; });
    pane().outerPadding()->setValue(12.2);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(pane().outerPadding()->value(), 12);
}

TEST_F(GeneralSettingsModelTest, TheStoredDurationIsKeptWhileTransitionsAreOff) {
    pane().animationDuration()->setValue(0.3);
    pane().setEnableAnimations(false);
    EXPECT_EQ(preferencesStore->current().animationDuration, 0.3);
}

TEST_F(GeneralSettingsModelTest, FollowsWhatOthersChange) {
    int told = 0;
    QObject::connect(pane().innerGap(), &PreferenceSlider::valueChanged, [&] { ++told; });
    preferencesStore->setInnerGap(20);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(pane().innerGap()->text(), "20 px");
}

}  // namespace
}  // namespace velmorand

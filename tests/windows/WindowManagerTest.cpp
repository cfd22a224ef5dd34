#include "windows/WindowManager.h"

#include "platform/LocalNotificationCenter.h"
#include "support/DesktopFixture.h"
#include "windows/AXWindowClient.h"
#include "windows/PermissionsManager.h"
#include "windows/ScreenGeometryProvider.h"

namespace velmorand {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

LogLine info(std::string text) {
    return {LogLevel::info, "windows", std::move(text)};
}

LogLine error(std::string text) {
    return {LogLevel::error, "windows", std::move(text)};
}

/// Counts the observers it has.
class CountingNotificationCenter final : public NotificationCenter {
public:
    [[nodiscard]] ObserverID addObserver(NotificationName name, Callback callback) override {
        names.push_back(name);
        ++observers;
        return center_.addObserver(name, std::move(callback));
    }
    void removeObserver(ObserverID id) override {
        --observers;
        center_.removeObserver(id);
    }

    std::vector<NotificationName> names;
    int observers = 0;

private:
    LocalNotificationCenter center_;
};

/// The checks of an action, from the first to the frame that is read.
class WindowManagerTest : public DesktopFixture {
protected:
    /// Expects that the action is refused with this error, that `onFailure` is told its description, and that no
    /// window is touched.
    void expectRefusal(WindowAction action, const WindowOperationError& refusal) {
        failures.clear();
        EXPECT_EQ(failureOf(windowManager->perform(action)), refusal);
        EXPECT_THAT(failures, ElementsAre(refusal.description()));
        EXPECT_THAT(writes(), IsEmpty());
    }

    /// Leaves an entry to restore for a window of the frontmost application.
    SimulatedWindowID arrangeAWindow() {
        const SimulatedWindowID id = openWindow();
        EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
        clearRecords();
        return id;
    }
};

TEST_F(WindowManagerTest, WithoutTrustItPromptsAndDoesNothingElse) {
    arrangeAWindow();
    desktop().trusted = false;

    expectRefusal(rightHalf, WindowOperationError::accessibilityPermissionMissing);

    EXPECT_THAT(failures, ElementsAre("Accessibility permission is required."));
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted", "prompt"));
    EXPECT_THAT(logLines(), ElementsAre(info("perform right"), error("not trusted, requesting access")));
    EXPECT_EQ(desktop().promptCount, 1);
    EXPECT_FALSE(permissionsManager->isTrusted().value());
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, IsRefusedAlsoWhenTheUserGrantsAccessInThePrompt) {
    openWindow();
    desktop().trusted = false;
    desktop().trustedAfterPrompt = true;

    expectRefusal(leftHalf, WindowOperationError::accessibilityPermissionMissing);

    EXPECT_TRUE(permissionsManager->isTrusted().value());
}

TEST_F(WindowManagerTest, ActsAfterTheUserHasGrantedAccess) {
    openWindow();
    desktop().trusted = false;
    desktop().trustedAfterPrompt = true;
    expectRefusal(leftHalf, WindowOperationError::accessibilityPermissionMissing);

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
    EXPECT_EQ(desktop().promptCount, 1);
}

TEST_F(WindowManagerTest, PromptsAgainWhenAccessWasRevoked) {
    arrangeAWindow();
    desktop().trusted = false;

    expectRefusal(leftHalf, WindowOperationError::accessibilityPermissionMissing);
    expectRefusal(leftHalf, WindowOperationError::accessibilityPermissionMissing);

    EXPECT_EQ(desktop().promptCount, 2);
}

TEST_F(WindowManagerTest, StoresTheAnswerAboutTrustAtEveryAction) {
    desktop().trusted = false;
    permissionsManager->refresh();
    desktop().trusted = true;

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), WindowOperationError::noFocusedWindow);

    EXPECT_TRUE(permissionsManager->isTrusted().value());
}

TEST_F(WindowManagerTest, PrunesAClosedWindowAlsoWhenTheActionIsThenRefused) {
    desktop().closeWindow(arrangeAWindow());

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, KeepsTheEntryOfALiveWindowWhenTheActionIsRefused) {
    arrangeAWindow();

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, AsksEveryRememberedWindowForItsRoleBeforeAnythingElseOfTheDesktop) {
    arrangeAWindow();

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted", "timeout 0.75 of window", "copy AXRole of window"));
}

TEST_F(WindowManagerTest, PrunesAWindowThatDoesNotAnswer) {
    arrangeAWindow();
    application().frozen = true;

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, PrunesAnEntryThatIsOneHourOldWithoutAskingItsWindow) {
    arrangeAWindow();
    platform.runLoop().advance(std::chrono::hours{1});
    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted"));
}

TEST_F(WindowManagerTest, KeepsAnEntryThatIsNotQuiteOneHourOld) {
    arrangeAWindow();
    platform.runLoop().advance(std::chrono::hours{1} - std::chrono::nanoseconds{1});

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_TRUE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, RefusesADisplayMoveWithOneDisplayBeforeItLooksForAnApplication) {
    desktop().frontmost.reset();

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);
    expectRefusal(previousDisplay, WindowOperationError::displayMoveUnavailable);

    EXPECT_THAT(logLines(), ElementsAre(info("perform nextDisplay"), info("perform previousDisplay")));
}

TEST_F(WindowManagerTest, RefusesADisplayMoveWithoutAnyDisplay) {
    openWindow();
    setDisplays({});

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);
}

TEST_F(WindowManagerTest, DoesNotCountADisplayWithoutANumber) {
    openWindow();
    auto displays = describedByWindowServer({mainDisplay(), rightDisplay()});
    displays[1].number.reset();
    platform.setDisplays(displays);

    expectRefusal(nextDisplay, WindowOperationError::displayMoveUnavailable);
}

TEST_F(WindowManagerTest, IsRefusedWithoutAFrontmostApplication) {
    desktop().frontmost.reset();

    expectRefusal(leftHalf, WindowOperationError::noFrontmostApplication);

    EXPECT_THAT(logLines(), ElementsAre(info("perform left"), error("no frontmost application")));
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted"));
}

TEST_F(WindowManagerTest, IsRefusedWhileTheProgramItselfIsFrontmost) {
    openWindow();
    application().bundleIdentifier = "app.velmorand.Velmorand";

    expectRefusal(leftHalf, WindowOperationError::velmorandIsFrontmost);

    EXPECT_THAT(logLines(), ElementsAre(info("perform left"), info("frontmost app.velmorand.Velmorand pid 501"),
                                        error("frontmost is Velmorand itself")));
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted"));
}

TEST_F(WindowManagerTest, TwoAbsentIdentifiersCountAsTheProgramItself) {
    openWindow();
    application().bundleIdentifier.reset();
    platform.settableBundle().setIdentifier(std::nullopt);

    expectRefusal(leftHalf, WindowOperationError::velmorandIsFrontmost);

    EXPECT_THAT(logLines(),
                ElementsAre(info("perform left"), info("frontmost ? pid 501"), error("frontmost is Velmorand itself")));
}

TEST_F(WindowManagerTest, OneAbsentIdentifierIsNotTheProgramItself) {
    openWindow();
    platform.settableBundle().setIdentifier(std::nullopt);

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
}

TEST_F(WindowManagerTest, RefusesAnIgnoredApplicationByItsNameAndLogsNothingOfIt) {
    openWindow();
    changePreferences([](PreferencesState& state) { state.ignoredApps = {"org.example.Other", "org.example.Editor"}; });

    expectRefusal(leftHalf, WindowOperationError::ignored("Editor"));

    EXPECT_THAT(failures, ElementsAre("Editor is ignored."));
    EXPECT_THAT(logLines(), ElementsAre(info("perform left"), info("frontmost org.example.Editor pid 501")));
    EXPECT_THAT(accessibility.calls(), ElementsAre("trusted"));
}

TEST_F(WindowManagerTest, NamesAnIgnoredApplicationWithoutANameByItsIdentifier) {
    application().localizedName.reset();
    changePreferences([](PreferencesState& state) { state.ignoredApps = {"org.example.Editor"}; });

    expectRefusal(leftHalf, WindowOperationError::ignored("org.example.Editor"));
}

TEST_F(WindowManagerTest, ComparesIgnoredIdentifiersExactly) {
    openWindow();
    changePreferences([](PreferencesState& state) {
        state.ignoredApps = {"org.example.editor", "org.example.Edito", "org.example.Editor.Helper", ""};
    });

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
}

TEST_F(WindowManagerTest, AnApplicationWithoutAnIdentifierIsNeverIgnored) {
    openWindow();
    application().bundleIdentifier.reset();
    changePreferences([](PreferencesState& state) { state.ignoredApps = {"", "?", "Editor"}; });

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
    EXPECT_THAT(logLines(), Contains(info("frontmost ? pid 501")));
}

TEST_F(WindowManagerTest, IsRefusedWhenTheApplicationHasNoWindow) {
    expectRefusal(leftHalf, WindowOperationError::noFocusedWindow);

    EXPECT_THAT(logLines("windows"), ElementsAre(info("perform left"), info("frontmost org.example.Editor pid 501")));
}

TEST_F(WindowManagerTest, BoundsTheApplicationElementBeforeItIsAskedAnything) {
    expectRefusal(leftHalf, WindowOperationError::noFocusedWindow);

    EXPECT_THAT(accessibility.calls(),
                ElementsAre("trusted", "application 501", "timeout 0.75 of application",
                            "copy AXFocusedWindow of application", "copy AXMainWindow of application",
                            "copy AXWindows of application"));
}

TEST_F(WindowManagerTest, IsRefusedWhenTheFrameCannotBeRead) {
    const SimulatedWindowID id = openWindow();
    window(id).readErrors["AXPosition"] = AXError::cannotComplete;

    expectRefusal(leftHalf, WindowOperationError::missingWindowFrame);

    EXPECT_THAT(logLines(), ElementsAre(info("perform left"), info("frontmost org.example.Editor pid 501")));
}

TEST_F(WindowManagerTest, IsRefusedWhenTheWindowHasNoWidth) {
    window(openWindow()).frame.width = 0;

    expectRefusal(leftHalf, WindowOperationError::missingWindowFrame);
}

TEST_F(WindowManagerTest, IsRefusedWithoutAScreenForTheWindow) {
    openWindow();
    setDisplays({});

    expectRefusal(leftHalf, WindowOperationError::missingScreen);

    EXPECT_THAT(logLines(), ElementsAre(info("perform left"), info("frontmost org.example.Editor pid 501"),
                                        info("current frame (100, 100, 800, 600)"), error("no target frame for left")));
}

TEST_F(WindowManagerTest, IsRefusedForADisplayMoveFromAnEmptyArea) {
    openWindow();
    setDisplays({{1, "Narrow", {0, 0, 900, 100}, 0}, rightDisplay()});
    changePreferences([](PreferencesState& state) { state.outerPadding = 50; });

    expectRefusal(previousDisplay, WindowOperationError::missingScreen);

    EXPECT_THAT(logLines(), Contains(error("no target frame for previousDisplay")));
}

TEST_F(WindowManagerTest, IsRefusedWhenTheWindowStopsBeingSettableAfterItWasFound) {
    const SimulatedWindowID id = openWindow();
    accessibility.interruptBefore("settable AXPosition of window", 2, [&] { window(id).sizeSettable = false; });

    expectRefusal(leftHalf, WindowOperationError::unsupportedWindow);

    EXPECT_THAT(logLines(),
                ElementsAre(info("perform left"), info("frontmost org.example.Editor pid 501"),
                            info("current frame (100, 100, 800, 600)"), info("target frame (0, 25, 720, 875)")));
}

TEST_F(WindowManagerTest, IsRefusedWhenTheTargetIsMissingBeforeTheWindowIsAskedWhetherItCanBeSet) {
    openWindow();
    setDisplays({});

    expectRefusal(leftHalf, WindowOperationError::missingScreen);

    EXPECT_EQ(accessibility.count("settable AXPosition of window"), 1);
}

TEST_F(WindowManagerTest, AWriteThatFailsIsRefusedWithTheClientsSentence) {
    const SimulatedWindowID id = openWindow();
    window(id).positionWriteError = AXError::cannotComplete;

    expectRefusal(leftHalf,
                  WindowOperationError::accessibility("The target app did not respond to Accessibility requests."));

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, AWindowThatClosesBetweenReadAndWriteIsRefusedAndNothingIsRecorded) {
    const SimulatedWindowID id = openWindow();
    accessibility.interruptBefore("set AXPosition of window", 1, [&] { desktop().closeWindow(id); });

    expectRefusal(leftHalf,
                  WindowOperationError::accessibility("Could not move the focused window (AX error -25202)."));

    EXPECT_FALSE(windowManager->hasRestoreEntry(pid));
}

TEST_F(WindowManagerTest, ObservesTheEndOfApplicationsAndTheDisplaysAsLongAsItLives) {
    CountingNotificationCenter center;
    CountingNotificationCenter displays;
    auto manager =
        std::make_unique<WindowManager>(permissionsManager, preferencesStore, screenGeometryProvider, axClient,
                                        WindowManagerPlatform{accessibility, platform.workspace(), center, displays,
                                                              platform.bundle(), platform.runLoop(), platform.log()});
    EXPECT_THAT(center.names, ElementsAre(NotificationName::applicationTerminated));
    EXPECT_EQ(center.observers, 1);
    EXPECT_THAT(displays.names, ElementsAre(NotificationName::screenParametersChanged));
    EXPECT_EQ(displays.observers, 1);

    manager.reset();

    EXPECT_EQ(center.observers, 0);
    EXPECT_EQ(displays.observers, 0);
}

TEST_F(WindowManagerTest, RefusesWithoutAnybodyToTell) {
    windowManager->setOnFailure(nullptr);

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), WindowOperationError::noFocusedWindow);
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(WindowManagerTest, AFailureLeavesTheNextActionUntouched) {
    expectRefusal(leftHalf, WindowOperationError::noFocusedWindow);
    const SimulatedWindowID id = openWindow();

    EXPECT_EQ(failureOf(windowManager->perform(leftHalf)), std::nullopt);
    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
}

}  // namespace
}  // namespace velmorand

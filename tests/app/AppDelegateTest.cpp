#include "app/AppDelegate.h"

#include "app/MenuBarController.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "preferences/PreferencesStore.h"
#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/Expected.h"
#include "support/NotedSettingsWindows.h"
#include "support/Printing.h"
#include "support/SimulatedPrinting.h"
#include "windows/WindowManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class AppDelegateTest : public testing::Test {
protected:
    static constexpr std::int32_t pid = 501;

    [[nodiscard]] SimulatedHotKeyService& service() { return platform.hotKeyService(); }
    [[nodiscard]] const std::vector<std::string>& writes() { return platform.userDefaults().writes(); }
    [[nodiscard]] SimulatedWindowID openWindow() {
        platform.desktop().addProcess(pid);
        return platform.desktop().addWindow(pid);
    }

    SimulatedPlatform platform;
    NotedSettingsWindows settingsWindows;
    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>(platform, settingsWindows.maker());
};

TEST_F(AppDelegateTest, ConstructionAsksForNothingAndShowsNothing) {
    platform.desktop().trusted = false;

    const AppDelegate other(platform, settingsWindows.maker());

    EXPECT_EQ(platform.desktop().promptCount, 0);
    EXPECT_EQ(service().handlerCount(), 0U);
    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(AppDelegateTest, StartsWithTheDefaultPreferences) {
    EXPECT_EQ(delegate->preferencesStore()->current(), defaultPreferencesState());
    EXPECT_EQ(delegate->shortcutManager().eventHandlerIssue(), std::nullopt);
    EXPECT_THAT(delegate->shortcutManager().shortcutIssues(), IsEmpty());
    EXPECT_FALSE(delegate->windowManager()->hasRestoreEntry(pid));
}

TEST_F(AppDelegateTest, LaunchingRegistersTheShortcutsAndThenShowsTheStatusItem) {
    std::vector<std::size_t> registered;
    platform.statusBar().setOnMake([&] { registered.push_back(service().registrationCount()); });
    EXPECT_THAT(platform.statusBar().items(), IsEmpty());

    delegate->applicationDidFinishLaunching();

    EXPECT_THAT(registered, ElementsAre(19));
    EXPECT_THAT(platform.statusBar().items(), SizeIs(1));
}

TEST_F(AppDelegateTest, AFailureOfTheWindowManagerIsShownByTheStatusItem) {
    delegate->applicationDidFinishLaunching();
    EXPECT_FALSE(delegate->windowManager()->perform(WindowAction::nextDisplay));
    EXPECT_EQ(platform.statusBar().items().front()->toolTip(), "Only one display is connected.");
}

TEST_F(AppDelegateTest, AFailureOfTheWindowManagerAfterTheEndOfTheDelegateIsIgnored) {
    const auto manager = delegate->windowManager();
    delegate->applicationDidFinishLaunching();
    delegate.reset();
    EXPECT_FALSE(manager->perform(WindowAction::nextDisplay));
    EXPECT_THAT(platform.statusBar().items(), IsEmpty());
}

TEST_F(AppDelegateTest, QuittingFromTheMenuTakesTheWayOfEveryOtherEndOnce) {
    platform.application().setDelegate(delegate);
    delegate->preferencesStore()->setOuterPadding(7);
    platform.runLoop().post([this] {
        SimulatedStatusItem& item = *platform.statusBar().items().at(0);
        EXPECT_TRUE(item.openMenu());
        EXPECT_TRUE(item.choose("Quit Velmorand"));
    });

    EXPECT_EQ(platform.application().run(), 0);

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(writes(), SizeIs(1));
}

TEST_F(AppDelegateTest, StartingTheProgramAgainShowsTheSettings) {
    platform.application().setDelegate(delegate);
    platform.application().reopen("token-1");

    EXPECT_EQ(platform.application().run(), 0);

    EXPECT_THAT(settingsWindows.notes, ElementsAre("made", "front", "saved"));
}

TEST_F(AppDelegateTest, WhatTheSettingsWindowCannotDoIsAnIssueOfTheMenuAndInTheLog) {
    delegate->applicationDidFinishLaunching();
    delegate->applicationShouldHandleReopen(std::nullopt);

    settingsWindows.onFailure("No mail program could be opened.");

    EXPECT_EQ(platform.statusBar().items().front()->toolTip(), "No mail program could be opened.");
    EXPECT_TRUE(platform.log().contains(LogLevel::error, "settings", "No mail program could be opened."));
}

TEST_F(AppDelegateTest, LaunchingStartsTheShortcutManagerAndAsksForNothing) {
    platform.desktop().trusted = false;

    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(service().handlerCount(), 1U);
    EXPECT_EQ(service().registrationCount(), 19U);
    EXPECT_EQ(platform.desktop().promptCount, 0);
}

TEST_F(AppDelegateTest, LaunchingRecordsThatTheHandlerCouldNotBeInstalled) {
    service().failInstallations(-9868);

    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(delegate->shortcutManager().eventHandlerIssue(), "Could not install the keyboard shortcut handler.");
    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(AppDelegateTest, TheHotKeysRestWhileAShortcutIsRecorded) {
    delegate->applicationDidFinishLaunching();

    delegate->shortcutRecorderPanel().open(WindowAction::leftHalf, nullptr);
    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_EQ(delegate->shortcutRecorderPanel().model().value().actionTitle, "Left");

    delegate->shortcutRecorderPanel().cancel();
    EXPECT_EQ(service().registrationCount(), 19U);
}

TEST_F(AppDelegateTest, TerminatingDuringARecordingRegistersNothingAgain) {
    delegate->applicationDidFinishLaunching();
    delegate->shortcutRecorderPanel().open(WindowAction::leftHalf, nullptr);

    delegate->applicationWillTerminate();
    EXPECT_EQ(service().registrationCount(), 0U);
    delegate.reset();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_FALSE(platform.recorderPanelHost().isShown());
}

TEST_F(AppDelegateTest, ProblemsOfShortcutsAreToldTheUser) {
    platform.userNotificationCenter().setAuthorization(NotificationAuthorization::authorized);
    service().setTaken(123, 0x900, true);
    delegate->applicationDidFinishLaunching();
    platform.runLoop().runPending();

    EXPECT_TRUE(platform.userNotificationCenter().shown().contains("app.velmorand.Velmorand.shortcut.issue"));
}

TEST_F(AppDelegateTest, TerminatingGivesTheHotKeysBack) {
    delegate->applicationDidFinishLaunching();

    delegate->applicationWillTerminate();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_EQ(service().handlerCount(), 0U);
}

TEST_F(AppDelegateTest, TerminatingWithoutHavingLaunchedDoesNothing) {
    delegate->applicationWillTerminate();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
}

TEST_F(AppDelegateTest, TerminatingHasTheSettingsWindowStoreWhatWaits) {
    delegate->menuBarController().install();
    EXPECT_THAT(settingsWindows.notes, IsEmpty());
    platform.statusBar().items().front()->openMenu();
    platform.statusBar().items().front()->choose("Settings...");
    platform.runLoop().runPending();

    delegate->applicationWillTerminate();

    EXPECT_THAT(settingsWindows.notes, ElementsAre("made", "front", "saved"));
}

TEST_F(AppDelegateTest, TerminatingStoresTheLatestOfTheSettingsThatWaitOnce) {
    delegate->applicationDidFinishLaunching();
    delegate->preferencesStore()->setOuterPadding(8);
    delegate->preferencesStore()->setInnerGap(4);

    delegate->applicationWillTerminate();
    delegate->applicationWillTerminate();
    platform.runLoop().advance(std::chrono::seconds(1));

    EXPECT_THAT(writes(), ElementsAre(HasSubstr(R"("outerPadding":8,"innerGap":4,)")));
}

TEST_F(AppDelegateTest, TerminatingStoresNothingWhenNothingWaits) {
    delegate->applicationDidFinishLaunching();
    delegate->applicationWillTerminate();
    EXPECT_THAT(writes(), IsEmpty());

    delegate->preferencesStore()->setEnableAnimations(true);
    delegate->applicationWillTerminate();
    EXPECT_THAT(writes(), SizeIs(1));
}

TEST_F(AppDelegateTest, StartsWithThePreferencesThatTheLastRunLeft) {
    delegate->preferencesStore()->removeShortcut(WindowAction::leftHalf);
    delegate->preferencesStore()->setOuterPadding(10);
    delegate->applicationWillTerminate();

    delegate = std::make_shared<AppDelegate>(platform, settingsWindows.maker());
    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(delegate->preferencesStore()->current().outerPadding, 10);
    EXPECT_EQ(service().registrationCount(), 18U);
}

TEST_F(AppDelegateTest, StartsWithTheDefaultsWhenThePreferencesCannotBeRead) {
    platform.userDefaults().put(PreferencesStore::key, "[]");

    AppDelegate other(platform, settingsWindows.maker());

    EXPECT_EQ(other.preferencesStore()->current(), defaultPreferencesState());
    EXPECT_THAT(platform.log().lines(),
                ElementsAre(LogLine{LogLevel::error, "preferences",
                                    "Failed to load preferences, using defaults: The document is not an object."}));
}

TEST_F(AppDelegateTest, APressedShortcutMovesTheFocusedWindow) {
    delegate->applicationDidFinishLaunching();
    const SimulatedWindowID id = openWindow();

    service().press(36, 0x900);
    platform.runLoop().runPending();

    EXPECT_EQ(platform.desktop().window(id).frame, (Rect{0, 25, 1440, 875}));
    EXPECT_TRUE(delegate->windowManager()->hasRestoreEntry(pid));
}

TEST_F(AppDelegateTest, TheServicesShareTheOnePreferencesStore) {
    delegate->applicationDidFinishLaunching();
    const SimulatedWindowID id = openWindow();
    delegate->preferencesStore()->setOuterPadding(10);
    delegate->preferencesStore()->setShortcut(WindowAction::maximizeWindow, {{122, ShortcutModifiers(0x1000)}, "F1"});
    platform.runLoop().runPending();

    service().press(122, 0x1000);
    platform.runLoop().runPending();

    EXPECT_EQ(platform.desktop().window(id).frame, (Rect{10, 35, 1420, 855}));
}

TEST_F(AppDelegateTest, AFailureOfTheWindowManagerIsLogged) {
    EXPECT_EQ(failureOf(delegate->windowManager()->perform(WindowAction::nextDisplay)),
              WindowOperationError::displayMoveUnavailable);

    EXPECT_THAT(platform.log().lines(),
                ElementsAre(LogLine{LogLevel::info, "windows", "perform nextDisplay"},
                            LogLine{LogLevel::error, "windows", "Only one display is connected."}));
}

TEST_F(AppDelegateTest, LivesThroughAWholeRunOfTheApplication) {
    std::size_t registeredMeanwhile = 0;
    platform.application().setDelegate(delegate);
    platform.runLoop().post([&] {
        registeredMeanwhile = service().registrationCount();
        platform.application().terminate();
    });

    EXPECT_EQ(platform.application().run(), 0);

    EXPECT_EQ(registeredMeanwhile, 19U);
    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(AppDelegateTest, APressThatArrivesAfterTheEndOfTheDelegateDoesNothing) {
    delegate->applicationDidFinishLaunching();
    const SimulatedWindowID id = openWindow();
    service().press(36, 0x900);

    delegate.reset();
    platform.runLoop().runPending();

    EXPECT_EQ(platform.desktop().window(id).frame, (Rect{100, 100, 800, 600}));
}

}  // namespace
}  // namespace velmorand

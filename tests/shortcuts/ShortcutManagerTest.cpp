#include "shortcuts/ShortcutManager.h"

#include "shortcuts/CarbonHotKeyRegistrar.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t commandOption = 0x900;
constexpr std::uint32_t f1 = 122;

class ShortcutManagerTest : public DesktopFixture {
protected:
    [[nodiscard]] SimulatedHotKeyService& service() { return platform.hotKeyService(); }
    [[nodiscard]] std::optional<std::uint32_t> registeredID(std::uint32_t keyCode, std::uint32_t modifiers) {
        const auto id = service().registeredID(keyCode, modifiers);
        return id ? std::optional(id->id) : std::nullopt;
    }

    void start() {
        shortcutManager->start();
        platform.log().clear();
    }
    void assign(WindowAction action, std::uint32_t keyCode, std::uint32_t modifiers) {
        changePreferences([&](PreferencesState& state) {
            state.shortcuts[std::string(rawValue(action))] = {{keyCode, ShortcutModifiers(modifiers)}, "Key"};
        });
    }
    void disable(WindowAction action) {
        changePreferences(
            [&](PreferencesState& state) { state.disabledShortcutActions.emplace_back(rawValue(action)); });
    }
};

TEST_F(ShortcutManagerTest, RegistersNothingBeforeItIsStarted) {
    shortcutManager->refreshRegistrations();

    EXPECT_EQ(service().handlerCount(), 0U);
    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_EQ(shortcutManager->eventHandlerIssue(), std::nullopt);
    EXPECT_THAT(shortcutManager->shortcutIssues(), IsEmpty());
    EXPECT_THAT(shortcutManager->registrationIssuesByAction().value(), IsEmpty());
}

TEST_F(ShortcutManagerTest, RegistersEveryDefaultShortcutUnderItsPlaceInTheCatalogue) {
    shortcutManager->start();

    EXPECT_EQ(service().handlerCount(), 1U);
    EXPECT_EQ(service().registrationCount(), 19U);
    EXPECT_EQ(registeredID(123, 0x900), 1U);
    EXPECT_EQ(registeredID(124, 0x900), 2U);
    EXPECT_EQ(registeredID(126, 0x900), 3U);
    EXPECT_EQ(registeredID(125, 0x900), 4U);
    EXPECT_EQ(registeredID(14, 0xB00), 5U);
    EXPECT_EQ(registeredID(15, 0xB00), 6U);
    EXPECT_EQ(registeredID(17, 0xB00), 7U);
    EXPECT_EQ(registeredID(16, 0xB00), 8U);
    EXPECT_EQ(registeredID(123, 0x1900), 9U);
    EXPECT_EQ(registeredID(125, 0x1900), 10U);
    EXPECT_EQ(registeredID(124, 0x1900), 11U);
    EXPECT_EQ(registeredID(14, 0x1900), 12U);
    EXPECT_EQ(registeredID(15, 0x1900), 13U);
    EXPECT_EQ(registeredID(17, 0x1900), 14U);
    EXPECT_EQ(registeredID(30, 0x900), 15U);
    EXPECT_EQ(registeredID(33, 0x900), 16U);
    EXPECT_EQ(registeredID(36, 0x900), 17U);
    EXPECT_EQ(registeredID(36, 0x1900), 18U);
    EXPECT_EQ(registeredID(35, 0xB00), 19U);
}

TEST_F(ShortcutManagerTest, LogsEveryRegistrationInCatalogueOrder) {
    shortcutManager->start();

    ASSERT_EQ(logLines().size(), 19U);
    EXPECT_EQ(logLines().front(), (LogLine{LogLevel::debug, "shortcuts", "Registered shortcut left id 1"}));
    EXPECT_EQ(logLines()[16], (LogLine{LogLevel::debug, "shortcuts", "Registered shortcut maximize id 17"}));
    EXPECT_EQ(logLines().back(), (LogLine{LogLevel::debug, "shortcuts", "Registered shortcut restore id 19"}));
}

TEST_F(ShortcutManagerTest, KeepsTheIdsOfTheOthersWhenAnActionIsDisabled) {
    disable(leftHalf);
    shortcutManager->start();

    EXPECT_EQ(service().registrationCount(), 18U);
    EXPECT_EQ(registeredID(123, 0x900), std::nullopt);
    EXPECT_EQ(registeredID(124, 0x900), 2U);
    EXPECT_EQ(registeredID(35, 0xB00), 19U);
}

TEST_F(ShortcutManagerTest, RegistersTheAssignedShortcutInsteadOfTheDefault) {
    assign(leftHalf, f1, 0x1000);
    shortcutManager->start();

    EXPECT_EQ(registeredID(f1, 0x1000), 1U);
    EXPECT_EQ(registeredID(123, 0x900), std::nullopt);
}

TEST_F(ShortcutManagerTest, WithoutAHandlerItRegistersNothingAndSaysWhy) {
    service().failInstallations(-9868);

    shortcutManager->start();

    EXPECT_EQ(shortcutManager->eventHandlerIssue(), "Could not install the keyboard shortcut handler.");
    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(shortcutManager->shortcutIssues(), IsEmpty());
    EXPECT_THAT(logLines("shortcuts"),
                ElementsAre(LogLine{LogLevel::error, "shortcuts",
                                    "hot key handler install failed: Could not install the keyboard shortcut handler "
                                    "(error -9868)."}));
}

TEST_F(ShortcutManagerTest, WithoutAHandlerItDoesNotFollowThePreferences) {
    service().failInstallations(-9868);
    shortcutManager->start();
    service().failInstallations(noError);

    assign(leftHalf, f1, 0x1000);
    platform.runLoop().runPending();
    shortcutManager->refreshRegistrations();

    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(ShortcutManagerTest, APressPerformsItsActionInALaterTurn) {
    start();
    const SimulatedWindowID id = openWindow();

    EXPECT_TRUE(service().press(leftArrow, commandOption));
    EXPECT_EQ(window(id).frame, startFrame);
    platform.runLoop().runPending();

    EXPECT_EQ(window(id).frame, (Rect{0, 25, 720, 875}));
    ASSERT_GE(logLines().size(), 2U);
    EXPECT_EQ(logLines()[0], (LogLine{LogLevel::info, "shortcuts", "Dispatching shortcut left"}));
    EXPECT_EQ(logLines()[1], (LogLine{LogLevel::info, "windows", "perform left"}));
}

TEST_F(ShortcutManagerTest, EveryIdDispatchesItsOwnAction) {
    start();
    for (const WindowAction action : allWindowActions) {
        SCOPED_TRACE(rawValue(action));
        platform.log().clear();
        shortcutManager->handleHotKey(static_cast<std::uint32_t>(action) + 1);
        EXPECT_THAT(
            logLines("shortcuts"),
            ElementsAre(LogLine{LogLevel::info, "shortcuts", "Dispatching shortcut " + std::string(rawValue(action))}));
        EXPECT_EQ(logLines("windows").front(),
                  (LogLine{LogLevel::info, "windows", "perform " + std::string(rawValue(action))}));
    }
}

TEST_F(ShortcutManagerTest, APressWithAnUnknownIdOnlyLogs) {
    start();
    openWindow();

    shortcutManager->handleHotKey(20);
    shortcutManager->handleHotKey(0);

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 20"},
                                        LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 0"}));
    EXPECT_THAT(accessibility.calls(), IsEmpty());
}

TEST_F(ShortcutManagerTest, APressOfADisabledActionsIdOnlyLogs) {
    disable(leftHalf);
    start();

    shortcutManager->handleHotKey(1);

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 1"}));
}

TEST_F(ShortcutManagerTest, ARefusedActionReachesTheUserThroughTheWindowManager) {
    start();

    service().press(leftArrow, commandOption);
    platform.runLoop().runPending();

    EXPECT_THAT(failures, ElementsAre("No focused window is available."));
}

TEST_F(ShortcutManagerTest, AChangedShortcutIsRegisteredInALaterTurn) {
    start();

    assign(leftHalf, f1, 0x1000);
    EXPECT_EQ(registeredID(123, 0x900), 1U);
    platform.runLoop().runPending();

    EXPECT_EQ(registeredID(f1, 0x1000), 1U);
    EXPECT_EQ(registeredID(123, 0x900), std::nullopt);
    EXPECT_EQ(service().registrationCount(), 19U);
}

TEST_F(ShortcutManagerTest, AChangedListOfDisabledActionsIsFollowed) {
    start();

    disable(leftHalf);
    platform.runLoop().runPending();
    EXPECT_EQ(service().registrationCount(), 18U);

    changePreferences([](PreferencesState& state) { state.disabledShortcutActions.clear(); });
    platform.runLoop().runPending();
    EXPECT_EQ(service().registrationCount(), 19U);
}

TEST_F(ShortcutManagerTest, AChangeOfAnyOtherSettingNeverTouchesTheHotKeys) {
    start();

    changePreferences([](PreferencesState& state) {
        state.ignoredApps = {"org.example.Other"};
        state.clampToVisibleArea = false;
        state.outerPadding = 12;
        state.innerGap = 6;
        state.enableAnimations = true;
        state.animationDuration = 0.3;
    });

    EXPECT_TRUE(platform.runLoop().isIdle());
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(ShortcutManagerTest, EveryChangeOfTheShortcutsIsOnePass) {
    start();

    assign(leftHalf, f1, 0x1000);
    platform.runLoop().runPending();
    EXPECT_EQ(logLines().size(), 19U);

    assign(leftHalf, f1, 0x1000);
    platform.runLoop().runPending();
    EXPECT_EQ(logLines().size(), 19U);
}

TEST_F(ShortcutManagerTest, ComparesEachValueWithTheOneBeforeIt) {
    start();

    assign(leftHalf, f1, 0x1000);
    changePreferences([](PreferencesState& state) { state = defaultPreferencesState(); });
    platform.runLoop().runPending();

    EXPECT_EQ(registeredID(123, 0x900), 1U);
    EXPECT_EQ(logLines().size(), 38U);
}

TEST_F(ShortcutManagerTest, WhileSuspendedNoHotKeyIsRegistered) {
    start();

    shortcutManager->setRecordingSuspended(true);

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_EQ(service().handlerCount(), 1U);
    EXPECT_FALSE(service().press(leftArrow, commandOption));
}

TEST_F(ShortcutManagerTest, APressThatArrivesWhileSuspendedOnlyLogs) {
    start();
    service().press(leftArrow, commandOption);

    shortcutManager->setRecordingSuspended(true);
    platform.runLoop().runPending();

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 1"}));
}

TEST_F(ShortcutManagerTest, WhileSuspendedAChangeOfTheShortcutsDoesNothing) {
    start();
    shortcutManager->setRecordingSuspended(true);

    assign(leftHalf, f1, 0x1000);
    platform.runLoop().runPending();
    shortcutManager->refreshRegistrations();

    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(ShortcutManagerTest, TheEndOfTheSuspensionRegistersTheNewState) {
    start();
    shortcutManager->setRecordingSuspended(true);
    assign(leftHalf, f1, 0x1000);
    platform.runLoop().runPending();

    shortcutManager->setRecordingSuspended(false);

    EXPECT_EQ(registeredID(f1, 0x1000), 1U);
    EXPECT_EQ(service().registrationCount(), 19U);
}

TEST_F(ShortcutManagerTest, TheSuspensionLeavesTheProblemTextsAsTheyAre) {
    service().setTaken(leftArrow, commandOption, true);
    start();

    shortcutManager->setRecordingSuspended(true);

    EXPECT_EQ(shortcutManager->shortcutIssues().size(), 1U);
    EXPECT_EQ(shortcutManager->registrationIssuesByAction().value().size(), 1U);
}

TEST_F(ShortcutManagerTest, TheEndOfASuspensionWithoutAHandlerRegistersNothing) {
    shortcutManager->setRecordingSuspended(true);
    shortcutManager->setRecordingSuspended(false);

    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(ShortcutManagerTest, StoppingGivesEverythingBack) {
    start();

    shortcutManager->stop();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_EQ(service().handlerCount(), 0U);
    shortcutManager->handleHotKey(1);
    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 1"}));
}

TEST_F(ShortcutManagerTest, StoppingEndsTheSubscriptionToThePreferences) {
    start();
    shortcutManager->stop();

    assign(leftHalf, f1, 0x1000);

    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(ShortcutManagerTest, APassThatIsStillToRunWhenItIsStoppedDoesNothing) {
    start();
    assign(leftHalf, f1, 0x1000);

    shortcutManager->stop();
    platform.runLoop().runPending();

    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(ShortcutManagerTest, CanBeStartedAgain) {
    start();
    shortcutManager->stop();

    shortcutManager->start();

    EXPECT_EQ(service().registrationCount(), 19U);
    EXPECT_EQ(service().handlerCount(), 1U);
}

TEST_F(ShortcutManagerTest, APressAndAChangeAfterItsDeathDoNothing) {
    start();
    service().press(leftArrow, commandOption);
    assign(leftHalf, f1, 0x1000);

    shortcutManager.reset();
    platform.runLoop().runPending();

    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_EQ(registeredID(123, 0x900), 1U);
}

}  // namespace
}  // namespace velmorand

#include "shortcuts/ShortcutManager.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using enum WindowAction;

constexpr std::uint32_t f1 = 122;
constexpr std::uint32_t commandOption = 0x900;

/// Shared and refused combinations, and what is said of them.
class ShortcutManagerConflictTest : public DesktopFixture {
protected:
    [[nodiscard]] SimulatedHotKeyService& service() { return platform.hotKeyService(); }

    void assign(WindowAction action, std::uint32_t keyCode, std::uint32_t modifiers, const std::string& label = "Key") {
        changePreferences([&](PreferencesState& state) {
            state.shortcuts[std::string(rawValue(action))] = {{keyCode, ShortcutModifiers(modifiers)}, label};
        });
        platform.runLoop().runPending();
    }
};

TEST_F(ShortcutManagerConflictTest, NeitherOfTwoActionsWithOneShortcutIsRegistered) {
    assign(topLeft, 123, commandOption, "Another Label");

    shortcutManager->start();

    EXPECT_EQ(service().registrationCount(), 17U);
    EXPECT_FALSE(service().isRegistered(123, commandOption));
    EXPECT_THAT(shortcutManager->shortcutIssues(), ElementsAre("Shortcut conflict, not registered: Left, Top Left."));
    EXPECT_THAT(shortcutManager->registrationIssuesByAction().value(), IsEmpty());
}

TEST_F(ShortcutManagerConflictTest, TheTitlesOfAConflictAreSorted) {
    assign(rightHalf, f1, 0x100);
    assign(bottomHalf, f1, 0x100);
    assign(restore, f1, 0x100);
    assign(centerWindow, f1, 0x100);

    shortcutManager->start();

    EXPECT_THAT(shortcutManager->shortcutIssues(),
                ElementsAre("Shortcut conflict, not registered: Bottom, Center, Restore Previous Frame, Right."));
    EXPECT_EQ(service().registrationCount(), 15U);
}

TEST_F(ShortcutManagerConflictTest, TheConflictsAreSorted) {
    assign(rightHalf, f1, 0x100);
    assign(topHalf, f1, 0x100);
    assign(nextDisplay, f1, 0x200);
    assign(centerThird, f1, 0x200);

    shortcutManager->start();

    EXPECT_THAT(shortcutManager->shortcutIssues(),
                ElementsAre("Shortcut conflict, not registered: Center Third, Next Display.",
                            "Shortcut conflict, not registered: Right, Top."));
}

TEST_F(ShortcutManagerConflictTest, ADisabledActionNeverConflicts) {
    assign(topLeft, 123, commandOption);
    changePreferences([](PreferencesState& state) { state.disabledShortcutActions = {"left"}; });

    shortcutManager->start();

    EXPECT_THAT(shortcutManager->shortcutIssues(), IsEmpty());
    EXPECT_EQ(service().registeredID(123, commandOption)->id, 5U);
    EXPECT_EQ(service().registrationCount(), 18U);
}

TEST_F(ShortcutManagerConflictTest, AConflictThatIsResolvedIsForgotten) {
    assign(topLeft, 123, commandOption);
    shortcutManager->start();

    assign(topLeft, f1, 0x100);

    EXPECT_THAT(shortcutManager->shortcutIssues(), IsEmpty());
    EXPECT_EQ(service().registrationCount(), 19U);
}

TEST_F(ShortcutManagerConflictTest, AConflictThatAppearsTakesTheHotKeyAway) {
    shortcutManager->start();

    assign(topLeft, 123, commandOption);

    EXPECT_FALSE(service().isRegistered(123, commandOption));
    EXPECT_EQ(service().registrationCount(), 17U);
}

TEST_F(ShortcutManagerConflictTest, AShortcutThatAnotherProgramHoldsIsReported) {
    service().setTaken(123, commandOption, true);

    shortcutManager->start();

    EXPECT_THAT(shortcutManager->shortcutIssues(),
                ElementsAre("Could not register Left (Option + Command + Left Arrow). "
                            "Another app may already be using it."));
    EXPECT_THAT(shortcutManager->registrationIssuesByAction().value(),
                ElementsAre(Pair(leftHalf, "Saved, but another app is already using this shortcut.")));
    EXPECT_EQ(service().registrationCount(), 18U);
}

TEST_F(ShortcutManagerConflictTest, AFailedRegistrationIsLoggedByTheRegistrarAndTheManager) {
    service().setTaken(123, commandOption, true);

    shortcutManager->start();

    EXPECT_EQ(logLines()[0], (LogLine{LogLevel::error, "hotkeys", "RegisterEventHotKey failed id 1 result -9878"}));
    EXPECT_EQ(logLines()[1], (LogLine{LogLevel::error, "shortcuts",
                                      "Failed shortcut left: Could not register the shortcut (error -9878)."}));
    EXPECT_EQ(logLines()[2], (LogLine{LogLevel::debug, "shortcuts", "Registered shortcut right id 2"}));
}

TEST_F(ShortcutManagerConflictTest, APressOfAFailedShortcutsIdOnlyLogs) {
    service().setTaken(123, commandOption, true);
    shortcutManager->start();
    clearRecords();

    shortcutManager->handleHotKey(1);

    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "shortcuts", "Missing action for hotkey id 1"}));
}

TEST_F(ShortcutManagerConflictTest, FailuresFollowTheConflictsInCatalogueOrder) {
    assign(rightHalf, f1, 0x100);
    assign(topHalf, f1, 0x100);
    service().setTaken(33, commandOption, true);
    service().setTaken(30, commandOption, true);
    service().setTaken(123, commandOption, true);

    shortcutManager->start();

    EXPECT_THAT(
        shortcutManager->shortcutIssues(),
        ElementsAre(
            "Shortcut conflict, not registered: Right, Top.",
            "Could not register Left (Option + Command + Left Arrow). Another app may already be using it.",
            "Could not register Next Display (Option + Command + ]). Another app may already be using it.",
            "Could not register Previous Display (Option + Command + [). Another app may already be using it."));
}

TEST_F(ShortcutManagerConflictTest, AFailureThatIsGoneAtTheNextPassIsForgotten) {
    service().setTaken(123, commandOption, true);
    shortcutManager->start();
    service().setTaken(123, commandOption, false);

    shortcutManager->refreshRegistrations();

    EXPECT_THAT(shortcutManager->shortcutIssues(), IsEmpty());
    EXPECT_THAT(shortcutManager->registrationIssuesByAction().value(), IsEmpty());
    EXPECT_EQ(service().registeredID(123, commandOption)->id, 1U);
}

TEST_F(ShortcutManagerConflictTest, AFailureThatStaysIsReportedOnceInEachPass) {
    service().setTaken(123, commandOption, true);
    shortcutManager->start();

    shortcutManager->refreshRegistrations();

    EXPECT_EQ(shortcutManager->shortcutIssues().size(), 1U);
    EXPECT_EQ(shortcutManager->registrationIssuesByAction().value().size(), 1U);
}

TEST_F(ShortcutManagerConflictTest, TheProblemsOfTheActionsArePublished) {
    std::vector<std::size_t> counts;
    const Subscription subscription = shortcutManager->registrationIssuesByAction().subscribe(
        [&](const auto& issues) { counts.push_back(issues.size()); });
    service().setTaken(123, commandOption, true);
    service().setTaken(30, commandOption, true);

    shortcutManager->start();

    EXPECT_THAT(counts, ElementsAre(0, 1, 2));
}

TEST_F(ShortcutManagerConflictTest, ARegistrationWithoutAReferenceIsAFailure) {
    service().withholdReferences(true);

    shortcutManager->start();

    EXPECT_EQ(shortcutManager->shortcutIssues().size(), 19U);
    EXPECT_THAT(logLines(), Contains(LogLine{LogLevel::error, "shortcuts",
                                             "Failed shortcut restore: Could not register the shortcut (error 0)."}));
}

}  // namespace
}  // namespace velmorand

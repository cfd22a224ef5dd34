#include "shortcuts/ShortcutRecorderModel.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

using enum WindowAction;

const KeyboardShortcut combination{{40, ShortcutModifiers::option}, "K"};

TEST(ShortcutRecorderModelTest, ThePromptHasAPlaceForTheAction) {
    EXPECT_EQ(recorderPrompt, "Press the new shortcut for %1");
}

TEST(ShortcutRecorderModelTest, TheHintSaysHowToCancelUnlessSomethingWasWrong) {
    EXPECT_EQ(recorderHint({}), "Press Escape to cancel — add a modifier to bind Escape itself.");
    EXPECT_EQ(recorderHint({.hint = std::string(recorderModifierHint)}),
              "Include at least one of Command, Control, or Option.");
}

TEST(ShortcutRecorderModelTest, NothingIsAskedWithoutAPendingCombination) {
    EXPECT_EQ(recorderQuestion({}), std::nullopt);
    EXPECT_EQ(recorderQuestion({.conflictingActions = {leftHalf}, .awaitingFragileConfirmation = true}), std::nullopt);
}

TEST(ShortcutRecorderModelTest, AConflictHasPlacesForWhoHasTheCombination) {
    EXPECT_EQ(recorderQuestion({.pendingShortcut = combination, .conflictingActions = {topLeft}}),
              (ShortcutRecorderQuestion{"This shortcut is already used by %1.",
                                        "%1 will have no shortcut until you assign a new one."}));
}

TEST(ShortcutRecorderModelTest, AFragileCombinationIsWarnedOf) {
    EXPECT_EQ(
        recorderQuestion({.pendingShortcut = combination, .awaitingFragileConfirmation = true}),
        (ShortcutRecorderQuestion{"Shortcuts without Command or Control can fail to register on some macOS versions.",
                                  "Add Command or Control for a more reliable global shortcut."}));
}

TEST(ShortcutRecorderModelTest, ACombinationOfTheScreenReaderIsWarnedOf) {
    EXPECT_EQ(recorderQuestion({.pendingShortcut = combination, .awaitingVoiceOverConfirmation = true}),
              (ShortcutRecorderQuestion{"Control–Option shortcuts can conflict with VoiceOver.",
                                        "Add Command for a shortcut that won't interfere with VoiceOver."}));
}

TEST(ShortcutRecorderModelTest, AConflictIsAskedBeforeAnyWarning) {
    EXPECT_EQ(recorderQuestion({.pendingShortcut = combination,
                                .conflictingActions = {leftHalf},
                                .awaitingFragileConfirmation = true,
                                .awaitingVoiceOverConfirmation = true})
                  ->message,
              "This shortcut is already used by %1.");
}

TEST(ShortcutRecorderModelTest, TheButtonsAreNamed) {
    EXPECT_EQ(recorderUseAnywayTitle, "Use Anyway");
    EXPECT_EQ(recorderRemoveTitle, "Remove Current Shortcut");
}

}  // namespace
}  // namespace velmorand

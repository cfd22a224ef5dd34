#include "shortcuts/ShortcutRecorderFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr auto command = ShortcutModifiers::command;
constexpr auto shift = ShortcutModifiers::shift;
constexpr auto option = ShortcutModifiers::option;
constexpr auto control = ShortcutModifiers::control;

class ShortcutRecorderPanelTest : public ShortcutRecorderFixture {};

TEST_F(ShortcutRecorderPanelTest, OpensWithAFreshModelAndTellsThatRecordingHasBegun) {
    open(topLeft);

    EXPECT_TRUE(panel->isRecording());
    EXPECT_TRUE(host().isKey());
    EXPECT_EQ(model(), (ShortcutRecorderModel{.actionTitle = "Top Left", .hasCurrentShortcut = true}));
    EXPECT_THAT(states, ElementsAre(true));
    EXPECT_THAT(message(), ElementsAre("Press Escape to cancel — add a modifier to bind Escape itself."));
}

TEST_F(ShortcutRecorderPanelTest, KnowsThatADisabledActionHasNoShortcut) {
    preferencesStore->removeShortcut(leftHalf);
    open(leftHalf);
    EXPECT_FALSE(model().hasCurrentShortcut);
}

TEST_F(ShortcutRecorderPanelTest, ShowsTheHeldModifiersInTheirOrder) {
    open();
    host().changeModifiers(commandFlag | shiftFlag | optionFlag | controlFlag | capsLockFlag);
    settle();
    EXPECT_THAT(model().heldModifierSymbols, ElementsAre("⌃", "⌥", "⇧", "⌘"));

    host().changeModifiers(shiftFlag);
    settle();
    EXPECT_THAT(model().heldModifierSymbols, ElementsAre("⇧"));

    host().changeModifiers(0);
    settle();
    EXPECT_THAT(model().heldModifierSymbols, IsEmpty());
}

TEST_F(ShortcutRecorderPanelTest, EscapeAloneCancels) {
    const auto before = shortcut(leftHalf);
    open();
    press(keyEscape, 0, "");

    EXPECT_FALSE(panel->isRecording());
    EXPECT_FALSE(host().isShown());
    EXPECT_THAT(states, ElementsAre(true, false));
    EXPECT_EQ(shortcut(leftHalf), before);
}

TEST_F(ShortcutRecorderPanelTest, EscapeWithShiftCancelsToo) {
    open();
    press(keyEscape, shiftFlag);
    EXPECT_FALSE(panel->isRecording());
}

TEST_F(ShortcutRecorderPanelTest, EscapeWithAModifierIsRecordedLikeAnyOtherKey) {
    open();
    press(keyEscape, commandFlag);

    EXPECT_FALSE(panel->isRecording());
    EXPECT_EQ(shortcut(leftHalf), (KeyboardShortcut{{keyEscape, command}, "Escape"}));
}

TEST_F(ShortcutRecorderPanelTest, AKeyWithoutASignificantModifierIsHintedAtAndRecordingGoesOn) {
    for (const std::uint64_t flags : {std::uint64_t{0}, shiftFlag, capsLockFlag}) {
        open();
        press(keyA, flags, "a");

        EXPECT_TRUE(panel->isRecording());
        EXPECT_EQ(model().hint, "Include at least one of Command, Control, or Option.");
        EXPECT_THAT(message(), ElementsAre("Include at least one of Command, Control, or Option."));
        EXPECT_EQ(model().pendingShortcut, std::nullopt);
    }
}

TEST_F(ShortcutRecorderPanelTest, OptionWithShiftAsksForConfirmationAsFragile) {
    for (const std::uint64_t flags : {optionFlag, optionFlag | shiftFlag}) {
        open();
        press(keyA, 0);
        press(keyK, flags, "k");

        const auto modifiers = flags == optionFlag ? option : option.unionWith(shift);
        EXPECT_TRUE(panel->isRecording());
        EXPECT_EQ(model().pendingShortcut, (KeyboardShortcut{{keyK, modifiers}, "K"}));
        EXPECT_TRUE(model().awaitingFragileConfirmation);
        EXPECT_FALSE(model().awaitingVoiceOverConfirmation);
        EXPECT_THAT(model().conflictingActions, IsEmpty());
        EXPECT_EQ(model().hint, std::nullopt);
        EXPECT_THAT(message(),
                    ElementsAre("Shortcuts without Command or Control can fail to register on some macOS versions.",
                                "Add Command or Control for a more reliable global shortcut."));
    }
}

TEST_F(ShortcutRecorderPanelTest, ControlWithOptionAsksForConfirmationBecauseOfTheScreenReader) {
    for (const std::uint64_t shiftOrNot : {std::uint64_t{0}, shiftFlag}) {
        open();
        press(keyA, 0);
        press(keyK, controlFlag | optionFlag | shiftOrNot, "k");

        EXPECT_TRUE(panel->isRecording());
        EXPECT_TRUE(model().pendingShortcut.has_value());
        EXPECT_FALSE(model().awaitingFragileConfirmation);
        EXPECT_TRUE(model().awaitingVoiceOverConfirmation);
        EXPECT_THAT(model().conflictingActions, IsEmpty());
        EXPECT_EQ(model().hint, std::nullopt);
        EXPECT_THAT(message(), ElementsAre("Control–Option shortcuts can conflict with VoiceOver.",
                                           "Add Command for a shortcut that won't interfere with VoiceOver."));
    }
}

struct SavedRow {
    std::string_view name;
    std::uint64_t flags;
    ShortcutModifiers modifiers;
};

TEST_F(ShortcutRecorderPanelTest, ReliableCombinationsAreSavedAtOnce) {
    const std::vector<SavedRow> rows{
        {"Control", controlFlag, control},
        {"Control and Shift", controlFlag | shiftFlag, {control, shift}},
        {"Command", commandFlag, command},
        {"Option and Command", optionFlag | commandFlag, {option, command}},
        {"Control, Option and Command", controlFlag | optionFlag | commandFlag, {control, option, command}},
        {"with Caps Lock on", controlFlag | capsLockFlag, control},
    };
    for (const SavedRow& row : rows) {
        SCOPED_TRACE(row.name);
        states.clear();
        open();
        press(keyK, row.flags, "k");

        EXPECT_FALSE(panel->isRecording());
        EXPECT_FALSE(host().isShown());
        EXPECT_THAT(states, ElementsAre(true, false));
        EXPECT_EQ(shortcut(leftHalf), (KeyboardShortcut{{keyK, row.modifiers}, "K"}));
    }
}

TEST_F(ShortcutRecorderPanelTest, TheLabelIsWhatTheKeyWritesInTheLayout) {
    open();
    press(keyA, commandFlag, "é");
    EXPECT_EQ(shortcut(leftHalf)->keyLabel, "É");

    open();
    press(keyA, controlFlag, "");
    EXPECT_EQ(shortcut(leftHalf)->keyLabel, "A");
}

TEST_F(ShortcutRecorderPanelTest, ACombinationOfAnotherActionIsShownAsAConflictFirstThoughItIsFragileToo) {
    preferencesStore->setShortcut(rightHalf, {{keyK, option}, "K"});
    preferencesStore->setShortcut(topHalf, {{keyK, option}, "other label"});
    open(leftHalf);
    press(keyA, 0);
    press(keyK, optionFlag, "k");

    EXPECT_TRUE(panel->isRecording());
    EXPECT_EQ(model().pendingShortcut, (KeyboardShortcut{{keyK, option}, "K"}));
    EXPECT_THAT(model().conflictingActions, ElementsAre(rightHalf, topHalf));
    EXPECT_FALSE(model().awaitingFragileConfirmation);
    EXPECT_FALSE(model().awaitingVoiceOverConfirmation);
    EXPECT_EQ(model().hint, std::nullopt);
    EXPECT_THAT(message(), ElementsAre("This shortcut is already used by %1.",
                                       "%1 will have no shortcut until you assign a new one."));
}

TEST_F(ShortcutRecorderPanelTest, TheActionsOwnCombinationIsNoConflict) {
    const auto own = shortcut(leftHalf);
    open(leftHalf);
    press(keyLeftArrow, optionFlag | commandFlag);

    EXPECT_FALSE(panel->isRecording());
    EXPECT_EQ(shortcut(leftHalf), own);
}

TEST_F(ShortcutRecorderPanelTest, ADisabledActionsCombinationIsNoConflict) {
    preferencesStore->removeShortcut(rightHalf);
    open(leftHalf);
    press(124, optionFlag | commandFlag);
    EXPECT_FALSE(panel->isRecording());
}

TEST_F(ShortcutRecorderPanelTest, AnotherPressTakesThePlaceOfThePendingCombination) {
    open();
    press(keyK, optionFlag, "k");
    press(keyK, controlFlag | optionFlag, "k");

    EXPECT_FALSE(model().awaitingFragileConfirmation);
    EXPECT_TRUE(model().awaitingVoiceOverConfirmation);
    EXPECT_EQ(model().pendingShortcut->hotKey.modifiers, (ShortcutModifiers{control, option}));
}

TEST_F(ShortcutRecorderPanelTest, AHintLeavesThePendingQuestionOpen) {
    open();
    press(keyK, optionFlag, "k");
    press(keyA, 0, "a");

    EXPECT_TRUE(model().pendingShortcut.has_value());
    EXPECT_TRUE(model().awaitingFragileConfirmation);
    EXPECT_THAT(message(), ElementsAre(testing::StartsWith("Shortcuts without"), testing::StartsWith("Add Command"),
                                       "Include at least one of Command, Control, or Option."));
}

TEST_F(ShortcutRecorderPanelTest, ReplaceTakesTheCombinationFromTheOthers) {
    open(leftHalf);
    press(124, optionFlag | commandFlag);
    ASSERT_THAT(model().conflictingActions, ElementsAre(rightHalf));
    panel->replace();

    EXPECT_EQ(shortcut(leftHalf), (KeyboardShortcut{{124, {option, command}}, "Right Arrow"}));
    EXPECT_EQ(shortcut(rightHalf), std::nullopt);
    EXPECT_FALSE(panel->isRecording());
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(ShortcutRecorderPanelTest, UseAnywayTakesTheCombinationAndNobodyLosesAnything) {
    open(leftHalf);
    press(keyK, optionFlag, "k");
    panel->useAnyway();

    EXPECT_EQ(shortcut(leftHalf), (KeyboardShortcut{{keyK, option}, "K"}));
    EXPECT_THAT(preferencesStore->current().disabledShortcutActions, IsEmpty());
    EXPECT_FALSE(panel->isRecording());
}

TEST_F(ShortcutRecorderPanelTest, ConfirmingWithoutAPendingCombinationDoesNothing) {
    const auto before = shortcut(leftHalf);
    open(leftHalf);
    panel->replace();
    panel->useAnyway();

    EXPECT_TRUE(panel->isRecording());
    EXPECT_EQ(shortcut(leftHalf), before);
}

TEST_F(ShortcutRecorderPanelTest, RemoveDisablesTheActionAndEnds) {
    open(leftHalf);
    panel->remove();

    EXPECT_EQ(shortcut(leftHalf), std::nullopt);
    EXPECT_FALSE(panel->isRecording());
    EXPECT_THAT(states, ElementsAre(true, false));
}

}  // namespace
}  // namespace velmorand

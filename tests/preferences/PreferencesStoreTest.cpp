#include "preferences/PreferencesStore.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr ShortcutModifiers commandOption{ShortcutModifiers::command, ShortcutModifiers::option};
constexpr ShortcutModifiers control = ShortcutModifiers::control;

PreferencesState withShortcut(PreferencesState state, WindowAction action, const KeyboardShortcut& shortcut) {
    state.shortcuts[std::string(rawValue(action))] = shortcut;
    return state;
}

TEST(PreferencesStore, StartsWithTheDefaults) {
    const PreferencesStore store;

    EXPECT_TRUE(store.current() == defaultPreferencesState());
}

TEST(PreferencesStore, PublishesEveryChange) {
    PreferencesStore store;
    std::vector<double> paddings;
    const Subscription subscription =
        store.state().subscribe([&](const PreferencesState& state) { paddings.push_back(state.outerPadding); });

    store.state().modify([](PreferencesState& state) { state.outerPadding = 8; });
    store.state().modify([](PreferencesState& state) { state.outerPadding = 9; });

    EXPECT_THAT(paddings, ElementsAre(8, 9));
    EXPECT_EQ(store.current().outerPadding, 9);
}

TEST(PreferencesStore, AnswersTheEffectiveShortcut) {
    PreferencesStore store(withShortcut(defaultPreferencesState(), leftHalf, {{8, control}, "C"}));
    EXPECT_EQ(store.effectiveShortcut(leftHalf), (KeyboardShortcut{{8, control}, "C"}));

    store.state().modify([](PreferencesState& state) { state.shortcuts.erase("left"); });
    EXPECT_EQ(store.effectiveShortcut(leftHalf), (KeyboardShortcut{{123, commandOption}, "Left Arrow"}));

    store.state().modify([](PreferencesState& state) { state.disabledShortcutActions = {"left"}; });
    EXPECT_EQ(store.effectiveShortcut(leftHalf), std::nullopt);
}

TEST(PreferencesStore, FindsTheActionThatUsesACombination) {
    const PreferencesStore store;

    EXPECT_THAT(store.conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf));
}

TEST(PreferencesStore, FindsNoActionForACombinationThatDiffersInKeyOrModifiers) {
    const PreferencesStore store;

    EXPECT_THAT(store.conflictingActions(122, commandOption, rightHalf), IsEmpty());
    EXPECT_THAT(store.conflictingActions(123, ShortcutModifiers::command, rightHalf), IsEmpty());
    EXPECT_THAT(store.conflictingActions(123, ShortcutModifiers(commandOption.rawValue() | 1U), rightHalf), IsEmpty());
}

TEST(PreferencesStore, DoesNotFindTheActionThatIsEdited) {
    const PreferencesStore store;

    EXPECT_THAT(store.conflictingActions(123, commandOption, leftHalf), IsEmpty());
}

TEST(PreferencesStore, FindsSeveralActionsInCatalogueOrderWhateverTheirLabels) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, restore, {{123, commandOption}, "Left"});
    state = withShortcut(state, topLeft, {{123, commandOption}, ""});
    const PreferencesStore store(state);

    EXPECT_THAT(store.conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf, topLeft, restore));
    EXPECT_THAT(store.conflictingActions(123, commandOption, topLeft), ElementsAre(leftHalf, restore));
}

TEST(PreferencesStore, FindsAnActionByItsDefaultWhenItHasNoAssignedShortcut) {
    PreferencesState state;

    EXPECT_THAT(PreferencesStore(state).conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf));
}

TEST(PreferencesStore, DoesNotFindADisabledAction) {
    PreferencesState state = defaultPreferencesState();
    state.disabledShortcutActions = {"left"};

    EXPECT_THAT(PreferencesStore(state).conflictingActions(123, commandOption, rightHalf), IsEmpty());
}

TEST(PreferencesStore, HasNoConflictGroupsByDefault) {
    EXPECT_THAT(PreferencesStore().conflictGroups(), IsEmpty());
}

TEST(PreferencesStore, GroupsTheActionsThatShareACombination) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, restore, {{124, commandOption}, "Right"});
    state = withShortcut(state, topLeft, {{123, commandOption}, "Left"});
    state = withShortcut(state, centerWindow, {{123, commandOption}, "Other"});
    const PreferencesStore store(state);

    EXPECT_THAT(store.conflictGroups(),
                ElementsAre(ShortcutConflict{{123, commandOption}, {leftHalf, topLeft, centerWindow}},
                            ShortcutConflict{{124, commandOption}, {rightHalf, restore}}));
}

TEST(PreferencesStore, LeavesDisabledActionsOutOfTheGroups) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, topLeft, {{123, commandOption}, "Left"});
    state.disabledShortcutActions = {"topLeft"};

    EXPECT_THAT(PreferencesStore(state).conflictGroups(), IsEmpty());
}

TEST(PreferencesStore, GroupsByTheEffectiveShortcutsOfThisMoment) {
    PreferencesStore store;
    store.state().modify([](PreferencesState& state) { state.shortcuts["topLeft"] = {{123, commandOption}, "Left"}; });
    EXPECT_EQ(store.conflictGroups().size(), 1U);

    store.state().set(defaultPreferencesState());
    EXPECT_THAT(store.conflictGroups(), IsEmpty());
}

}  // namespace
}  // namespace velmorand

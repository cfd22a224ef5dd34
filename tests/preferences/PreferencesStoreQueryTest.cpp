#include "preferences/PreferencesStore.h"
#include "support/Printing.h"
#include "support/SettablePreferencesStore.h"

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

/// What the store answers about shortcuts.
class PreferencesStoreQueryTest : public testing::Test {
protected:
    /// Puts the record in place as a whole.
    const PreferencesStore& set(const PreferencesState& wanted) {
        store.modify([&](PreferencesState& state) { state = wanted; });
        return store;
    }

    SimulatedPlatform platform;
    SettablePreferencesStore store{platform};
};

TEST_F(PreferencesStoreQueryTest, StartsWithTheDefaults) {
    EXPECT_EQ(store.current(), defaultPreferencesState());
}

TEST_F(PreferencesStoreQueryTest, PublishesEveryChange) {
    std::vector<double> paddings;
    const Subscription subscription =
        store.state().subscribe([&](const PreferencesState& state) { paddings.push_back(state.outerPadding); });

    store.modify([](PreferencesState& state) { state.outerPadding = 8; });
    store.modify([](PreferencesState& state) { state.outerPadding = 9; });

    EXPECT_THAT(paddings, ElementsAre(8, 9));
    EXPECT_EQ(store.current().outerPadding, 9);
}

TEST_F(PreferencesStoreQueryTest, AnswersTheEffectiveShortcut) {
    set(withShortcut(defaultPreferencesState(), leftHalf, {{8, control}, "C"}));
    EXPECT_EQ(store.effectiveShortcut(leftHalf), (KeyboardShortcut{{8, control}, "C"}));

    store.modify([](PreferencesState& state) { state.shortcuts.erase("left"); });
    EXPECT_EQ(store.effectiveShortcut(leftHalf), (KeyboardShortcut{{123, commandOption}, "Left Arrow"}));

    store.modify([](PreferencesState& state) { state.disabledShortcutActions = {"left"}; });
    EXPECT_EQ(store.effectiveShortcut(leftHalf), std::nullopt);
}

TEST_F(PreferencesStoreQueryTest, FindsTheActionThatUsesACombination) {
    EXPECT_THAT(store.conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf));
}

TEST_F(PreferencesStoreQueryTest, FindsNoActionForACombinationThatDiffersInKeyOrModifiers) {
    EXPECT_THAT(store.conflictingActions(122, commandOption, rightHalf), IsEmpty());
    EXPECT_THAT(store.conflictingActions(123, ShortcutModifiers::command, rightHalf), IsEmpty());
    EXPECT_THAT(store.conflictingActions(123, ShortcutModifiers(commandOption.rawValue() | 1U), rightHalf), IsEmpty());
}

TEST_F(PreferencesStoreQueryTest, DoesNotFindTheActionThatIsEdited) {
    EXPECT_THAT(store.conflictingActions(123, commandOption, leftHalf), IsEmpty());
}

TEST_F(PreferencesStoreQueryTest, FindsSeveralActionsInCatalogueOrderWhateverTheirLabels) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, restore, {{123, commandOption}, "Left"});
    state = withShortcut(state, topLeft, {{123, commandOption}, ""});
    set(state);

    EXPECT_THAT(store.conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf, topLeft, restore));
    EXPECT_THAT(store.conflictingActions(123, commandOption, topLeft), ElementsAre(leftHalf, restore));
}

TEST_F(PreferencesStoreQueryTest, FindsAnActionByItsDefaultWhenItHasNoAssignedShortcut) {
    PreferencesState state;

    EXPECT_THAT(set(state).conflictingActions(123, commandOption, rightHalf), ElementsAre(leftHalf));
}

TEST_F(PreferencesStoreQueryTest, DoesNotFindADisabledAction) {
    PreferencesState state = defaultPreferencesState();
    state.disabledShortcutActions = {"left"};

    EXPECT_THAT(set(state).conflictingActions(123, commandOption, rightHalf), IsEmpty());
}

TEST_F(PreferencesStoreQueryTest, HasNoConflictGroupsByDefault) {
    EXPECT_THAT(store.conflictGroups(), IsEmpty());
}

TEST_F(PreferencesStoreQueryTest, GroupsTheActionsThatShareACombination) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, restore, {{124, commandOption}, "Right"});
    state = withShortcut(state, topLeft, {{123, commandOption}, "Left"});
    state = withShortcut(state, centerWindow, {{123, commandOption}, "Other"});
    set(state);

    EXPECT_THAT(store.conflictGroups(),
                ElementsAre(ShortcutConflict{{123, commandOption}, {leftHalf, topLeft, centerWindow}},
                            ShortcutConflict{{124, commandOption}, {rightHalf, restore}}));
}

TEST_F(PreferencesStoreQueryTest, LeavesDisabledActionsOutOfTheGroups) {
    PreferencesState state = defaultPreferencesState();
    state = withShortcut(state, topLeft, {{123, commandOption}, "Left"});
    state.disabledShortcutActions = {"topLeft"};

    EXPECT_THAT(set(state).conflictGroups(), IsEmpty());
}

TEST_F(PreferencesStoreQueryTest, GroupsByTheEffectiveShortcutsOfThisMoment) {
    store.modify([](PreferencesState& state) { state.shortcuts["topLeft"] = {{123, commandOption}, "Left"}; });
    EXPECT_EQ(store.conflictGroups().size(), 1U);

    set(defaultPreferencesState());
    EXPECT_THAT(store.conflictGroups(), IsEmpty());
}

}  // namespace
}  // namespace velmorand

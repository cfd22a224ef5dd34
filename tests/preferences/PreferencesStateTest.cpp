#include "preferences/PreferencesState.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;

const KeyboardShortcut controlC{{8, ShortcutModifiers::control}, "C"};

TEST(PreferencesState, HasTheDefaultsOfAUserWhoNeverChangedAnything) {
    const PreferencesState& state = defaultPreferencesState();

    EXPECT_THAT(state.ignoredApps, IsEmpty());
    EXPECT_TRUE(state.clampToVisibleArea);
    EXPECT_THAT(state.disabledShortcutActions, IsEmpty());
    EXPECT_EQ(state.outerPadding, 0);
    EXPECT_EQ(state.innerGap, 0);
    EXPECT_FALSE(state.enableAnimations);
    EXPECT_EQ(state.animationDuration, 0.15);
}

TEST(PreferencesState, HasEveryDefaultShortcutUnderItsActionsRawValue) {
    const PreferencesState& state = defaultPreferencesState();

    EXPECT_EQ(state.shortcuts.size(), 19U);
    for (const WindowAction action : allWindowActions) {
        SCOPED_TRACE(rawValue(action));
        EXPECT_EQ(state.shortcuts.at(std::string(rawValue(action))), metadata(action).defaultShortcut);
    }
    EXPECT_EQ(state.shortcuts.at("left"), (KeyboardShortcut{{123, ShortcutModifiers(2304)}, "Left Arrow"}));
    EXPECT_EQ(state.shortcuts.at("restore"), (KeyboardShortcut{{35, ShortcutModifiers(2816)}, "P"}));
}

TEST(PreferencesState, TheDefaultsAreBuiltOnce) {
    EXPECT_EQ(&defaultPreferencesState(), &defaultPreferencesState());
}

struct LimitRow {
    double value;
    double limited;
};

TEST(PreferencesLimit, PaddingAndGapLieBetween0And50) {
    const std::vector<LimitRow> rows{{-3, 0}, {0, 0}, {0.5, 0.5}, {12.5, 12.5}, {50, 50}, {50.001, 50}, {75, 50}};
    for (const LimitRow& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(outerPaddingLimit.limited(row.value), row.limited);
        EXPECT_EQ(innerGapLimit.limited(row.value), row.limited);
    }
}

TEST(PreferencesLimit, TheAnimationDurationLiesBetweenATwentiethAndHalfASecond) {
    const std::vector<LimitRow> rows{{-1, 0.05}, {0, 0.05},   {0.05, 0.05}, {0.15, 0.15},
                                     {0.5, 0.5}, {0.51, 0.5}, {2, 0.5}};
    for (const LimitRow& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(animationDurationLimit.limited(row.value), row.limited);
    }
}

TEST(PreferencesState, NormalizingTheDefaultsChangesNothing) {
    EXPECT_EQ(normalized(defaultPreferencesState()), defaultPreferencesState());
    EXPECT_EQ(normalized(PreferencesState{}), PreferencesState{});
}

TEST(PreferencesState, NormalizingSortsTheIgnoredAppsAndLeavesRepeatedOnesOut) {
    PreferencesState state;
    state.ignoredApps = {"b", "a", "b", "a", "b"};

    EXPECT_THAT(normalized(state).ignoredApps, ElementsAre("a", "b"));
}

TEST(PreferencesState, NormalizingKeepsIgnoredAppsOfEveryName) {
    PreferencesState state;
    state.ignoredApps = {"org.example.Editor", "", "left", "\xFF", "Ä", "org.example.editor", "Z", "a", "org.example"};

    EXPECT_THAT(normalized(state).ignoredApps, ElementsAre("", "Z", "a", "left", "org.example", "org.example.Editor",
                                                           "org.example.editor", "Ä", "\xFF"));
}

TEST(PreferencesState, NormalizingSortsTheDisabledActionsAndLeavesRepeatedAndUnknownOnesOut) {
    PreferencesState state;
    state.disabledShortcutActions = {"restore", "moveToSpace", "restore", "left"};

    EXPECT_THAT(normalized(state).disabledShortcutActions, ElementsAre("left", "restore"));
}

TEST(PreferencesState, NormalizingKnowsActionsByTheirRawValuesOnly) {
    PreferencesState state;
    state.disabledShortcutActions = {"leftHalf", "maximizeWindow", "Left", "left ", "", "maximize"};
    state.shortcuts = {{"leftHalf", controlC}, {"centerWindow", controlC}, {"LEFT", controlC}, {"center", controlC}};

    EXPECT_THAT(normalized(state).disabledShortcutActions, ElementsAre("maximize"));
    EXPECT_THAT(normalized(state).shortcuts, ElementsAre(Pair("center", controlC)));
}

TEST(PreferencesState, NormalizingKeepsEveryActionThatIsDisabled) {
    PreferencesState state;
    for (const WindowAction action : allWindowActions) state.disabledShortcutActions.emplace_back(rawValue(action));

    EXPECT_EQ(normalized(state).disabledShortcutActions.size(), 19U);
}

TEST(PreferencesState, NormalizingLeavesShortcutsOfUnknownActionsOutAndTheOthersAsTheyAre) {
    PreferencesState state;
    state.shortcuts = {{"moveToSpace", controlC}, {"left", controlC}, {"", controlC}};
    state.disabledShortcutActions = {"left"};

    EXPECT_THAT(normalized(state).shortcuts, ElementsAre(Pair("left", controlC)));
}

TEST(PreferencesState, NormalizingLimitsEveryNumberByItself) {
    PreferencesState low;
    low.outerPadding = -3;
    low.innerGap = 12.5;
    low.animationDuration = 0;
    PreferencesState high;
    high.outerPadding = 12.5;
    high.innerGap = 75;
    high.animationDuration = 2;

    EXPECT_EQ(normalized(low).outerPadding, 0);
    EXPECT_EQ(normalized(low).innerGap, 12.5);
    EXPECT_EQ(normalized(low).animationDuration, 0.05);
    EXPECT_EQ(normalized(high).outerPadding, 12.5);
    EXPECT_EQ(normalized(high).innerGap, 50);
    EXPECT_EQ(normalized(high).animationDuration, 0.5);
}

TEST(PreferencesState, NormalizingLimitsNumbersWithoutEnd) {
    PreferencesState state;
    state.outerPadding = std::numeric_limits<double>::infinity();
    state.innerGap = -std::numeric_limits<double>::infinity();
    state.animationDuration = std::numeric_limits<double>::infinity();

    EXPECT_EQ(normalized(state).outerPadding, 50);
    EXPECT_EQ(normalized(state).innerGap, 0);
    EXPECT_EQ(normalized(state).animationDuration, 0.5);
}

TEST(PreferencesState, NormalizingLeavesTheSwitchesAsTheyAre) {
    PreferencesState state;
    state.clampToVisibleArea = false;
    state.enableAnimations = true;

    EXPECT_FALSE(normalized(state).clampToVisibleArea);
    EXPECT_TRUE(normalized(state).enableAnimations);
}

TEST(PreferencesState, CompletingGivesEveryActionWithoutAShortcutItsDefault) {
    EXPECT_EQ(completed(PreferencesState{}), defaultPreferencesState());
}

TEST(PreferencesState, CompletingKeepsTheAssignedShortcuts) {
    PreferencesState state;
    state.shortcuts = {{"left", controlC}};

    const PreferencesState complete = completed(state);

    EXPECT_EQ(complete.shortcuts.size(), 19U);
    EXPECT_EQ(complete.shortcuts.at("left"), controlC);
    EXPECT_EQ(complete.shortcuts.at("right"), metadata(WindowAction::rightHalf).defaultShortcut);
}

TEST(PreferencesState, CompletingLeavesDisabledActionsDisabled) {
    PreferencesState state;
    state.disabledShortcutActions = {"left"};

    const PreferencesState complete = completed(state);

    EXPECT_THAT(complete.disabledShortcutActions, ElementsAre("left"));
    EXPECT_THAT(complete.shortcuts, Contains(Key("left")));
    EXPECT_EQ(effectiveShortcut(complete, WindowAction::leftHalf), std::nullopt);
}

TEST(PreferencesState, TheEffectiveShortcutIsTheAssignedOne) {
    PreferencesState state = defaultPreferencesState();
    state.shortcuts["left"] = {{8, ShortcutModifiers(256)}, "C"};

    EXPECT_EQ(effectiveShortcut(state, WindowAction::leftHalf), (KeyboardShortcut{{8, ShortcutModifiers(256)}, "C"}));
}

TEST(PreferencesState, TheEffectiveShortcutIsTheDefaultWithoutAnAssignedOne) {
    PreferencesState state;

    EXPECT_EQ(effectiveShortcut(state, WindowAction::leftHalf),
              (KeyboardShortcut{{123, ShortcutModifiers(2304)}, "Left Arrow"}));
}

TEST(PreferencesState, ADisabledActionHasNoEffectiveShortcut) {
    PreferencesState state = defaultPreferencesState();
    state.disabledShortcutActions = {"restore", "left"};

    EXPECT_EQ(effectiveShortcut(state, WindowAction::leftHalf), std::nullopt);
    EXPECT_EQ(effectiveShortcut(state, WindowAction::restore), std::nullopt);
    EXPECT_EQ(effectiveShortcut(state, WindowAction::leftThird), metadata(WindowAction::leftThird).defaultShortcut);
}

TEST(PreferencesState, IsEqualWhenEveryFieldIs) {
    EXPECT_EQ(defaultPreferencesState(), PreferencesState(defaultPreferencesState()));
    PreferencesState changed = defaultPreferencesState();
    changed.innerGap = 1;
    EXPECT_NE(defaultPreferencesState(), changed);
}

}  // namespace
}  // namespace velmorand

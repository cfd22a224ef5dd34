#include "preferences/PreferencesState.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using testing::IsEmpty;

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
    EXPECT_TRUE(defaultPreferencesState() == PreferencesState(defaultPreferencesState()));
    PreferencesState changed = defaultPreferencesState();
    changed.innerGap = 1;
    EXPECT_FALSE(defaultPreferencesState() == changed);
}

}  // namespace
}  // namespace velmorand

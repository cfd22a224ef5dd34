#include "preferences/PreferencesStateCoding.h"
#include "support/Expected.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string encoded(const PreferencesState& state) {
    return encodePreferencesState(state).value();
}

PreferencesState storedAndRead(const PreferencesState& state) {
    return decodePreferencesState(encoded(state)).value();
}

TEST(PreferencesStateEncoding, WritesAllSettingsInTheOrderOfTheFields) {
    PreferencesState state;
    state.shortcuts = {{"left", {{123, ShortcutModifiers(2304)}, "Left Arrow"}}};
    state.disabledShortcutActions = {"restore"};
    state.outerPadding = 8;
    state.innerGap = 4;

    EXPECT_EQ(encoded(state),
              R"({"shortcuts":{"left":{"keyCode":123,"modifiers":2304,"keyDisplay":"Left Arrow"}},"ignoredApps":[],)"
              R"("snapToVisibleArea":true,"disabledShortcutActions":["restore"],"outerPadding":8,"innerGap":4,)"
              R"("enableAnimations":false,"animationDuration":0.15})");
}

TEST(PreferencesStateEncoding, WritesEverySettingUnderItsOwnKey) {
    PreferencesState state;
    state.ignoredApps = {"org.example.Editor", "b"};
    state.clampToVisibleArea = false;
    state.disabledShortcutActions = {"left", "restore"};
    state.outerPadding = 12.5;
    state.innerGap = 50;
    state.enableAnimations = true;
    state.animationDuration = 0.05;

    EXPECT_EQ(encoded(state), R"({"shortcuts":{},"ignoredApps":["org.example.Editor","b"],"snapToVisibleArea":false,)"
                              R"("disabledShortcutActions":["left","restore"],"outerPadding":12.5,"innerGap":50,)"
                              R"("enableAnimations":true,"animationDuration":0.05})");
}

TEST(PreferencesStateEncoding, WritesTheDefaultsInFull) {
    const std::string document = encoded(defaultPreferencesState());

    for (const WindowAction action : allWindowActions)
        EXPECT_THAT(document, HasSubstr("\"" + std::string(rawValue(action)) + "\":{\"keyCode\":"));
    EXPECT_THAT(document, EndsWith(R"("ignoredApps":[],"snapToVisibleArea":true,"disabledShortcutActions":[],)"
                                   R"("outerPadding":0,"innerGap":0,"enableAnimations":false,)"
                                   R"("animationDuration":0.15})"));
}

TEST(PreferencesStateEncoding, WhatIsReadAgainIsTheSame) {
    PreferencesState state = defaultPreferencesState();
    state.shortcuts["left"] = {{4294967295U, ShortcutModifiers(4294967295U)}, "\"\\\n\u20ac"};
    state.ignoredApps = {"", "a\"b\\c", "ä\U0001F600"};
    state.clampToVisibleArea = false;
    state.disabledShortcutActions = {"left", "restore"};
    state.outerPadding = 0.1;
    state.innerGap = 1.0 / 3;
    state.enableAnimations = true;
    state.animationDuration = 0.30000000000000004;

    EXPECT_EQ(storedAndRead(state), state);
    EXPECT_EQ(storedAndRead(defaultPreferencesState()), defaultPreferencesState());
}

TEST(PreferencesStateEncoding, WritesTheRecordAsItIsAndNotNormalized) {
    PreferencesState state;
    state.ignoredApps = {"b", "a", "b"};
    state.disabledShortcutActions = {"restore", "moveToSpace"};
    state.outerPadding = -3;
    state.innerGap = 1e20;

    EXPECT_THAT(encoded(state),
                HasSubstr(R"("ignoredApps":["b","a","b"],"snapToVisibleArea":true,)"
                          R"("disabledShortcutActions":["restore","moveToSpace"],"outerPadding":-3,"innerGap":1e+20)"));
}

TEST(PreferencesStateEncoding, WritesAReplacementForTextThatIsNotUnicode) {
    PreferencesState state;
    state.shortcuts = {{"left", {{8, {}}, "C\xFF"}}, {"\xFE", {{9, {}}, "V"}}};
    state.ignoredApps = {"a\xC0\xAF", "b"};
    state.disabledShortcutActions = {"\x80"};

    const std::string document = encoded(state);

    EXPECT_THAT(document,
                StartsWith("{\"shortcuts\":{\"left\":{\"keyCode\":8,\"modifiers\":0,\"keyDisplay\":\"C\uFFFD\"},"
                           "\"\uFFFD\":{\"keyCode\":9,\"modifiers\":0,\"keyDisplay\":\"V\"}},"
                           "\"ignoredApps\":[\"a\uFFFD"));
    EXPECT_THAT(document, HasSubstr("\"disabledShortcutActions\":[\"\uFFFD\"]"));
    EXPECT_EQ(storedAndRead(state).shortcuts.at("left").keyLabel, "C\uFFFD");
}

TEST(PreferencesStateEncoding, WritesZeroBytesOfATextEscaped) {
    PreferencesState state;
    state.ignoredApps = {std::string("a\0b"sv)};

    EXPECT_THAT(encoded(state), HasSubstr(R"("ignoredApps":["a\u0000b"])"));
    EXPECT_THAT(storedAndRead(state).ignoredApps, ElementsAre("a\0b"sv));
}

struct NumberRow {
    std::string_view key;
    double PreferencesState::* number;
};

TEST(PreferencesStateEncoding, FailsForNumbersThatAreNotFinite) {
    using Limits = std::numeric_limits<double>;
    const std::vector<NumberRow> rows{{"outerPadding", &PreferencesState::outerPadding},
                                      {"innerGap", &PreferencesState::innerGap},
                                      {"animationDuration", &PreferencesState::animationDuration}};
    for (const NumberRow& row : rows) {
        SCOPED_TRACE(row.key);
        for (const double number : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
            PreferencesState state = defaultPreferencesState();
            state.*row.number = number;
            EXPECT_EQ(failureOf(encodePreferencesState(state)),
                      EncodingError{"The value of \"" + std::string(row.key) + "\" is not a finite number."});
        }
    }
}

}  // namespace
}  // namespace velmorand

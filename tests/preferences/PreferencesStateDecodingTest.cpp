#include "preferences/PreferencesStateCoding.h"
#include "support/Expected.h"
#include "support/Printing.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

constexpr std::string_view exampleDocument =
    R"({"shortcuts":{"left":{"keyCode":123,"modifiers":2304,"keyDisplay":"Left Arrow"}},"ignoredApps":[],)"
    R"("snapToVisibleArea":true,"disabledShortcutActions":["restore"],"outerPadding":8,"innerGap":4,)"
    R"("enableAnimations":false,"animationDuration":0.15})";

const KeyboardShortcut controlC{{8, ShortcutModifiers::control}, "C"};

std::optional<PreferencesState> decoded(std::string_view document) {
    return valueOf(decodePreferencesState(document));
}

std::string reasonAgainst(std::string_view document) {
    const auto failure = failureOf(decodePreferencesState(document));
    return failure ? failure->description : "";
}

/// The shortcuts of a document that holds nothing else.
std::map<std::string, KeyboardShortcut> decodedShortcuts(std::string_view shortcuts) {
    return decodePreferencesState(fmt::format(R"({{"shortcuts":{}}})", shortcuts)).value().shortcuts;
}

/// The defaults with one change.
PreferencesState defaultsWith(const std::function<void(PreferencesState&)>& change) {
    PreferencesState state = defaultPreferencesState();
    change(state);
    return state;
}

TEST(PreferencesStateDecoding, ReadsADocumentOfAllSettings) {
    PreferencesState state;
    state.shortcuts = {{"left", {{123, ShortcutModifiers(2304)}, "Left Arrow"}}};
    state.disabledShortcutActions = {"restore"};
    state.outerPadding = 8;
    state.innerGap = 4;

    EXPECT_EQ(decoded(exampleDocument), state);
}

TEST(PreferencesStateDecoding, AnEmptyObjectIsTheDefaults) {
    EXPECT_EQ(decoded("{}"), defaultPreferencesState());
}

TEST(PreferencesStateDecoding, FailsForWhatIsNoObject) {
    for (const std::string_view document : {"[]", "null", "true", "1", "\"{}\"", "[{}]"}) {
        SCOPED_TRACE(document);
        EXPECT_EQ(reasonAgainst(document), "The document is not an object.");
    }
}

TEST(PreferencesStateDecoding, FailsForWhatIsNoJson) {
    for (const std::string_view document : {"", " ", "{", "{}}", "{}{}", "{\"outerPadding\":}", "{\"innerGap\":4,}"}) {
        SCOPED_TRACE(document);
        EXPECT_FALSE(decoded(document));
        EXPECT_NE(reasonAgainst(document), "");
    }
    EXPECT_EQ(reasonAgainst("{}\0"sv), "The document holds a zero byte.");
}

TEST(PreferencesStateDecoding, FailsWhereverTheDocumentIsCutOff) {
    ASSERT_TRUE(decoded(exampleDocument));
    for (std::size_t length = 0; length < exampleDocument.size(); ++length) {
        SCOPED_TRACE(length);
        EXPECT_FALSE(decoded(exampleDocument.substr(0, length)));
    }
}

struct SettingRow {
    std::string_view document;
    PreferencesState state;
};

TEST(PreferencesStateDecoding, EverySettingIsReadByItself) {
    const std::vector<SettingRow> rows{
        {R"({"ignoredApps":["a","b"]})", defaultsWith([](auto& state) { state.ignoredApps = {"a", "b"}; })},
        {R"({"ignoredApps":[]})", defaultPreferencesState()},
        {R"({"snapToVisibleArea":false})", defaultsWith([](auto& state) { state.clampToVisibleArea = false; })},
        {R"({"snapToVisibleArea":true})", defaultPreferencesState()},
        {R"({"disabledShortcutActions":["left"]})",
         defaultsWith([](auto& state) { state.disabledShortcutActions = {"left"}; })},
        {R"({"outerPadding":8})", defaultsWith([](auto& state) { state.outerPadding = 8; })},
        {R"({"innerGap":4.5})", defaultsWith([](auto& state) { state.innerGap = 4.5; })},
        {R"({"enableAnimations":true})", defaultsWith([](auto& state) { state.enableAnimations = true; })},
        {R"({"animationDuration":0.25})", defaultsWith([](auto& state) { state.animationDuration = 0.25; })},
        {R"({"shortcuts":{}})", defaultsWith([](auto& state) { state.shortcuts.clear(); })},
    };
    for (const SettingRow& row : rows) {
        SCOPED_TRACE(row.document);
        EXPECT_EQ(decoded(row.document), row.state);
    }
}

TEST(PreferencesStateDecoding, ASettingThatIsNullHasItsDefault) {
    for (const std::string_view key : {"shortcuts", "ignoredApps", "snapToVisibleArea", "disabledShortcutActions",
                                       "outerPadding", "innerGap", "enableAnimations", "animationDuration"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(decoded(fmt::format(R"({{"{}":null}})", key)), defaultPreferencesState());
    }
}

struct WrongTypeRow {
    std::string_view key;
    std::string_view kind;
    std::vector<std::string_view> values;
};

TEST(PreferencesStateDecoding, ASettingOfTheWrongTypeFailsTheWholeDocument) {
    const std::vector<std::string_view> noLists{"\"x\"", "{}", "1", "true", "[1]", "[null]", "[\"a\",true]", "[[]]"};
    const std::vector<std::string_view> noBooleans{"0", "1", "\"true\"", "[]", "{}", "[true]"};
    const std::vector<std::string_view> noNumbers{"\"8\"", "true", "false", "[]", "{}", "[8]", "1e999", "-1e999"};
    const std::vector<WrongTypeRow> rows{
        {"ignoredApps", "a list of strings", noLists},
        {"snapToVisibleArea", "a boolean", noBooleans},
        {"disabledShortcutActions", "a list of strings", noLists},
        {"outerPadding", "a number", noNumbers},
        {"innerGap", "a number", noNumbers},
        {"enableAnimations", "a boolean", noBooleans},
        {"animationDuration", "a number", noNumbers},
    };
    for (const WrongTypeRow& row : rows) {
        for (const std::string_view value : row.values) {
            const std::string document = fmt::format(R"({{"{}":{}}})", row.key, value);
            SCOPED_TRACE(document);
            EXPECT_EQ(reasonAgainst(document), fmt::format(R"(The value of "{}" is not {}.)", row.key, row.kind));
        }
    }
}

TEST(PreferencesStateDecoding, TellsOfTheFirstSettingThatIsWrongWhateverTheirOrder) {
    EXPECT_EQ(reasonAgainst(R"({"animationDuration":"x","innerGap":"x","ignoredApps":"x"})"),
              R"(The value of "ignoredApps" is not a list of strings.)");
    EXPECT_EQ(reasonAgainst(R"({"animationDuration":"x","innerGap":[]})"),
              R"(The value of "innerGap" is not a number.)");
}

TEST(PreferencesStateDecoding, UnknownKeysAreIgnored) {
    EXPECT_EQ(decoded(R"({"clampToVisibleArea":false,"version":2,"":[{}],"OuterPadding":8,"large":1e999})"),
              defaultPreferencesState());
}

TEST(PreferencesStateDecoding, OfARepeatedSettingTheLastCounts) {
    EXPECT_EQ(decoded(R"({"outerPadding":8,"outerPadding":9})")->outerPadding, 9);
    EXPECT_EQ(decoded(R"({"outerPadding":8,"outerPadding":null})")->outerPadding, 0);
    EXPECT_EQ(decoded(R"({"outerPadding":"x","outerPadding":9})")->outerPadding, 9);
    EXPECT_FALSE(decoded(R"({"outerPadding":9,"outerPadding":"x"})"));
    EXPECT_EQ(decoded(R"({"shortcuts":{},"shortcuts":[]})")->shortcuts, defaultPreferencesState().shortcuts);
    EXPECT_THAT(decoded(R"({"shortcuts":[],"shortcuts":{}})")->shortcuts, IsEmpty());
}

TEST(PreferencesStateDecoding, NumbersAreReadHoweverTheyAreWritten) {
    const auto state = decoded(R"({"outerPadding":8.0,"innerGap":80e-1,"animationDuration":1.5E-1})");

    EXPECT_EQ(state->outerPadding, 8);
    EXPECT_EQ(state->innerGap, 8);
    EXPECT_EQ(state->animationDuration, 0.15);
    EXPECT_EQ(decoded(R"({"outerPadding":1e-999})")->outerPadding, 0);
}

TEST(PreferencesStateDecoding, TheRecordIsNormalized) {
    const auto state = decoded(
        R"({"shortcuts":{"moveToSpace":{"keyCode":8,"modifiers":4096,"keyDisplay":"C"}},"ignoredApps":["b","a","b"],)"
        R"("disabledShortcutActions":["restore","moveToSpace","restore","left"],"outerPadding":-3,"innerGap":75,)"
        R"("animationDuration":0})");

    EXPECT_THAT(state->shortcuts, IsEmpty());
    EXPECT_THAT(state->ignoredApps, ElementsAre("a", "b"));
    EXPECT_THAT(state->disabledShortcutActions, ElementsAre("left", "restore"));
    EXPECT_EQ(state->outerPadding, 0);
    EXPECT_EQ(state->innerGap, 50);
    EXPECT_EQ(state->animationDuration, 0.05);
    EXPECT_EQ(decoded(R"({"animationDuration":2})")->animationDuration, 0.5);
}

TEST(PreferencesStateDecoding, ShortcutsThatAreNoObjectAreTheDefaults) {
    for (const std::string_view shortcuts : {"[]", "null", "\"x\"", "1", "true", R"([{"left":1}])"}) {
        SCOPED_TRACE(shortcuts);
        EXPECT_EQ(decodedShortcuts(shortcuts), defaultPreferencesState().shortcuts);
    }
}

TEST(PreferencesStateDecoding, AShortcutThatCannotBeReadIsLeftOut) {
    for (const std::string_view entry :
         {R"({"keyCode":1})", R"({"modifiers":1,"keyDisplay":"A"})", R"({"keyCode":1,"keyDisplay":"A"})",
          R"({"keyCode":"1","modifiers":1,"keyDisplay":"A"})", R"({"keyCode":-1,"modifiers":1,"keyDisplay":"A"})",
          R"({"keyCode":1.5,"modifiers":1,"keyDisplay":"A"})", R"({"keyCode":1,"modifiers":1,"keyDisplay":null})",
          R"({"keyCode":1e999,"modifiers":1,"keyDisplay":"A"})", "null", "[]", "{}", "1", "\"Left Arrow\""}) {
        SCOPED_TRACE(entry);
        EXPECT_THAT(decodedShortcuts(fmt::format(
                        R"({{"left":{},"right":{{"keyCode":8,"modifiers":4096,"keyDisplay":"C"}}}})", entry)),
                    ElementsAre(Pair("right", controlC)));
    }
}

TEST(PreferencesStateDecoding, OfARepeatedShortcutTheLastThatCanBeReadCounts) {
    EXPECT_THAT(decodedShortcuts(R"({"left":{"keyCode":1,"modifiers":1,"keyDisplay":"A"},
                                     "left":{"keyCode":8,"modifiers":4096,"keyDisplay":"C"},
                                     "left":{"keyCode":2},
                                     "left":null})"),
                ElementsAre(Pair("left", controlC)));
}

TEST(PreferencesStateDecoding, InsideAShortcutTheLastOfARepeatedKeyCounts) {
    EXPECT_THAT(decodedShortcuts(R"({"left":{"keyCode":"x","keyCode":8,"modifiers":1,"modifiers":4096,
                                             "keyDisplay":"A","keyDisplay":"C"}})"),
                ElementsAre(Pair("left", controlC)));
    EXPECT_THAT(decodedShortcuts(R"({"left":{"keyCode":8,"keyCode":"x","modifiers":4096,"keyDisplay":"C"}})"),
                IsEmpty());
}

TEST(PreferencesStateDecoding, ShortcutsAreNotComparedWithEachOther) {
    const auto shortcuts = decodedShortcuts(R"({"right":{"keyCode":8,"modifiers":4096,"keyDisplay":"C"},
                                                "left":{"keyCode":8,"modifiers":4096,"keyDisplay":"C"}})");

    EXPECT_THAT(shortcuts, ElementsAre(Pair("left", controlC), Pair("right", controlC)));
}

TEST(PreferencesStateDecoding, TextMayHoldAnyCharacter) {
    EXPECT_THAT(decoded(R"({"ignoredApps":["\u0000","\"","ä","\ud83d\ude00",""]})")->ignoredApps,
                ElementsAre(""sv, "\0"sv, "\""sv, "ä"sv, "\U0001F600"sv));
}

TEST(PreferencesStateDecoding, AnErrorOfTheDocumentSaysWhere) {
    EXPECT_THAT(reasonAgainst(R"({"outerPadding":8x})"), EndsWith("(at byte 17)"));
    EXPECT_THAT(reasonAgainst(std::string(100, '[')), StartsWith("The document is nested deeper"));
}

}  // namespace
}  // namespace velmorand

#include "base/UnicodeText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
/// Woman, zero-width joiner, laptop: a single picture.
constexpr std::string_view technologist = "\U0001F469\u200D\U0001F4BB";
/// Letter e with a combining acute accent.
constexpr std::string_view combinedE = "e\u0301";

struct FirstCharacterRow {
    std::string_view name;
    std::string_view text;
    std::string_view first;
};

TEST(UnicodeText, TheFirstCharacterIsAWholeOneAsAReaderSeesIt) {
    const std::vector<FirstCharacterRow> rows{
        {"nothing", "", ""},
        {"one letter", "a", "a"},
        {"several letters", "abc", "a"},
        {"a precomposed letter", "éx", "é"},
        {"a combining sequence", "e\u0301x", combinedE},
        {"several combining marks", "a\u0308\u0304b", "a\u0308\u0304"},
        {"an emoji outside the first plane", "\U0001F600x", "\U0001F600"},
        {"an emoji of several code points", "\U0001F469\u200D\U0001F4BBx", technologist},
        {"an emoji with a skin tone", "\U0001F44D\U0001F3FDx", "\U0001F44D\U0001F3FD"},
        {"a flag", "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", "\U0001F1E9\U0001F1EA"},
        {"a syllable of several letters", "\u1112\u1161\u11ABx", "\u1112\u1161\u11AB"},
        {"a line end of two", "\r\nx", "\r\n"},
        {"a control character", "\x1b[", "\x1b"},
    };
    for (const FirstCharacterRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(firstCharacter(row.text), row.first);
    }
}

TEST(UnicodeText, AnInvalidByteCountsAsAReplacementCharacter) {
    EXPECT_EQ(firstCharacter("\xFFx"), replacement);
    EXPECT_TRUE(isSingleCharacter("\xFF"));
}

struct SingleCharacterRow {
    std::string_view name;
    std::string_view text;
    bool single;
};

TEST(UnicodeText, ATextIsASingleCharacterWhenAReaderSeesOne) {
    const std::vector<SingleCharacterRow> rows{
        {"nothing", "", false},
        {"one letter", "a", true},
        {"two letters", "ab", false},
        {"a precomposed letter", "é", true},
        {"a combining sequence", combinedE, true},
        {"a combining sequence and a letter", "e\u0301x", false},
        {"an emoji of several code points", technologist, true},
        {"two emoji", "\U0001F600\U0001F600", false},
        {"a space", " ", true},
    };
    for (const SingleCharacterRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(isSingleCharacter(row.text), row.single);
    }
}

struct CaseRow {
    std::string_view text;
    std::string_view changed;
};

TEST(UnicodeText, UpperCasesFully) {
    const std::vector<CaseRow> rows{
        {"", ""}, {"a", "A"}, {"é", "É"}, {"ß", "SS"}, {"i", "I"}, {"ﬁ", "FI"}, {"я", "Я"}, {"1", "1"}, {"A", "A"},
    };
    for (const CaseRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(upperCased(row.text), row.changed);
    }
    EXPECT_EQ(upperCased(combinedE), "E\u0301");
}

TEST(UnicodeText, LowerCasesFully) {
    const std::vector<CaseRow> rows{
        {"", ""}, {"A", "a"}, {"É", "é"}, {"SS", "ss"}, {"I", "i"}, {"Я", "я"}, {"[", "["}, {"a", "a"},
    };
    for (const CaseRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(lowerCased(row.text), row.changed);
    }
}

TEST(UnicodeText, BytesAreValidWhenTheyAreWholeCharactersInTheirOnlyForm) {
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {""sv, std::string_view(), "a"sv, "\0"sv, "ä€\U0001F600"sv, "\uFFFD"sv, "\uFFFF"sv, "\U0010FFFF"sv}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(isValidUtf8(text));
        EXPECT_EQ(validUtf8(text), text);
    }
}

struct InvalidRow {
    std::string_view name;
    std::string_view text;
};

TEST(UnicodeText, BytesThatAreNoCharactersAreNotValidAndReplaced) {
    const std::vector<InvalidRow> rows{
        {"a byte that never occurs", "\xFF"}, {"a continuation alone", "a\x80"},
        {"a character cut off", "a\xE2\x82"}, {"an overlong form", "\xC0\xAF"},
        {"a surrogate", "\xED\xA0\x80"},      {"a character beyond the last one", "\xF4\x90\x80\x80"}};
    for (const InvalidRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(isValidUtf8(row.text));
        EXPECT_TRUE(isValidUtf8(validUtf8(row.text)));
        EXPECT_NE(validUtf8(row.text).find(replacement), std::string::npos);
    }
    EXPECT_EQ(validUtf8("a\xFF\u00e4"), "a\uFFFDä");
}

TEST(UnicodeText, NoncharactersAreTheLastTwoOfEachPlaneAndARangeOfTheFirst) {
    for (const std::string_view text :
         {"\uFFFE", "a\uFFFFb", "\uFDD0", "\uFDEF", "\U0001FFFE", "\U0010FFFF", "\U0001F600\uFFFE"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(hasNoncharacter(text));
    }
    for (const std::string_view text : {"", "a", "\uFDCF", "\uFDF0", "\uFFFD", "\U0001F600", "\U0010FFFD", "\xFF"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(hasNoncharacter(text));
    }
}

TEST(UnicodeText, ContainsAPartInCapitalOrSmallLetters) {
    EXPECT_TRUE(containsIgnoringCase("Shortcut Conflict, twice", "conflict"));
    EXPECT_TRUE(containsIgnoringCase("CONFLICT", "conflict"));
    EXPECT_TRUE(containsIgnoringCase("in conflict", "CONFLICT"));
    EXPECT_TRUE(containsIgnoringCase("ÄRGER", "ärger"));
    EXPECT_FALSE(containsIgnoringCase("conflic t", "conflict"));
    EXPECT_FALSE(containsIgnoringCase("arger", "ärger"));
    EXPECT_FALSE(containsIgnoringCase("", "conflict"));
    EXPECT_FALSE(containsIgnoringCase("conflict", ""));
}

}  // namespace
}  // namespace velmorand

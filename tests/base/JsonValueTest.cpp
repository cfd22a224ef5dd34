#include "base/JsonValue.h"

#include "support/Expected.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

JsonValue parsed(std::string_view document) {
    return JsonValue::parse(document).value();
}

bool isReadable(std::string_view document) {
    return JsonValue::parse(document).has_value();
}

/// What the document is when it was read and written again; the reason when it cannot be read.
std::string rewritten(std::string_view document) {
    const auto value = JsonValue::parse(document);
    return value ? value->write() : value.error().description;
}

std::string reasonAgainst(std::string_view document) {
    const auto failure = failureOf(JsonValue::parse(document));
    return failure ? failure->description : "";
}

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

struct KindRow {
    std::string_view document;
    std::size_t kind;
};

TEST(JsonValue, IsOfTheKindThatIsWritten) {
    const std::vector<KindRow> rows{{"null", 0}, {"true", 1},  {"false", 1}, {"1", 2},
                                    {"\"\"", 3}, {"\"1\"", 3}, {"[]", 4},    {"{}", 5}};
    for (const KindRow& row : rows) {
        SCOPED_TRACE(row.document);
        const JsonValue value = parsed(row.document);
        EXPECT_EQ(value.content().index(), row.kind);
        EXPECT_EQ(value.isNull(), row.kind == 0);
        EXPECT_EQ(value.asBoolean().has_value(), row.kind == 1);
        EXPECT_EQ(value.asDouble().has_value(), row.kind == 2);
        EXPECT_EQ(value.asString() != nullptr, row.kind == 3);
        EXPECT_EQ(value.asArray() != nullptr, row.kind == 4);
        EXPECT_EQ(value.asObject() != nullptr, row.kind == 5);
    }
}

TEST(JsonValue, HasTheContentThatIsWritten) {
    EXPECT_EQ(parsed("true").asBoolean(), true);
    EXPECT_EQ(parsed("false").asBoolean(), false);
    EXPECT_EQ(*parsed(R"("Left Arrow")").asString(), "Left Arrow");
    EXPECT_EQ(parsed("[1,2,3]").asArray()->at(1).asDouble(), 2);
    EXPECT_TRUE(JsonValue().isNull());
}

TEST(JsonValue, AMemberIsFoundByItsKey) {
    const JsonValue value = parsed(R"({"a":1,"b":2})");

    EXPECT_EQ(value.member("a")->asDouble(), 1);
    EXPECT_EQ(value.member("b")->asDouble(), 2);
    EXPECT_EQ(value.member("c"), nullptr);
    EXPECT_EQ(value.member("A"), nullptr);
    EXPECT_EQ(value.member(""), nullptr);
}

TEST(JsonValue, WhatIsNoObjectHasNoMembers) {
    EXPECT_EQ(parsed("[\"a\"]").member("a"), nullptr);
    EXPECT_EQ(parsed("\"a\"").member("a"), nullptr);
    EXPECT_EQ(JsonValue().member("a"), nullptr);
}

TEST(JsonValue, RepeatedKeysAreKeptInTheirOrderAndTheLastIsTheMember) {
    const JsonValue value = parsed(R"({"b":1,"a":2,"b":3,"a":4,"c":5})");

    std::vector<std::string> keys;
    for (const auto& [key, member] : *value.asObject()) keys.push_back(key);
    EXPECT_THAT(keys, ElementsAre("b", "a", "b", "a", "c"));
    EXPECT_EQ(value.member("a")->asDouble(), 4);
    EXPECT_EQ(value.member("b")->asDouble(), 3);
    EXPECT_EQ(value.write(), R"({"b":1,"a":2,"b":3,"a":4,"c":5})");
}

TEST(JsonValue, EveryContainerHasItsOwnMembers) {
    const JsonValue value = parsed(R"({"a":{"b":{"a":1},"c":[{"a":2},[]]},"b":{}})");

    EXPECT_EQ(value.member("a")->member("b")->member("a")->asDouble(), 1);
    EXPECT_EQ(value.member("a")->member("c")->asArray()->at(0).member("a")->asDouble(), 2);
    EXPECT_EQ(value.member("b")->asObject()->size(), 0U);
    EXPECT_EQ(value.write(), R"({"a":{"b":{"a":1},"c":[{"a":2},[]]},"b":{}})");
}

TEST(JsonValue, WhiteSpaceAroundItsPartsDoesNotMatter) {
    EXPECT_EQ(rewritten("\r\n\t { \"a\" : [ 1 ,\n2 ] , \"b\" : true } \n"), R"({"a":[1,2],"b":true})");
}

TEST(JsonValue, AByteOrderMarkInFrontDoesNotMatter) {
    EXPECT_EQ(rewritten("\xEF\xBB\xBF{\"a\":1}"), R"({"a":1})");
    EXPECT_FALSE(isReadable("\xEF\xBB\xBF"));
    EXPECT_FALSE(isReadable("{}\xEF\xBB\xBF"));
    EXPECT_FALSE(isReadable("\xEF\xBB\xBF\xEF\xBB\xBF{}"));
}

TEST(JsonValue, EscapedCharactersAreReadAsWhatTheyStandFor) {
    EXPECT_EQ(*parsed(R"("\"\\\/\b\f\n\r\t")").asString(), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(*parsed(R"("\u0041\u00e4\u00E4\u20ac")").asString(), "Aää€");
    EXPECT_EQ(*parsed(R"("\ud83d\ude00")").asString(), "\U0001F600");
    EXPECT_EQ(*parsed(R"("a\u0000b")").asString(), "a\0b"sv);
    EXPECT_EQ(parsed(R"({"\u0061":1})").member("a")->asDouble(), 1);
}

TEST(JsonValue, TextIsWrittenWithTheEscapesItNeedsAndNoOthers) {
    EXPECT_EQ(JsonValue::text("a\"b\\c/d").write(), R"("a\"b\\c/d")");
    EXPECT_EQ(JsonValue::text("\b\f\n\r\t").write(), R"("\b\f\n\r\t")");
    EXPECT_EQ(JsonValue::text("\x01\x1F\x7F"sv).write(), "\"\\u0001\\u001F\x7F\"");
    EXPECT_EQ(JsonValue::text("\0"sv).write(), R"("\u0000")");
    EXPECT_EQ(JsonValue::text("ä€\U0001F600").write(), "\"ä€\U0001F600\"");
    EXPECT_EQ(JsonValue::text("").write(), R"("")");
}

TEST(JsonValue, IsTheSameAfterItWasWritten) {
    const std::vector<std::string_view> documents{
        "null", "true", "false", "\"\"", "[]", "{}", R"({"":{"":[null,false,"\u0001",-0.0,1E+5]}})", R"([[[]],[{}]])"};
    for (const std::string_view document : documents) {
        SCOPED_TRACE(document);
        EXPECT_EQ(rewritten(document), document);
    }
}

TEST(JsonValue, ItsPartsMakeUpADocument) {
    JsonValue::Object members;
    members.emplace_back("list", JsonValue::Array{JsonValue(), JsonValue(true), JsonValue::text("a")});
    members.emplace_back("number", JsonValue::number(8U));

    EXPECT_EQ(JsonValue(members).write(), R"({"list":[null,true,"a"],"number":8})");
}

struct RefusedRow {
    std::string_view name;
    std::string_view document;
};

TEST(JsonValue, RefusesWhatIsNoJson) {
    const std::vector<RefusedRow> rows{
        {"nothing", ""},
        {"white space", " \n"},
        {"an object cut off", "{\"a\":1"},
        {"a list cut off", "[1"},
        {"a string cut off", "\"a"},
        {"an escape cut off", "\"\\"},
        {"a word cut off", "tru"},
        {"a word in capitals", "True"},
        {"something after the end", "{}x"},
        {"a second value", "{} {}"},
        {"a second number", "1 2"},
        {"a closing bracket too many", "[]]"},
        {"the wrong closing bracket", "[1}"},
        {"a trailing comma in a list", "[1,]"},
        {"a trailing comma in an object", "{\"a\":1,}"},
        {"a missing comma", "[1 2]"},
        {"a missing value", "{\"a\":}"},
        {"a missing colon", "{\"a\" 1}"},
        {"a key without quotes", "{a:1}"},
        {"a number as a key", "{1:1}"},
        {"single quotes", "'a'"},
        {"a line comment", "1 // one"},
        {"a block comment", "/* one */ 1"},
        {"not a number", "NaN"},
        {"infinity", "Infinity"},
        {"infinity below zero", "-Infinity"},
        {"infinity in short", "[Inf]"},
        {"an escape that does not exist", R"("\a")"},
        {"an escape with too few digits", R"("\u12")"},
        {"an escape with other letters", R"("\u00g0")"},
        {"a line end in a string", "\"a\nb\""},
        {"a control character in a string", "\"\x1F\""},
    };
    for (const RefusedRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(isReadable(row.document));
        EXPECT_THAT(reasonAgainst(row.document), HasSubstr("(at byte "));
    }
}

TEST(JsonValue, RefusesTextThatIsNotUnicode) {
    const std::vector<RefusedRow> rows{
        {"a byte that begins nothing", "\"\xFF\""},
        {"a continuation alone", "\"\x80\""},
        {"a character cut off", "\"\xE2\x82\""},
        {"an overlong form", "\"\xC0\xAF\""},
        {"a surrogate", "\"\xED\xA0\x80\""},
        {"a character beyond the last one", "\"\xF4\x90\x80\x80\""},
        {"a key", "{\"\xFF\":1}"},
        {"an escaped first half alone", R"("\ud800")"},
        {"an escaped second half alone", R"("\udc00")"},
        {"the last second half alone", R"("a\udfffb")"},
        {"two first halves", R"("\ud800\ud800")"},
        {"the halves the wrong way round", R"("\udc00\ud800")"},
        {"a first half and a letter", R"("\ud800a")"},
        {"a first half and another escape", R"("\ud800\n")"},
        {"an escaped half in a key", R"({"\udc00":1})"},
    };
    for (const RefusedRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(isReadable(row.document));
        EXPECT_THAT(reasonAgainst(row.document), HasSubstr("(at byte "));
    }
}

TEST(JsonValue, RefusesAZeroByteWhereverItIs) {
    for (const std::string_view document : {"{}\0"sv, "\0{}"sv, "{\0}"sv, "\"\0\""sv, "1\0"sv}) {
        EXPECT_EQ(reasonAgainst(document), "The document holds a zero byte.");
    }
}

TEST(JsonValue, SaysWhereTheDocumentIsWrong) {
    EXPECT_THAT(reasonAgainst(R"({"a":x})"), EndsWith("(at byte 5)"));
    EXPECT_THAT(reasonAgainst(""), EndsWith("(at byte 0)"));
    EXPECT_THAT(reasonAgainst("[1,2,-]"), HasSubstr("(at byte "));
}

TEST(JsonValue, MayBeNested64LevelsDeepAndNoDeeper) {
    EXPECT_EQ(rewritten(nested(64)), nested(64));
    EXPECT_EQ(reasonAgainst(nested(65)), "The document is nested deeper than 64 levels.");
    EXPECT_EQ(reasonAgainst(R"({"a":)" + nested(64) + "}"), "The document is nested deeper than 64 levels.");
}

TEST(JsonValue, ManyContainersBesideEachOtherAreNoNesting) {
    std::string document = "[";
    for (int i = 0; i < 1000; ++i) document += "[{}],";

    EXPECT_TRUE(isReadable(document + "[]]"));
}

TEST(JsonValue, EndlessNestingIsRefusedWithoutBeingFollowed) {
    EXPECT_THAT(reasonAgainst(std::string(1U << 20U, '[')), HasSubstr("nested deeper"));
    EXPECT_FALSE(isReadable(std::string(10'000'000, '[')));
}

TEST(JsonValue, MayBeOneMebibyteLongAndNoLonger) {
    constexpr std::size_t longest = 16U << 20U;
    const std::string longestText = "\"" + std::string(longest - 2, 'a') + "\"";

    EXPECT_TRUE(isReadable(longestText));
    EXPECT_EQ(reasonAgainst(longestText + " "), "The document is longer than 16777216 bytes.");
    EXPECT_EQ(reasonAgainst(std::string(longest, ' ') + "1"), "The document is longer than 16777216 bytes.");
}

}  // namespace
}  // namespace velmorand

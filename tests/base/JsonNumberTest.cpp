#include "base/JsonValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

JsonValue parsed(std::string_view document) {
    return JsonValue::parse(document).value();
}

bool isReadable(std::string_view document) {
    return JsonValue::parse(document).has_value();
}

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

struct NumberRow {
    std::string document;
    std::optional<double> value;
};

TEST(JsonNumber, IsKeptAsItsDigits) {
    for (const std::string_view digits :
         {"8", "8.0", "8e0", "80e-1", "8E+00", "-0", "-0.0", "0.1000", "1e999", "-1e-999", "12345678901234567890123"}) {
        SCOPED_TRACE(digits);
        EXPECT_EQ(std::get<JsonValue::Number>(parsed(digits).content()).digits, digits);
        EXPECT_EQ(parsed(digits).write(), digits);
    }
}

TEST(JsonNumber, EveryNumberOfADocumentKeepsItsOwnDigits) {
    constexpr std::string_view document = R"({"1":[1.50,"2.5 [3",-3e+2],"\"4":{"5\\":5.0},"6":[7,8,9]})";

    EXPECT_EQ(parsed(document).write(), document);
}

TEST(JsonNumber, IsTheNearestDouble) {
    const std::vector<NumberRow> rows{
        {"0", 0},
        {"8", 8},
        {"8.0", 8},
        {"8e0", 8},
        {"80e-1", 8},
        {"0.8E+1", 8},
        {"-3", -3},
        {"12.5", 12.5},
        {"0.15", 0.15},
        {"0.1", 0.1},
        {"0.3000000000000000166", 0.3},
        {"9007199254740993", 9007199254740992.0},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"5e-324", std::numeric_limits<double>::denorm_min()},
        {"1" + zeros(308), 1e308},
        {"1" + zeros(400) + "e-400", 1},
        {"0." + zeros(400) + "1e401", 1},
        {"0e999", 0},
        {"0.0e-999", 0},
    };
    for (const NumberRow& row : rows) {
        SCOPED_TRACE(row.document);
        EXPECT_EQ(parsed(row.document).asDouble(), row.value);
    }
}

TEST(JsonNumber, MinusZeroIsADouble) {
    EXPECT_EQ(parsed("-0").asDouble(), 0);
    EXPECT_TRUE(std::signbit(parsed("-0").asDouble().value()));
}

TEST(JsonNumber, IsAbsentAsADoubleWhenItIsTooLargeForOne) {
    const std::vector<std::string> tooLarge{"1e999",
                                            "-1e999",
                                            "1e309",
                                            "1.8e308",
                                            "1" + zeros(400),
                                            "-1" + zeros(400) + ".5",
                                            "1" + zeros(400) + "e-10",
                                            "0." + zeros(10) + "1e400",
                                            "1e" + std::string(40, '9'),
                                            "1e+" + std::string(40, '9'),
                                            "1e9223372036854775807",
                                            "0." + zeros(400) + "1e" + std::string(40, '9')};
    for (const std::string& digits : tooLarge) {
        SCOPED_TRACE(digits);
        EXPECT_EQ(parsed(digits).asDouble(), std::nullopt);
        EXPECT_EQ(parsed(digits).asUnsigned(), std::nullopt);
    }
}

TEST(JsonNumber, ThatIsTooLargeLeavesTheRestOfTheDocumentReadable) {
    const JsonValue value = parsed(R"({"a":1e999,"b":[-1e999,2],"c":3})");

    EXPECT_EQ(value.member("b")->asArray()->at(1).asDouble(), 2);
    EXPECT_EQ(value.member("c")->asDouble(), 3);
}

TEST(JsonNumber, IsZeroWhenItIsTooCloseToZeroForADouble) {
    const std::vector<std::string> tooSmall{"1e-999",
                                            "-1e-999",
                                            "1E-400",
                                            "100e-400",
                                            "0." + zeros(400) + "1",
                                            "-0." + zeros(400) + "1",
                                            "0." + zeros(400) + "1e5",
                                            "0." + zeros(400) + "1E+10",
                                            "1e-" + std::string(40, '9'),
                                            "0.1e-9223372036854775808",
                                            "1" + zeros(400) + "e-" + std::string(40, '9')};
    for (const std::string& digits : tooSmall) {
        SCOPED_TRACE(digits);
        EXPECT_EQ(parsed(digits).asDouble(), 0);
    }
}

struct UnsignedRow {
    std::string_view document;
    std::optional<std::uint32_t> value;
};

TEST(JsonNumber, IsUnsignedWhenItIsAWholeNumberInRangeHoweverItIsWritten) {
    const std::vector<UnsignedRow> rows{
        {"0", 0},
        {"8", 8},
        {"8.0", 8},
        {"8.000", 8},
        {"8e0", 8},
        {"80e-1", 8},
        {"0.8e1", 8},
        {"8E+0", 8},
        {"-0", 0},
        {"-0.0", 0},
        {"4294967295", 4294967295U},
        {"4294967295.0", 4294967295U},
        {"4.294967295e9", 4294967295U},
        {"42949672950e-1", 4294967295U},
        {"4294967296", std::nullopt},
        {"4294967295.5", std::nullopt},
        {"4294967296.0", std::nullopt},
        {"18446744073709551624", std::nullopt},  // 8 above what 64 bits hold
        {"1e30", std::nullopt},
        {"8.5", std::nullopt},
        {"0.5", std::nullopt},
        {"8e-1", std::nullopt},
        {"-1", std::nullopt},
        {"-8.0", std::nullopt},
        {"-0.5", std::nullopt},
        {"-4294967296", std::nullopt},
    };
    for (const UnsignedRow& row : rows) {
        SCOPED_TRACE(row.document);
        EXPECT_EQ(parsed(row.document).asUnsigned(), row.value);
    }
}

TEST(JsonNumber, OnlyNumbersAreNumbers) {
    for (const std::string_view document : {"null", "true", "false", "\"8\"", "\"\"", "[8]", R"({"8":8})"}) {
        SCOPED_TRACE(document);
        EXPECT_EQ(parsed(document).asDouble(), std::nullopt);
        EXPECT_EQ(parsed(document).asUnsigned(), std::nullopt);
    }
    EXPECT_EQ(parsed("1").asBoolean(), std::nullopt);
    EXPECT_EQ(parsed("0").asString(), nullptr);
}

TEST(JsonNumber, IsRefusedWhenItIsNotWrittenAsJsonWritesNumbers) {
    for (const std::string_view document :
         {"+1", "01",    "-01", "00",    ".5",    "-.5",   "1.",    "1.e5",  "1e",    "1e+",         "1e-",
          "-",  "--1",   "1-",  "1.2.3", "1e5.5", "1e5e5", "0x10",  "1,5",   "1_000", "1 000",       "1f",
          "٣",  "[1 2]", "[-]", "[1.]",  "12a",   "1e5x",  "true1", "1true", "{1:2}", "{\"a\":1 2}", "[01]"}) {
        SCOPED_TRACE(document);
        EXPECT_FALSE(isReadable(document));
    }
}

struct WrittenRow {
    double value;
    std::string_view digits;
};

TEST(JsonNumber, ADoubleIsWrittenInTheFewestDigits) {
    const std::vector<WrittenRow> rows{{0, "0"},
                                       {8, "8"},
                                       {50, "50"},
                                       {0.15, "0.15"},
                                       {0.05, "0.05"},
                                       {12.5, "12.5"},
                                       {-3, "-3"},
                                       {0.1 + 0.2, "0.30000000000000004"},
                                       {1.0 / 3, "0.3333333333333333"}};
    for (const WrittenRow& row : rows) EXPECT_EQ(JsonValue::number(row.value).write(), row.digits);
}

TEST(JsonNumber, AnyFiniteDoubleIsTheSameAfterItWasWritten) {
    using Limits = std::numeric_limits<double>;
    for (const double value : {-0.0, 1e-7, 1e20, 1e21, 1e300, -1e-300, Limits::max(), Limits::lowest(), Limits::min(),
                               Limits::denorm_min(), 123456789012345680.0}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(parsed(JsonValue::number(value).write()).asDouble(), value);
    }
}

TEST(JsonNumber, AnUnsignedNumberIsWrittenWhole) {
    EXPECT_EQ(JsonValue::number(0U).write(), "0");
    EXPECT_EQ(JsonValue::number(4294967295U).write(), "4294967295");
}

}  // namespace
}  // namespace velmorand

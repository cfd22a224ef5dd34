#include "platform/linux/DesktopEntryText.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <random>
#include <string>

namespace velmorand {
namespace {

struct ExecRow {
    const char* name;
    std::string path;
    std::optional<std::string> value;

    friend void PrintTo(const ExecRow& row, std::ostream* out) { *out << row.name; }
};

class ExecValueTest : public testing::TestWithParam<ExecRow> {};

TEST_P(ExecValueTest, NamesTheProgram) {
    EXPECT_EQ(execValueFor(GetParam().path), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ExecValueTest,
    testing::Values(ExecRow{"Plain", "/usr/bin/velmorand", "/usr/bin/velmorand"},
                    ExecRow{"NotReserved", "/a-b_c.d,e@f:g+h=i/[x]{y}^", "/a-b_c.d,e@f:g+h=i/[x]{y}^"},
                    ExecRow{"Letters", "/\u00e4\u20ac/velmorand", "/\u00e4\u20ac/velmorand"},
                    ExecRow{"Space", "/a b/velmorand", R"("/a b/velmorand")"},
                    ExecRow{"SpaceAtTheEnd", "/velmorand ", R"("/velmorand ")"},
                    ExecRow{"DoubleQuote", R"(/a"b)", R"("/a\\"b")"}, ExecRow{"SingleQuote", "/a'b", R"("/a'b")"},
                    ExecRow{"Backtick", "/a`b", R"("/a\\`b")"}, ExecRow{"Dollar", "/$HOME", R"("/\\$HOME")"},
                    ExecRow{"Backslash", R"(/a\b)", R"("/a\\\\b")"},
                    ExecRow{"OtherReservedOnes", "/><~|&;*?#()", R"text("/><~|&;*?#()")text"},
                    ExecRow{"Percent", "/100%", "/usr/bin/env /100%%"},
                    ExecRow{"PercentAndSpace", "/%u f", R"(/usr/bin/env "/%%u f")"},
                    ExecRow{"EqualsSign", "/a=b", "/a=b"}, ExecRow{"PercentAndEqualsSign", "/a=%", std::nullopt},
                    ExecRow{"Newline", "/a\nb", std::nullopt}, ExecRow{"Tab", "/a\tb", std::nullopt},
                    ExecRow{"Delete", "/a\x7F", std::nullopt}, ExecRow{"NotUtf8", "/a\xFF", std::nullopt}),
    [](const auto& row) { return row.param.name; });

class ProgramOfExecValueTest : public testing::TestWithParam<ExecRow> {};

TEST_P(ProgramOfExecValueTest, IsItsFirstWord) {
    EXPECT_EQ(programOfExecValue(*GetParam().value),
              GetParam().path.empty() ? std::nullopt : std::optional(GetParam().path));
}

INSTANTIATE_TEST_SUITE_P(Table, ProgramOfExecValueTest,
                         testing::Values(ExecRow{"Bare", "velmorand", "velmorand --quiet %U"},
                                         ExecRow{"Quoted", "/a b/velmorand", R"("/a b/velmorand" --quiet)"},
                                         ExecRow{"QuotedInParts", "/a b/velmorand", R"(/a" "b/velmorand x)"},
                                         ExecRow{"EscapedBlank", "/a", R"(/a\sb)"},
                                         ExecRow{"EscapedBlankInQuotes", "/a b", R"("/a\sb")"},
                                         ExecRow{"DoubledPercent", "/100%", "/100%%"}, ExecRow{"FieldCode", "%u", "%u"},
                                         ExecRow{"QuoteWithoutEnd", "/a b", R"("/a b)"},
                                         ExecRow{"BackslashAtTheEnd", R"(/a\)", R"(/a\)"}, ExecRow{"Empty", "", ""},
                                         ExecRow{"EmptyQuotes", "", R"("" a)"}),
                         [](const auto& row) { return row.param.name; });

std::string randomPath(std::mt19937& random) {
    constexpr std::string_view characters = "ab/ \"'\\`$&;=%#~()<>|*?s";
    std::string path = "/";
    for (int i = 0; i < 12; ++i) path += characters[random() % characters.size()];
    return path;
}

TEST(ProgramOfExecValueTest, IsWhatTheValueWasMadeFor) {
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        const std::string path = randomPath(random);
        if (path.contains('%')) continue;  // another program starts it

        EXPECT_EQ(programOfExecValue(execValueFor(path).value()), path);
    }
}

/// What the program is given that starts another one.
std::string programAfterStarter(std::string_view value) {
    constexpr std::string_view starter = "/usr/bin/env ";
    EXPECT_TRUE(value.starts_with(starter)) << value;
    return programOfExecValue(value.substr(starter.size())).value_or("");
}

TEST(ProgramOfExecValueTest, IsAfterAStarterWhatTheValueWasMadeForWhereThereIsAPercentSign) {
    std::mt19937 random(7);
    int refused = 0;
    for (int round = 0; round < 5000; ++round) {
        const std::string path = randomPath(random) + '%';
        const auto value = execValueFor(path);

        EXPECT_EQ(value.has_value(), !path.contains('=')) << path;
        if (value)
            EXPECT_EQ(programAfterStarter(*value), path);
        else
            ++refused;
    }
    EXPECT_GT(refused, 0);
}

TEST(EscapedValueTest, IsTakenBackByReadingTheValue) {
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        const std::string path = randomPath(random) + (round % 2 == 0 ? "" : "  ");

        const auto values = desktopEntryValues("[Desktop Entry]\nTryExec=" + escapedValue(path) + '\n');

        EXPECT_EQ(desktopEntryValue(values, "TryExec").transform(unescapedValue), path);
    }
}

TEST(UnescapedValueTest, GivesEachEscapeItsMeaningAndLeavesOthers) {
    EXPECT_EQ(unescapedValue(R"(a\sb\nc\td\re\\f)"), "a b\nc\td\re\\f");
    EXPECT_EQ(unescapedValue(R"(\\n)"), R"(\n)");
    EXPECT_EQ(unescapedValue(R"(\x\;\)"), R"(\x\;\)");
    EXPECT_EQ(unescapedValue(""), "");
}

}  // namespace
}  // namespace velmorand

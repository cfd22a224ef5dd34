#include "platform/linux/x11/X11Property.h"

#include "platform/linux/support/PropertyValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <ostream>
#include <string>

namespace velmorand {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr std::uint32_t utf8Type = 300;
constexpr std::array textTypes{std::uint32_t{XCB_ATOM_STRING}, utf8Type};

TEST(X11ItemsTest, AreThe32BitNumbersInTheirOrder) {
    EXPECT_THAT(decodeItems(cardinals({7, 0, 0xFFFFFFFF}), XCB_ATOM_CARDINAL), Optional(ElementsAre(7, 0, 0xFFFFFFFF)));
}

TEST(X11ItemsTest, OfAnEmptyPropertyAreNoneButNotAbsent) {
    EXPECT_THAT(decodeItems(cardinals({}), XCB_ATOM_CARDINAL), Optional(IsEmpty()));
}

TEST(X11ItemsTest, LeaveOutAnItemThatIsCutOff) {
    EXPECT_THAT(decodeItems(cutTo(7, cardinals({1, 2})), XCB_ATOM_CARDINAL), Optional(ElementsAre(1)));
    EXPECT_THAT(decodeItems(cutTo(3, cardinals({1})), XCB_ATOM_CARDINAL), Optional(IsEmpty()));
}

TEST(X11ItemsTest, OfAHugePropertyAreAllThere) {
    std::vector<std::uint32_t> numbers(1U << 20U);
    std::iota(numbers.begin(), numbers.end(), 0U);

    EXPECT_EQ(decodeItems(cardinals(numbers), XCB_ATOM_CARDINAL), numbers);
}

struct WrongPropertyRow {
    std::string name;
    X11PropertyValue property;

    friend void PrintTo(const WrongPropertyRow& row, std::ostream* out) { *out << row.name; }
};

class X11WrongPropertyTest : public testing::TestWithParam<WrongPropertyRow> {};

TEST_P(X11WrongPropertyTest, CountsAsAbsentForEveryDecoderOfNumbers) {
    EXPECT_EQ(decodeItems(GetParam().property, XCB_ATOM_WINDOW), std::nullopt);
    EXPECT_EQ(decodeFirstItem(GetParam().property, XCB_ATOM_WINDOW), std::nullopt);
    EXPECT_THAT(decodeWindowList(GetParam().property, XCB_ATOM_WINDOW), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11WrongPropertyTest,
    testing::Values(WrongPropertyRow{"NotThere", {}}, WrongPropertyRow{"WrongType", cardinals({1, 2})},
                    WrongPropertyRow{"Text", textProperty(XCB_ATOM_STRING, "\1\0\0\0"s)},
                    WrongPropertyRow{"Format8", withFormat(8, itemsProperty(XCB_ATOM_WINDOW, {1, 2}))},
                    WrongPropertyRow{"Format16", withFormat(16, itemsProperty(XCB_ATOM_WINDOW, {1, 2}))},
                    WrongPropertyRow{"Format0", withFormat(0, itemsProperty(XCB_ATOM_WINDOW, {1}))},
                    WrongPropertyRow{"Format255", withFormat(255, itemsProperty(XCB_ATOM_WINDOW, {1}))}),
    [](const auto& each) { return each.param.name; });

TEST(X11FirstItemTest, IsTheFirstOfSeveral) {
    EXPECT_EQ(decodeFirstItem(itemsProperty(XCB_ATOM_WINDOW, {0x400001, 0}), XCB_ATOM_WINDOW), 0x400001U);
}

TEST(X11FirstItemTest, MayBeZero) {
    EXPECT_EQ(decodeFirstItem(itemsProperty(XCB_ATOM_WINDOW, {0}), XCB_ATOM_WINDOW), 0U);
}

TEST(X11FirstItemTest, OfNoneIsAbsent) {
    EXPECT_EQ(decodeFirstItem(itemsProperty(XCB_ATOM_WINDOW, {}), XCB_ATOM_WINDOW), std::nullopt);
    EXPECT_EQ(decodeFirstItem(cutTo(3, itemsProperty(XCB_ATOM_WINDOW, {1})), XCB_ATOM_WINDOW), std::nullopt);
}

TEST(X11WindowListTest, KeepsTheOrderAndDropsZerosAndRepetitions) {
    EXPECT_THAT(decodeWindowList(itemsProperty(XCB_ATOM_WINDOW, {9, 0, 3, 9, 7, 3, 0, 1}), XCB_ATOM_WINDOW),
                ElementsAre(9, 3, 7, 1));
}

TEST(X11WindowListTest, CopesWithAsManyWindowsAsAreEverRead) {
    std::vector<std::uint32_t> windows(x11_property_limit::windows);
    std::iota(windows.rbegin(), windows.rend(), 1U);  // falling, the worst order for a sorted search

    EXPECT_EQ(decodeWindowList(itemsProperty(XCB_ATOM_WINDOW, windows), XCB_ATOM_WINDOW), windows);
}

struct IdentifierRow {
    std::string name;
    X11PropertyValue property;
    std::optional<std::string> expected;

    friend void PrintTo(const IdentifierRow& row, std::ostream* out) { *out << row.name; }
};

class X11IdentifierTest : public testing::TestWithParam<IdentifierRow> {};

TEST_P(X11IdentifierTest, IsWhatTheTableSays) {
    EXPECT_EQ(decodeIdentifier(GetParam().property, textTypes, 16), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11IdentifierTest,
    testing::Values(IdentifierRow{"OneTypeOfSeveral", textProperty(XCB_ATOM_STRING, "org.example.App"),
                                  "org.example.App"},
                    IdentifierRow{"TheOtherType", textProperty(utf8Type, "Käfer"), "Käfer"},
                    IdentifierRow{"EndsAtTheFirstNul", textProperty(utf8Type, "first\0second"s), "first"},
                    IdentifierRow{"IgnoresBadBytesAfterTheNul", textProperty(utf8Type, "first\0\xFF\n"s), "first"},
                    IdentifierRow{"AsLongAsAllowed", textProperty(utf8Type, "0123456789abcdef"), "0123456789abcdef"},
                    IdentifierRow{"TooLong", textProperty(utf8Type, "0123456789abcdefg"), std::nullopt},
                    IdentifierRow{"AsLongAsAllowedBeforeTheNul", textProperty(utf8Type, "0123456789abcdef\0g"s),
                                  "0123456789abcdef"},
                    IdentifierRow{"Huge", textProperty(utf8Type, std::string(1U << 16U, 'x')), std::nullopt},
                    IdentifierRow{"NotThere", {}, std::nullopt},
                    IdentifierRow{"Empty", textProperty(utf8Type, ""), std::nullopt},
                    IdentifierRow{"OnlyANul", textProperty(utf8Type, "\0"s), std::nullopt},
                    IdentifierRow{"StartsWithANul", textProperty(utf8Type, "\0name"s), std::nullopt},
                    IdentifierRow{"WrongType", textProperty(XCB_ATOM_ATOM, "name"), std::nullopt},
                    IdentifierRow{"Format16", withFormat(16, textProperty(utf8Type, "name")), std::nullopt},
                    IdentifierRow{"Format32", withFormat(32, textProperty(utf8Type, "name")), std::nullopt},
                    IdentifierRow{"StrayByte", textProperty(utf8Type, "a\xFF"), std::nullopt},
                    IdentifierRow{"CutOffCharacter", textProperty(utf8Type, "a\xE2\x82"), std::nullopt},
                    IdentifierRow{"OverlongForm", textProperty(utf8Type, "\xC0\xAF"), std::nullopt},
                    IdentifierRow{"Surrogate", textProperty(utf8Type, "\xED\xA0\x80"), std::nullopt},
                    IdentifierRow{"BeyondUnicode", textProperty(utf8Type, "\xF4\x90\x80\x80"), std::nullopt},
                    IdentifierRow{"LineEnd", textProperty(utf8Type, "a\nb"), std::nullopt},
                    IdentifierRow{"Escape", textProperty(utf8Type, "\x1B[31m"), std::nullopt},
                    IdentifierRow{"Delete", textProperty(utf8Type, "a\x7F"), std::nullopt},
                    IdentifierRow{"ControlBeyondAscii", textProperty(utf8Type, "a\xC2\x9B"), std::nullopt}),
    [](const auto& each) { return each.param.name; });

TEST(X11IdentifierTypesTest, WithoutAnyNothingIsAnIdentifier) {
    EXPECT_EQ(decodeIdentifier(textProperty(utf8Type, "name"), {}, 16), std::nullopt);
    EXPECT_EQ(decodeIdentifier({}, {}, 16), std::nullopt);
}

struct WindowClassRow {
    std::string name;
    X11PropertyValue property;
    std::optional<std::string> instance;
    std::optional<std::string> className;

    friend void PrintTo(const WindowClassRow& row, std::ostream* out) { *out << row.name; }
};

class X11WindowClassTest : public testing::TestWithParam<WindowClassRow> {};

TEST_P(X11WindowClassTest, IsWhatTheTableSays) {
    const X11WindowClass decoded = decodeWindowClass(GetParam().property, XCB_ATOM_STRING);

    EXPECT_EQ(decoded.instance, GetParam().instance);
    EXPECT_EQ(decoded.className, GetParam().className);
}

const auto longest = std::string(256, 'c');
const auto tooLong = std::string(257, 'c');

INSTANTIATE_TEST_SUITE_P(
    Table, X11WindowClassTest,
    testing::Values(
        WindowClassRow{"BothParts", textProperty(XCB_ATOM_STRING, "xterm\0XTerm\0"s), "xterm", "XTerm"},
        WindowClassRow{"WithoutTheLastNul", textProperty(XCB_ATOM_STRING, "xterm\0XTerm"s), "xterm", "XTerm"},
        WindowClassRow{"OnePartWithoutNul", textProperty(XCB_ATOM_STRING, "XTerm"), "XTerm", "XTerm"},
        WindowClassRow{"OnePartWithItsNul", textProperty(XCB_ATOM_STRING, "XTerm\0"s), "XTerm", "XTerm"},
        WindowClassRow{"MorePartsThanTwo", textProperty(XCB_ATOM_STRING, "a\0b\0c\0"s), "a", "b"},
        WindowClassRow{"EmptyInstance", textProperty(XCB_ATOM_STRING, "\0XTerm\0"s), std::nullopt, "XTerm"},
        WindowClassRow{"BadInstance", textProperty(XCB_ATOM_STRING, "x\xFF\0XTerm\0"s), std::nullopt, "XTerm"},
        WindowClassRow{"BadClass", textProperty(XCB_ATOM_STRING, "xterm\0X\nTerm\0"s), "xterm", std::nullopt},
        WindowClassRow{"BadSinglePart", textProperty(XCB_ATOM_STRING, "\xFE"), std::nullopt, std::nullopt},
        WindowClassRow{"AsLongAsAllowed", textProperty(XCB_ATOM_STRING, longest + '\0' + longest), longest, longest},
        WindowClassRow{"TooLong", textProperty(XCB_ATOM_STRING, tooLong + '\0' + tooLong), std::nullopt, std::nullopt},
        WindowClassRow{"Huge", textProperty(XCB_ATOM_STRING, std::string(1U << 16U, 'c')), std::nullopt, std::nullopt},
        WindowClassRow{"Empty", textProperty(XCB_ATOM_STRING, ""), std::nullopt, std::nullopt},
        WindowClassRow{"OnlyNuls", textProperty(XCB_ATOM_STRING, "\0\0\0"s), std::nullopt, std::nullopt},
        WindowClassRow{"NotThere", {}, std::nullopt, std::nullopt},
        WindowClassRow{"WrongType", textProperty(XCB_ATOM_CARDINAL, "xterm\0XTerm\0"s), std::nullopt, std::nullopt},
        WindowClassRow{"Format32", withFormat(32, textProperty(XCB_ATOM_STRING, "xterm\0XTerm\0"s)), std::nullopt,
                       std::nullopt}),
    [](const auto& each) { return each.param.name; });

TEST(X11PropertyLimitTest, KeepsEveryReadSmall) {
    EXPECT_LE(x11_property_limit::numbers, 64U);
    EXPECT_LE(x11_property_limit::text, 256U);
    EXPECT_LE(x11_property_limit::windows, 4096U);
}

}  // namespace
}  // namespace velmorand

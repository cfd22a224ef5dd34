#include "platform/linux/x11/X11SizeHints.h"

#include "platform/linux/support/PropertyValues.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace velmorand {
namespace {

constexpr std::uint32_t minimumFlag = 16;
constexpr std::uint32_t maximumFlag = 32;

/// WM_SIZE_HINTS: flags, four obsolete numbers, the smallest and the largest size, and what follows.
std::vector<std::uint32_t> sizeHints(std::uint32_t flags, Size smallest, Size largest) {
    const auto number = [](double length) { return static_cast<std::uint32_t>(length); };
    std::vector<std::uint32_t> words(18);
    words[0] = flags;
    words[5] = number(smallest.width);
    words[6] = number(smallest.height);
    words[7] = number(largest.width);
    words[8] = number(largest.height);
    return words;
}

X11PropertyValue hintsProperty(const std::vector<std::uint32_t>& hints) {
    return itemsProperty(XCB_ATOM_WM_SIZE_HINTS, hints);
}

constexpr std::uint32_t bothFlags = minimumFlag | maximumFlag;
constexpr Size oneSize{640, 480};

struct FixedSizeRow {
    std::string name;
    X11PropertyValue hints;
    bool isFixed = false;

    friend void PrintTo(const FixedSizeRow& row, std::ostream* out) { *out << row.name; }
};

class X11FixedSizeTest : public testing::TestWithParam<FixedSizeRow> {};

TEST_P(X11FixedSizeTest, IsWhatTheTableSays) {
    EXPECT_EQ(decodeSizeHints(GetParam().hints, XCB_ATOM_WM_SIZE_HINTS).isFixed(), GetParam().isFixed);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11FixedSizeTest,
    testing::Values(FixedSizeRow{"OneSize", hintsProperty(sizeHints(bothFlags, oneSize, oneSize)), true},
                    FixedSizeRow{"OneSizeWithOtherFlags", hintsProperty(sizeHints(0x3FF, oneSize, oneSize)), true},
                    FixedSizeRow{"OneSizeInTheShortestForm",
                                 cutTo(9 * 4, hintsProperty(sizeHints(bothFlags, oneSize, oneSize))), true},
                    FixedSizeRow{"WidthFree", hintsProperty(sizeHints(bothFlags, oneSize, {641, 480})), false},
                    FixedSizeRow{"HeightFree", hintsProperty(sizeHints(bothFlags, oneSize, {640, 481})), false},
                    FixedSizeRow{"WithoutTheSmallest", hintsProperty(sizeHints(maximumFlag, oneSize, oneSize)), false},
                    FixedSizeRow{"WithoutTheLargest", hintsProperty(sizeHints(minimumFlag, oneSize, oneSize)), false},
                    FixedSizeRow{"WithoutFlags", hintsProperty(sizeHints(0, oneSize, oneSize)), false},
                    FixedSizeRow{"CutOff", cutTo(8 * 4, hintsProperty(sizeHints(bothFlags, oneSize, oneSize))), false},
                    FixedSizeRow{"Empty", hintsProperty({}), false}, FixedSizeRow{"NotThere", {}, false},
                    FixedSizeRow{"WrongType", cardinals(sizeHints(bothFlags, oneSize, oneSize)), false},
                    FixedSizeRow{"Format8", withFormat(8, hintsProperty(sizeHints(bothFlags, oneSize, oneSize))),
                                 false}),
    [](const auto& each) { return each.param.name; });

X11SizeHints decoded(const std::vector<std::uint32_t>& words) {
    return decodeSizeHints(hintsProperty(words), XCB_ATOM_WM_SIZE_HINTS);
}

/// The hints of a terminal: cells of 9 by 18 pixels around a border, at least two of each.
X11SizeHints terminal() {
    auto words = sizeHints(minimumFlag | 64 | 256, {22, 40}, {});
    words[9] = 9;
    words[10] = 18;
    words[15] = 4;
    words[16] = 4;
    return decoded(words);
}

TEST(X11SizeHintsTest, SayNothingWhenTheyAreNotThere) {
    EXPECT_EQ(decodeSizeHints({}, XCB_ATOM_WM_SIZE_HINTS), X11SizeHints());
    EXPECT_TRUE(X11SizeHints().allows({1, 1}));
    EXPECT_EQ(X11SizeHints().rounded({123, 45}), (Size{123, 45}));
}

TEST(X11SizeHintsTest, AllowSizesBetweenTheLimits) {
    const X11SizeHints hints = decoded(sizeHints(bothFlags, {200, 100}, {800, 600}));

    EXPECT_TRUE(hints.allows({200, 100}));
    EXPECT_TRUE(hints.allows({800, 600}));
    EXPECT_FALSE(hints.allows({199, 100}));
    EXPECT_FALSE(hints.allows({200, 99}));
    EXPECT_FALSE(hints.allows({801, 600}));
    EXPECT_FALSE(hints.allows({800, 601}));
}

TEST(X11SizeHintsTest, IgnoreLimitsThatNoWindowCanHave) {
    const X11SizeHints hints = decoded(sizeHints(bothFlags, {0x80000000, 10}, {0xFFFFFFFF, 0}));

    EXPECT_FALSE(hints.smallest);
    EXPECT_FALSE(hints.largest);
}

TEST(X11SizeHintsTest, RoundDownToWholeSteps) {
    EXPECT_EQ(terminal().rounded({4 + 9 * 80 + 8, 4 + 18 * 24 + 17}), (Size{4 + 9 * 80, 4 + 18 * 24}));
    EXPECT_EQ(terminal().rounded({4 + 9 * 80, 4 + 18 * 24}), (Size{4 + 9 * 80, 4 + 18 * 24}));
}

TEST(X11SizeHintsTest, RoundNothingSmallerThanTheBase) {
    EXPECT_EQ(terminal().rounded({3, 2}), (Size{3, 2}));
}

TEST(X11SizeHintsTest, CountStepsFromTheSmallestSizeWithoutABase) {
    auto words = sizeHints(minimumFlag | 64, {25, 35}, {});
    words[9] = 10;
    words[10] = 10;

    EXPECT_EQ(decoded(words).rounded({58, 58}), (Size{55, 55}));
}

TEST(X11SizeHintsTest, KnowNoStepOfNothing) {
    auto words = sizeHints(64, {}, {});
    words[9] = 0;
    words[10] = 18;

    EXPECT_EQ(decoded(words).step, (Size{1, 1}));
}

TEST(X11SizeHintsTest, TellTheGravityOnlyWhenItIsOne) {
    auto words = sizeHints(512, {}, {});
    words[17] = 10;
    EXPECT_EQ(decoded(words).gravity, 10U);
    words[17] = 11;
    EXPECT_EQ(decoded(words).gravity, 1U);
    words[17] = 0;
    EXPECT_EQ(decoded(words).gravity, 1U);
    words[17] = 5;
    words[0] = 0;
    EXPECT_EQ(decoded(words).gravity, 1U);
}

struct GravityRow {
    std::string name;
    std::uint32_t gravity = 0;
    Point position;

    friend void PrintTo(const GravityRow& row, std::ostream* out) { *out << row.name; }
};

class X11GravityTest : public testing::TestWithParam<GravityRow> {};

/// The reference point of the bare client at the position asked for is that of the frame around the wanted client.
TEST_P(X11GravityTest, KeepsTheReferencePointOfTheFrame) {
    EXPECT_EQ(positionForGravity({110, 220, 400, 300}, {10, 6, 20, 4}, GetParam().gravity), GetParam().position);
}

INSTANTIATE_TEST_SUITE_P(Table, X11GravityTest,
                         testing::Values(GravityRow{"NorthWest", 1, {100, 200}}, GravityRow{"North", 2, {108, 200}},
                                         GravityRow{"NorthEast", 3, {116, 200}}, GravityRow{"West", 4, {100, 212}},
                                         GravityRow{"Center", 5, {108, 212}}, GravityRow{"East", 6, {116, 212}},
                                         GravityRow{"SouthWest", 7, {100, 224}}, GravityRow{"South", 8, {108, 224}},
                                         GravityRow{"SouthEast", 9, {116, 224}}, GravityRow{"Static", 10, {110, 220}}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand

#include "platform/linux/x11/X11FrameGeometry.h"

#include "platform/linux/support/PropertyValues.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace velmorand {
namespace {

struct ExtentsRow {
    std::string name;
    X11PropertyValue property;
    X11Extents expected;

    friend void PrintTo(const ExtentsRow& row, std::ostream* out) { *out << row.name; }
};

class X11ExtentsTest : public testing::TestWithParam<ExtentsRow> {};

TEST_P(X11ExtentsTest, AreWhatTheTableSays) {
    EXPECT_EQ(decodeExtents(GetParam().property, XCB_ATOM_CARDINAL), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11ExtentsTest,
    testing::Values(ExtentsRow{"LeftRightTopBottom", cardinals({1, 2, 22, 6}), {1, 2, 22, 6}},
                    ExtentsRow{"Zeros", cardinals({0, 0, 0, 0}), {}},
                    ExtentsRow{"TheLargest", cardinals({512, 512, 512, 512}), {512, 512, 512, 512}},
                    ExtentsRow{"OneTooLarge", cardinals({1, 1, 513, 1}), {}},
                    ExtentsRow{"LargestNumber", cardinals({0xFFFFFFFF, 0x80000000, 70000, 1}), {}},
                    ExtentsRow{"OneNumber", cardinals({5}), {}}, ExtentsRow{"ThreeNumbers", cardinals({5, 5, 29}), {}},
                    ExtentsRow{"FiveNumbers", cardinals({5, 5, 29, 5, 0}), {}}, ExtentsRow{"None", cardinals({}), {}},
                    ExtentsRow{"FourNumbersAndABit", cutTo(19, cardinals({1, 2, 22, 6, 7})), {1, 2, 22, 6}},
                    ExtentsRow{"WrongType", itemsProperty(XCB_ATOM_ATOM, {5, 5, 29, 5}), {}},
                    ExtentsRow{"Format16", withFormat(16, cardinals({5, 5, 29, 5})), {}},
                    ExtentsRow{"NotThere", {}, {}}),
    [](const auto& each) { return each.param.name; });

TEST(X11ExtentsAroundTest, ReachFromTheClientToTheWindowAroundIt) {
    EXPECT_EQ(extentsAround({105, 129, 400, 300}, {100, 100, 411, 336}), (X11Extents{5, 6, 29, 7}));
    EXPECT_EQ(extentsAround({-1275, 129, 400, 300}, {-1280, 100, 411, 336}), (X11Extents{5, 6, 29, 7}));
}

TEST(X11ExtentsAroundTest, AreNoneWhenNoDecorationLooksLikeThat) {
    EXPECT_EQ(extentsAround({105, 129, 400, 300}, {106, 100, 411, 336}), X11Extents());
    EXPECT_EQ(extentsAround({105, 129, 400, 300}, {100, 100, 411, 300}), X11Extents());
    EXPECT_EQ(extentsAround({600, 129, 400, 300}, {0, 100, 1400, 336}), X11Extents());
}

struct GeometryRow {
    std::string name;
    X11FrameGeometry geometry;
    Rect visible;

    friend void PrintTo(const GeometryRow& row, std::ostream* out) { *out << row.name; }
};

class X11FrameGeometryTest : public testing::TestWithParam<GeometryRow> {};

TEST_P(X11FrameGeometryTest, TellsWhatTheUserSees) {
    EXPECT_EQ(GetParam().geometry.visible(), GetParam().visible);
}

TEST_P(X11FrameGeometryTest, FindsTheClientRectangleOfWhatTheUserSees) {
    EXPECT_EQ(GetParam().geometry.clientFor(GetParam().visible), GetParam().geometry.client);
}

TEST_P(X11FrameGeometryTest, MovesTheClientAsFarAsWhatTheUserSees) {
    const Rect& client = GetParam().geometry.client;
    const Rect& visible = GetParam().visible;

    EXPECT_EQ(GetParam().geometry.clientFor({visible.x + 30, visible.y - 40, visible.width + 5, visible.height + 6}),
              (Rect{client.x + 30, client.y - 40, client.width + 5, client.height + 6}));
}

TEST_P(X11FrameGeometryTest, IsSaneAlready) {
    EXPECT_EQ(GetParam().geometry.sanitized(), GetParam().geometry);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11FrameGeometryTest,
    testing::Values(GeometryRow{"WithoutExtents", {{100, 120, 800, 600}, {}, {}}, {100, 120, 800, 600}},
                    GeometryRow{"Decorated", {{105, 149, 800, 600}, {5, 6, 29, 7}, {}}, {100, 120, 811, 636}},
                    GeometryRow{"DecoratedOnTheLeftOfThePrimary",
                                {{-1275, -451, 400, 300}, {5, 5, 29, 5}, {}},
                                {-1280, -480, 410, 334}},
                    GeometryRow{"ClientSideShadow", {{74, 97, 852, 652}, {}, {26, 26, 23, 29}}, {100, 120, 800, 600}},
                    GeometryRow{"DecorationAroundAShadow",
                                {{75, 119, 852, 652}, {1, 1, 22, 1}, {26, 26, 23, 29}},
                                {100, 120, 802, 623}},
                    GeometryRow{"ShadowOnOneSideOnly", {{0, 0, 500, 400}, {}, {0, 10, 0, 20}}, {0, 0, 490, 380}}),
    [](const auto& each) { return each.param.name; });

TEST(X11ClientRectangleTest, LiesOnWholePixels) {
    const X11FrameGeometry geometry{{0, 0, 10, 10}, {5, 5, 29, 5}, {}};

    EXPECT_EQ(geometry.clientFor({100.4, 100.6, 333.3, 200.2}), (Rect{105, 130, 324, 166}));
}

TEST(X11ClientRectangleTest, RoundsEdgesSoThatNeighboursMeet) {
    const X11FrameGeometry plain{{0, 0, 10, 10}, {}, {}};
    const Rect left = plain.clientFor({0, 0, 683.5, 768});
    const Rect right = plain.clientFor({683.5, 0, 682.5, 768});

    EXPECT_EQ(left.maxX(), right.minX());
    EXPECT_EQ(right.maxX(), 1366);
}

struct RangeRow {
    std::string name;
    Rect visible;
    Rect client;

    friend void PrintTo(const RangeRow& row, std::ostream* out) { *out << row.name; }
};

class X11ProtocolRangeTest : public testing::TestWithParam<RangeRow> {};

TEST_P(X11ProtocolRangeTest, IsKept) {
    const X11FrameGeometry decorated{{0, 0, 100, 100}, {5, 5, 20, 5}, {}};

    EXPECT_EQ(decorated.clientFor(GetParam().visible), GetParam().client);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11ProtocolRangeTest,
    testing::Values(RangeRow{"FarRightAndDown", {1e6, 1e6, 110, 125}, {32767, 32767, 100, 100}},
                    RangeRow{"FarLeftAndUp", {-1e6, -1e6, 110, 125}, {-32768, -32768, 100, 100}},
                    RangeRow{"TheLargestPosition", {32762, 32747, 110, 125}, {32767, 32767, 100, 100}},
                    RangeRow{"TheSmallestPosition", {-32773, -32788, 110, 125}, {-32768, -32768, 100, 100}},
                    RangeRow{"TooLarge", {0, 0, 1e6, 1e6}, {5, 20, 32767, 32767}},
                    RangeRow{"SmallerThanItsDecoration", {0, 0, 3, 3}, {5, 20, 1, 1}},
                    RangeRow{"Negative", {0, 0, -50, -50}, {5, 20, 1, 1}},
                    RangeRow{"BeyondEveryNumber", {1e308, -1e308, 1e308, 1e308}, {32767, -32768, 32767, 32767}}),
    [](const auto& each) { return each.param.name; });

struct SanitizedRow {
    std::string name;
    X11Extents shadow;
    X11Extents expected;

    friend void PrintTo(const SanitizedRow& row, std::ostream* out) { *out << row.name; }
};

class X11SanitizedGeometryTest : public testing::TestWithParam<SanitizedRow> {};

TEST_P(X11SanitizedGeometryTest, IgnoresAShadowThatDoesNotFit) {
    const X11FrameGeometry geometry{{10, 20, 100, 80}, {5, 5, 29, 5}, GetParam().shadow};
    const X11FrameGeometry expected{geometry.client, geometry.frame, GetParam().expected};

    EXPECT_EQ(geometry.sanitized(), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, X11SanitizedGeometryTest,
                         testing::Values(SanitizedRow{"Fits", {50, 49, 40, 39}, {50, 49, 40, 39}},
                                         SanitizedRow{"AsWideAsTheClient", {50, 50, 1, 1}, {}},
                                         SanitizedRow{"AsHighAsTheClient", {1, 1, 40, 40}, {}},
                                         SanitizedRow{"FarTooLarge", {512, 512, 512, 512}, {}}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand

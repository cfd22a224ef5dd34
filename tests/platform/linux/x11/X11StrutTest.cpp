#include "platform/linux/support/PropertyValues.h"
#include "platform/linux/x11/X11WorkAreas.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace velmorand {

void PrintTo(const X11Strut& strut, std::ostream* out) {
    *out << "edge " << static_cast<int>(strut.edge) << " band " << describe(strut.band) << " panel "
         << describe(strut.panel);
}

namespace {

using testing::IsEmpty;
using Edge = X11Strut::Edge;

constexpr Size root{3200, 1200};
constexpr Rect panel{10, 20, 300, 40};

struct StrutRow {
    std::string name;
    X11PropertyValue partial;
    X11PropertyValue whole;
    std::vector<X11Strut> expected;

    friend void PrintTo(const StrutRow& row, std::ostream* out) { *out << row.name; }
};

class X11StrutTest : public testing::TestWithParam<StrutRow> {};

TEST_P(X11StrutTest, ReservesTheBandsOfTheTable) {
    EXPECT_EQ(decodeStruts(GetParam().partial, GetParam().whole, XCB_ATOM_CARDINAL, root, panel), GetParam().expected);
}

// Twelve numbers: left, right, top, bottom, then start and end along each of them.
INSTANTIATE_TEST_SUITE_P(
    Partial, X11StrutTest,
    testing::Values(
        StrutRow{
            "Left", cardinals({60, 0, 0, 0, 200, 999, 0, 0, 0, 0, 0, 0}), {}, {{Edge::left, {0, 200, 60, 800}, panel}}},
        StrutRow{"Right",
                 cardinals({0, 50, 0, 0, 0, 0, 100, 899, 0, 0, 0, 0}),
                 {},
                 {{Edge::right, {3150, 100, 50, 800}, panel}}},
        StrutRow{"Top",
                 cardinals({0, 0, 25, 0, 0, 0, 0, 0, 1920, 3199, 0, 0}),
                 {},
                 {{Edge::top, {1920, 0, 1280, 25}, panel}}},
        StrutRow{"Bottom",
                 cardinals({0, 0, 0, 28, 0, 0, 0, 0, 0, 0, 480, 1439}),
                 {},
                 {{Edge::bottom, {480, 1172, 960, 28}, panel}}},
        StrutRow{"TwoEdges",
                 cardinals({60, 0, 0, 28, 0, 1199, 0, 0, 0, 0, 0, 1919}),
                 {},
                 {{Edge::left, {0, 0, 60, 1200}, panel}, {Edge::bottom, {0, 1172, 1920, 28}, panel}}},
        StrutRow{
            "OnePixelLong", cardinals({0, 0, 25, 0, 0, 0, 0, 0, 0, 0, 0, 0}), {}, {{Edge::top, {0, 0, 1, 25}, panel}}},
        StrutRow{"PreferredToWhole",
                 cardinals({0, 0, 25, 0, 0, 0, 0, 0, 0, 1919, 0, 0}),
                 cardinals({0, 0, 0, 99}),
                 {{Edge::top, {0, 0, 1920, 25}, panel}}},
        StrutRow{"PreferredToWholeAlsoWhenZero",
                 cardinals({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}),
                 cardinals({0, 0, 0, 99}),
                 {}}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Whole, X11StrutTest,
    testing::Values(StrutRow{"Left", {}, cardinals({60, 0, 0, 0}), {{Edge::left, {0, 0, 60, 1200}, panel}}},
                    StrutRow{"Right", {}, cardinals({0, 50, 0, 0}), {{Edge::right, {3150, 0, 50, 1200}, panel}}},
                    StrutRow{"Top", {}, cardinals({0, 0, 25, 0}), {{Edge::top, {0, 0, 3200, 25}, panel}}},
                    StrutRow{"Bottom", {}, cardinals({0, 0, 0, 28}), {{Edge::bottom, {0, 1172, 3200, 28}, panel}}},
                    StrutRow{"InPlaceOfABrokenPartialOne",
                             cardinals({1, 2, 3}),
                             cardinals({0, 0, 25, 0}),
                             {{Edge::top, {0, 0, 3200, 25}, panel}}}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Hostile, X11StrutTest,
    testing::Values(
        StrutRow{"NotThere", {}, {}, {}},
        StrutRow{"PartialWithElevenNumbers", cardinals({60, 0, 0, 0, 0, 1199, 0, 0, 0, 0, 0}), {}, {}},
        StrutRow{"PartialWithThirteenNumbers", cardinals({60, 0, 0, 0, 0, 1199, 0, 0, 0, 0, 0, 0, 0}), {}, {}},
        StrutRow{"WholeWithThreeNumbers", {}, cardinals({60, 60, 60}), {}},
        StrutRow{"WholeWithTwelveNumbers", {}, cardinals({60, 0, 0, 0, 0, 1199, 0, 0, 0, 0, 0, 0}), {}},
        StrutRow{"WrongType", {}, itemsProperty(XCB_ATOM_ATOM, {60, 0, 0, 0}), {}},
        StrutRow{"Format16", {}, withFormat(16, cardinals({60, 0, 0, 0})), {}},
        StrutRow{"EndBeforeStart", cardinals({60, 0, 0, 0, 500, 499, 0, 0, 0, 0, 0, 0}), {}, {}},
        StrutRow{"StartBeyondTheRoot", cardinals({60, 0, 0, 0, 1200, 5000, 0, 0, 0, 0, 0, 0}), {}, {}},
        StrutRow{"EndBeyondTheRoot",
                 cardinals({60, 0, 0, 0, 1000, 0xFFFFFFFF, 0, 0, 0, 0, 0, 0}),
                 {},
                 {{Edge::left, {0, 1000, 60, 200}, panel}}},
        StrutRow{"ThickerThanTheRoot", {}, cardinals({0, 0, 0xFFFFFFFF, 0}), {{Edge::top, {0, 0, 3200, 1200}, panel}}},
        StrutRow{"LargestNumbersEverywhere", cardinals(std::vector<std::uint32_t>(12, 0xFFFFFFFF)), {}, {}}),
    [](const auto& each) { return each.param.name; });

TEST(X11StrutRootTest, WithoutAnAreaHasNoBands) {
    EXPECT_THAT(decodeStruts({}, cardinals({10, 10, 10, 10}), XCB_ATOM_CARDINAL, {0, 0}, panel), IsEmpty());
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/x11/X11WorkAreas.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using Edge = X11Strut::Edge;

/// One display of 1920 by 1080.
class X11OneDisplayWorkAreaTest : public testing::Test {
protected:
    [[nodiscard]] Rect areaWith(const std::vector<X11Strut>& struts) const {
        return workArea(monitors.front(), monitors, struts);
    }

    const std::vector<X11Monitor> monitors{{1, "only", {0, 0, 1920, 1080}, true}};
};

TEST_F(X11OneDisplayWorkAreaTest, IsTheWholeDisplayWithoutPanels) {
    EXPECT_EQ(areaWith({}), (Rect{0, 0, 1920, 1080}));
}

TEST_F(X11OneDisplayWorkAreaTest, EndsAtAPanelOnEachEdge) {
    EXPECT_EQ(areaWith({{Edge::left, {0, 0, 60, 1080}, {0, 0, 60, 1080}}}), (Rect{60, 0, 1860, 1080}));
    EXPECT_EQ(areaWith({{Edge::right, {1870, 0, 50, 1080}, {1870, 0, 50, 1080}}}), (Rect{0, 0, 1870, 1080}));
    EXPECT_EQ(areaWith({{Edge::top, {0, 0, 1920, 25}, {0, 0, 1920, 25}}}), (Rect{0, 25, 1920, 1055}));
    EXPECT_EQ(areaWith({{Edge::bottom, {0, 1040, 1920, 40}, {0, 1040, 1920, 40}}}), (Rect{0, 0, 1920, 1040}));
}

TEST_F(X11OneDisplayWorkAreaTest, IsCutByPanelsOnAllEdgesTogether) {
    EXPECT_EQ(areaWith({{Edge::left, {0, 0, 60, 1080}, {0, 0, 60, 1080}},
                        {Edge::right, {1870, 0, 50, 1080}, {1870, 0, 50, 1080}},
                        {Edge::top, {0, 0, 1920, 25}, {0, 0, 1920, 25}},
                        {Edge::bottom, {0, 1040, 1920, 40}, {0, 1040, 1920, 40}}}),
              (Rect{60, 25, 1810, 1015}));
}

TEST_F(X11OneDisplayWorkAreaTest, EndsAtTheThickerOfTwoPanelsOnOneEdge) {
    const X11Strut thin{Edge::top, {0, 0, 960, 25}, {0, 0, 960, 25}};
    const X11Strut thick{Edge::top, {960, 0, 960, 40}, {960, 0, 960, 40}};

    EXPECT_EQ(areaWith({thin, thick}), (Rect{0, 40, 1920, 1040}));
    EXPECT_EQ(areaWith({thick, thin}), (Rect{0, 40, 1920, 1040}));
}

TEST_F(X11OneDisplayWorkAreaTest, IsCutAlongTheWholeEdgeByAPanelThatCoversAPartOfIt) {
    EXPECT_EQ(areaWith({{Edge::bottom, {480, 1052, 960, 28}, {480, 1052, 960, 28}}}), (Rect{0, 0, 1920, 1052}));
}

TEST_F(X11OneDisplayWorkAreaTest, IsCutByAHiddenPanelThatLiesOnNoDisplay) {
    EXPECT_EQ(areaWith({{Edge::bottom, {0, 1040, 1920, 40}, {0, 1080, 1920, 40}}}), (Rect{0, 0, 1920, 1040}));
}

TEST_F(X11OneDisplayWorkAreaTest, KeepsAtLeastThreeTenthsOfTheDisplay) {
    EXPECT_EQ(areaWith({{Edge::top, {0, 0, 1920, 756}, {0, 0, 1920, 756}}}), (Rect{0, 756, 1920, 324}));
    EXPECT_EQ(areaWith({{Edge::top, {0, 0, 1920, 757}, {0, 0, 1920, 757}}}), (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(areaWith({{Edge::right, {576, 0, 1344, 1080}, {576, 0, 1344, 1080}}}), (Rect{0, 0, 576, 1080}));
    EXPECT_EQ(areaWith({{Edge::right, {575, 0, 1345, 1080}, {575, 0, 1345, 1080}}}), (Rect{0, 0, 1920, 1080}));
}

TEST_F(X11OneDisplayWorkAreaTest, IgnoresTheBandThatLeavesTooLittleTogetherWithAnother) {
    EXPECT_EQ(areaWith({{Edge::top, {0, 0, 1920, 500}, {0, 0, 1920, 500}},
                        {Edge::bottom, {0, 580, 1920, 500}, {0, 580, 1920, 500}}}),
              (Rect{0, 500, 1920, 580}));
}

TEST_F(X11OneDisplayWorkAreaTest, IgnoresABandOverTheWholeDisplay) {
    EXPECT_EQ(areaWith({{Edge::left, {0, 0, 1920, 1080}, {0, 0, 10, 10}}}), (Rect{0, 0, 1920, 1080}));
}

TEST(X11SmallDisplayWorkAreaTest, KeepsAtLeastAHundredPixels) {
    const std::vector<X11Monitor> monitors{{1, "small", {0, 0, 320, 200}, true}};
    const X11Strut justRight{Edge::top, {0, 0, 320, 100}, {0, 0, 320, 100}};
    const X11Strut tooThick{Edge::top, {0, 0, 320, 101}, {0, 0, 320, 101}};

    EXPECT_EQ(workArea(monitors[0], monitors, std::vector{justRight}), (Rect{0, 100, 320, 100}));
    EXPECT_EQ(workArea(monitors[0], monitors, std::vector{tooThick}), (Rect{0, 0, 320, 200}));
}

/// A panel on one of several displays, and what it leaves of each of them.
struct SeveralDisplaysRow {
    std::string name;
    X11Strut strut;
    std::vector<Rect> areas;

    friend void PrintTo(const SeveralDisplaysRow& row, std::ostream* out) { *out << row.name; }
};

/// The tall one on the left, the short one on the right: 3200 by 1080 together.
class X11ShorterDisplayWorkAreaTest : public testing::TestWithParam<SeveralDisplaysRow> {
protected:
    const std::vector<X11Monitor> monitors{{1, "tall", {0, 0, 1920, 1080}, true},
                                           {2, "short", {1920, 0, 1280, 800}, false}};
};

TEST_P(X11ShorterDisplayWorkAreaTest, IsCutOnlyWhereThePanelIs) {
    const std::vector struts{GetParam().strut};

    EXPECT_EQ(workArea(monitors[0], monitors, struts), GetParam().areas[0]);
    EXPECT_EQ(workArea(monitors[1], monitors, struts), GetParam().areas[1]);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11ShorterDisplayWorkAreaTest,
    testing::Values(SeveralDisplaysRow{"BottomOfTheShortOne",
                                       {Edge::bottom, {1920, 770, 1280, 310}, {1920, 770, 1280, 30}},
                                       {{0, 0, 1920, 1080}, {1920, 0, 1280, 770}}},
                    SeveralDisplaysRow{"BottomOfTheShortOneReservedAlongTheWholeRoot",
                                       {Edge::bottom, {0, 770, 3200, 310}, {1920, 770, 1280, 30}},
                                       {{0, 0, 1920, 1080}, {1920, 0, 1280, 770}}},
                    SeveralDisplaysRow{"BottomOfTheTallOneReservedAlongTheWholeRoot",
                                       {Edge::bottom, {0, 1040, 3200, 40}, {0, 1040, 1920, 40}},
                                       {{0, 0, 1920, 1040}, {1920, 0, 1280, 800}}},
                    SeveralDisplaysRow{"TopOfTheTallOneReservedAlongTheWholeRoot",
                                       {Edge::top, {0, 0, 3200, 25}, {0, 0, 1920, 25}},
                                       {{0, 25, 1920, 1055}, {1920, 0, 1280, 800}}},
                    SeveralDisplaysRow{"TopOfBoth",
                                       {Edge::top, {0, 0, 3200, 25}, {0, 0, 3200, 25}},
                                       {{0, 25, 1920, 1055}, {1920, 25, 1280, 775}}},
                    SeveralDisplaysRow{"LeftOfTheShortOne",
                                       {Edge::left, {0, 0, 1980, 800}, {1920, 0, 60, 800}},
                                       {{0, 0, 1920, 1080}, {1980, 0, 1220, 800}}},
                    SeveralDisplaysRow{"RightOfTheTallOne",
                                       {Edge::right, {1870, 0, 1330, 1080}, {1870, 0, 50, 1080}},
                                       {{0, 0, 1870, 1080}, {1920, 0, 1280, 800}}},
                    SeveralDisplaysRow{"HiddenBelowTheTallOne",
                                       {Edge::bottom, {0, 1040, 1920, 40}, {0, 1080, 1920, 40}},
                                       {{0, 0, 1920, 1040}, {1920, 0, 1280, 800}}}),
    [](const auto& each) { return each.param.name; });

/// The primary one on the right and below, one to its left and one above it.
class X11DisplaysAboveAndLeftWorkAreaTest : public testing::TestWithParam<SeveralDisplaysRow> {
protected:
    const std::vector<X11Monitor> monitors{{1, "primary", {1280, 480, 1920, 1080}, true},
                                           {2, "left", {0, 500, 1280, 800}, false},
                                           {3, "above", {1280, 0, 1600, 480}, false}};
};

TEST_P(X11DisplaysAboveAndLeftWorkAreaTest, IsCutOnlyWhereThePanelIs) {
    const std::vector struts{GetParam().strut};

    EXPECT_EQ(workArea(monitors[0], monitors, struts), GetParam().areas[0]);
    EXPECT_EQ(workArea(monitors[1], monitors, struts), GetParam().areas[1]);
    EXPECT_EQ(workArea(monitors[2], monitors, struts), GetParam().areas[2]);
}

constexpr Rect wholePrimary{1280, 480, 1920, 1080};
constexpr Rect wholeLeft{0, 500, 1280, 800};
constexpr Rect wholeAbove{1280, 0, 1600, 480};

INSTANTIATE_TEST_SUITE_P(
    Table, X11DisplaysAboveAndLeftWorkAreaTest,
    testing::Values(SeveralDisplaysRow{"BottomOfThePrimary",
                                       {Edge::bottom, {1280, 1520, 1920, 40}, {1280, 1520, 1920, 40}},
                                       {{1280, 480, 1920, 1040}, wholeLeft, wholeAbove}},
                    SeveralDisplaysRow{"LeftOfTheLeftOne",
                                       {Edge::left, {0, 500, 60, 800}, {0, 500, 60, 800}},
                                       {wholePrimary, {60, 500, 1220, 800}, wholeAbove}},
                    SeveralDisplaysRow{"TopOfTheOneAbove",
                                       {Edge::top, {1280, 0, 1600, 30}, {1280, 0, 1600, 30}},
                                       {wholePrimary, wholeLeft, {1280, 30, 1600, 450}}},
                    SeveralDisplaysRow{"TopOfThePrimaryUnderTheOneAbove",
                                       {Edge::top, {1280, 0, 1920, 510}, {1280, 480, 1920, 30}},
                                       {{1280, 510, 1920, 1050}, wholeLeft, wholeAbove}},
                    SeveralDisplaysRow{"LeftOfThePrimaryBesideTheLeftOne",
                                       {Edge::left, {0, 480, 1330, 1080}, {1280, 480, 50, 1080}},
                                       {{1330, 480, 1870, 1080}, wholeLeft, wholeAbove}},
                    SeveralDisplaysRow{"BottomOfTheLeftOneWithNothingBelow",
                                       {Edge::bottom, {0, 1260, 1280, 300}, {0, 1260, 1280, 40}},
                                       {wholePrimary, {0, 500, 1280, 760}, wholeAbove}}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand

#include "desktop/x11/X11DisplayTest.h"

#include <array>
#include <ostream>

namespace velmorand::desktop {
namespace {

/// One display that is the whole root window.
class X11WorkAreaTest : public X11DisplayTest {
protected:
    static constexpr PixelRect whole{0, 0, 1280, 800};

    void SetUp() override { openDisplays({{"main", whole, true}}); }
};

/// How a panel says what it reserves.
enum class StrutKind { partial, whole, both };

/// A panel along one edge of the only display, and what it leaves of it.
struct EdgeRow {
    std::string name;
    RootEdge edge;
    PixelRect panel;
    PixelRect area;

    friend void PrintTo(const EdgeRow& row, std::ostream* out) { *out << row.name; }
};

class X11PanelEdgeTest : public X11WorkAreaTest, public testing::WithParamInterface<std::tuple<EdgeRow, StrutKind>> {};

TEST_P(X11PanelEdgeTest, ThePanelIsLeftOutOfTheWorkArea) {
    const auto& [row, kind] = GetParam();
    TestPanel panel{.frame = row.panel};
    if (kind != StrutKind::whole) panel.partialStrut = partialStrut(row.edge, row.panel, whole);
    if (kind != StrutKind::partial) panel.strut = wholeStrut(row.edge, row.panel, whole);

    openPanel(panel);

    EXPECT_EQ(workArea("main"), row.area);
}

std::string nameOfRow(const testing::TestParamInfo<std::tuple<EdgeRow, StrutKind>>& info) {
    constexpr std::array kinds{"ByPartialStrut", "ByStrut", "ByBoth"};
    return std::get<0>(info.param).name + kinds.at(static_cast<std::size_t>(std::get<1>(info.param)));
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11PanelEdgeTest,
    testing::Combine(testing::Values(EdgeRow{"Left", RootEdge::left, {0, 0, 60, 800}, {60, 0, 1220, 800}},
                                     EdgeRow{"Right", RootEdge::right, {1232, 0, 48, 800}, {0, 0, 1232, 800}},
                                     EdgeRow{"Top", RootEdge::top, {0, 0, 1280, 27}, {0, 27, 1280, 773}},
                                     EdgeRow{"Bottom", RootEdge::bottom, {240, 761, 800, 39}, {0, 0, 1280, 761}}),
                     testing::Values(StrutKind::partial, StrutKind::whole, StrutKind::both)),
    nameOfRow);

TEST_F(X11WorkAreaTest, IsTheWholeDisplayWithoutAPanel) {

    EXPECT_EQ(workArea("main"), whole);
}

TEST_F(X11WorkAreaTest, LeavesOutPanelsOnAllEdges) {
    openPanel(RootEdge::left, {0, 24, 50, 740}, "Left");
    openPanel(RootEdge::right, {1240, 24, 40, 740}, "Right");
    openPanel(RootEdge::top, {0, 0, 1280, 24}, "Top");
    openPanel(RootEdge::bottom, {0, 764, 1280, 36}, "Bottom");

    EXPECT_EQ(workArea("main"), (PixelRect{50, 24, 1190, 740}));
}

TEST_F(X11WorkAreaTest, LeavesOutTheThickerOfTwoPanelsSideBySide) {
    openPanel(RootEdge::bottom, {0, 770, 640, 30}, "Thin");
    openPanel(RootEdge::bottom, {640, 755, 640, 45}, "Thick");

    EXPECT_EQ(workArea("main"), (PixelRect{0, 0, 1280, 755}));
}

TEST_F(X11WorkAreaTest, LeavesOutBothOfTwoPanelsInARowAtOneEdge) {
    openPanel(RootEdge::top, {0, 0, 1280, 24}, "First");
    openPanel(RootEdge::top, {0, 24, 1280, 30}, "Second");

    EXPECT_EQ(workArea("main"), (PixelRect{0, 54, 1280, 746}));
}

TEST_F(X11WorkAreaTest, IsNotCutByAPanelThatReservesNothing) {
    openPanel({.frame = {0, 0, 1280, 24}});

    EXPECT_EQ(workArea("main"), whole);
}

TEST_F(X11WorkAreaTest, IsNotCutByAReservationThatIsNotTrue) {
    openPanel({.frame = {0, 0, 1280, 24}, .partialStrut = partialStrut(RootEdge::top, {0, 0, 1280, 700}, whole)});

    EXPECT_EQ(workArea("main"), whole);
}

/// A panel program as people use it.
class X11RealPanelTest : public X11DisplayTest, public testing::WithParamInterface<PanelEdge> {
protected:
    static constexpr PixelRect left{0, 100, 1024, 768};
    static constexpr PixelRect primary{1024, 0, 1280, 800};
};

TEST_P(X11RealPanelTest, IsLeftOutOfThePrimaryDisplayAlone) {
    open({.monitors = {{"left", left, false}, {"primary", primary, true}},
          .panel = PanelOptions{.edge = GetParam(), .height = 40}});

    const bool isOnTop = GetParam() == PanelEdge::top;
    EXPECT_EQ(workArea("primary"), (PixelRect{1024, isOnTop ? 40 : 0, 1280, 760}));
    EXPECT_EQ(workArea("left"), left);
}

INSTANTIATE_TEST_SUITE_P(Table, X11RealPanelTest, testing::Values(PanelEdge::top, PanelEdge::bottom),
                         [](const auto& each) { return each.param == PanelEdge::top ? "AtTheTop" : "AtTheBottom"; });

/// Panels on sides of displays where another display continues the desktop: what they reserve runs across that one.
struct InnerRow {
    std::string name;
    RootEdge edge;
    PixelRect panel;
    std::vector<PixelRect> areas;
    bool alongTheWholeEdge = false;

    friend void PrintTo(const InnerRow& row, std::ostream* out) { *out << row.name; }
};

constexpr PixelRect upper{0, 0, 1200, 700};
constexpr PixelRect lower{0, 700, 1200, 800};
constexpr PixelRect right{1200, 300, 1000, 900};

class X11InnerPanelTest : public X11DisplayTest, public testing::WithParamInterface<InnerRow> {};

TEST_P(X11InnerPanelTest, CutsTheDisplayThatItIsOnAndNoOther) {
    const InnerRow& row = GetParam();
    openDisplays({{"upper", upper, false}, {"lower", lower, true}, {"right", right, false}});

    openPanel({.frame = row.panel,
               .partialStrut =
                   row.alongTheWholeEdge ? std::vector<std::uint32_t>{} : partialStrut(row.edge, row.panel, root()),
               .strut = wholeStrut(row.edge, row.panel, root())});

    EXPECT_EQ(workAreas(), row.areas);
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11InnerPanelTest,
    testing::Values(
        InnerRow{"TopOfTheLowerOne", RootEdge::top, {0, 700, 1200, 30}, {upper, {0, 730, 1200, 770}, right}},
        InnerRow{"BottomOfTheUpperOne", RootEdge::bottom, {0, 664, 1200, 36}, {{0, 0, 1200, 664}, lower, right}},
        InnerRow{"LeftOfTheRightOne", RootEdge::left, {1200, 300, 60, 900}, {upper, lower, {1260, 300, 940, 900}}},
        InnerRow{"RightOfTheLowerOne", RootEdge::right, {1150, 700, 50, 800}, {upper, {0, 700, 1150, 800}, right}},
        InnerRow{"RightOfTheUpperOneAlongAPartOfTheOther",
                 RootEdge::right,
                 {1160, 0, 40, 700},
                 {{0, 0, 1160, 700}, lower, right}},
        InnerRow{"TopOfTheRightOneWithNothingAbove",
                 RootEdge::top,
                 {1200, 300, 1000, 25},
                 {upper, lower, {1200, 325, 1000, 875}}},
        InnerRow{"BottomOfTheRightOneWithNothingBelow",
                 RootEdge::bottom,
                 {1200, 1160, 1000, 40},
                 {upper, lower, {1200, 300, 1000, 860}}},
        InnerRow{"TopOfTheLowerOneReservedAlongTheWholeEdge",
                 RootEdge::top,
                 {0, 700, 1200, 30},
                 {upper, {0, 730, 1200, 770}, right},
                 true},
        InnerRow{"BottomOfTheRightOneReservedAlongTheWholeEdge",
                 RootEdge::bottom,
                 {1200, 1160, 1000, 40},
                 {upper, lower, {1200, 300, 1000, 860}},
                 true}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand::desktop

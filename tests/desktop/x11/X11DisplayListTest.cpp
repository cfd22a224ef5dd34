#include "desktop/x11/X11DisplayTest.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <xcb/randr.h>

#include <ostream>

namespace velmorand {

void PrintTo(const DisplayDescription& display, std::ostream* out) {
    *out << display.localizedName << ' ' << describe(display.frame) << " free " << describe(display.visibleFrame);
}

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::SizeIs;

/// The primary display on the right and below, one to its left and one above it, all of different sizes.
constexpr PixelRect primary{1024, 600, 1280, 800};
constexpr PixelRect left{0, 700, 1024, 768};
constexpr PixelRect above{1024, 0, 1600, 600};

auto named(std::string_view name) {
    return Field("localizedName", &DisplayDescription::localizedName, std::string(name));
}

class X11DisplayListTest : public X11DisplayTest {
protected:
    void SetUp() override {
        openDisplays({{"left", left, false}, {"above", above, false}, {"primary", primary, true}});
    }

    void setMonitors(const std::vector<Monitor>& monitors) {
        const auto set = desktop().setMonitors(monitors);
        ASSERT_TRUE(set) << set.error();
    }

    [[nodiscard]] std::vector<DisplayDescription> displays() { return windowSystem().displays(); }
};

TEST_F(X11DisplayListTest, IsMeasuredFromTheBottomLeftCornerOfThePrimaryDisplay) {
    const auto list = displays();

    ASSERT_THAT(list, ElementsAre(named("primary"), named("left"), named("above")));
    EXPECT_EQ(list[0].frame, (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(list[1].frame, (Rect{-1024, -68, 1024, 768}));
    EXPECT_EQ(list[2].frame, (Rect{0, 800, 1600, 600}));
}

TEST_F(X11DisplayListTest, TellsWhatPanelsLeaveOfEachDisplay) {
    openPanel(RootEdge::bottom, {1024, 1360, 1280, 40}, "Below");
    openPanel(RootEdge::left, {0, 700, 60, 768}, "Left");
    openPanel(RootEdge::top, {1024, 0, 1600, 25}, "Above");

    const auto list = displays();

    ASSERT_THAT(list, ElementsAre(named("primary"), named("left"), named("above")));
    EXPECT_EQ(list[0].visibleFrame, (Rect{0, 40, 1280, 760}));
    EXPECT_EQ(list[1].visibleFrame, (Rect{-964, -68, 964, 768}));
    EXPECT_EQ(list[2].visibleFrame, (Rect{0, 800, 1600, 575}));
}

TEST_F(X11DisplayListTest, NumbersDisplaysDifferently) {
    const auto list = displays();

    ASSERT_THAT(list, SizeIs(3));
    EXPECT_NE(list[0].number, list[1].number);
    EXPECT_NE(list[1].number, list[2].number);
    EXPECT_NE(list[0].number, list[2].number);
}

TEST_F(X11DisplayListTest, KeepsTheNumberOfADisplayThatMoves) {
    const auto before = displays();
    setMonitors({{"left", {0, 0, 1024, 768}, false}, {"primary", primary, true}});

    const auto after = displays();

    ASSERT_THAT(after, ElementsAre(named("primary"), named("left")));
    EXPECT_EQ(after[0].number, before[0].number);
    EXPECT_EQ(after[1].number, before[1].number);
}

TEST_F(X11DisplayListTest, HasNoSecondDisplayForTheSameArea) {
    setMonitors({{"mirror", primary, false}, {"primary", primary, true}, {"left", left, false}});

    EXPECT_THAT(displays(), ElementsAre(named("primary"), named("left")));
    expectTold(1);
}

TEST_F(X11DisplayListTest, FollowsADisplayThatIsPluggedOutAndInAgain) {
    setMonitors({{"above", above, false}, {"primary", primary, true}});

    EXPECT_THAT(displays(), ElementsAre(named("primary"), named("above")));
    expectTold(1);

    setMonitors({{"left", left, false}, {"above", above, false}, {"primary", primary, true}});

    EXPECT_THAT(displays(), ElementsAre(named("primary"), named("left"), named("above")));
    expectTold(1);
}

TEST_F(X11DisplayListTest, FollowsADisplayThatMoves) {
    setMonitors({{"left", {0, 600, 1024, 768}, false}, {"above", above, false}, {"primary", primary, true}});

    const auto list = displays();

    ASSERT_THAT(list, ElementsAre(named("primary"), named("left"), named("above")));
    EXPECT_EQ(list[1].frame, (Rect{-1024, 32, 1024, 768}));
    expectTold(1);
}

TEST_F(X11DisplayListTest, IsMeasuredFromAnotherDisplayWhenThatBecomesPrimary) {
    setMonitors({{"left", left, true}, {"above", above, false}, {"primary", primary, false}});

    const auto list = displays();

    ASSERT_THAT(list, ElementsAre(named("left"), named("above"), named("primary")));
    EXPECT_EQ(list[0].frame, (Rect{0, 0, 1024, 768}));
    EXPECT_EQ(list[1].frame, (Rect{1024, 868, 1600, 600}));
    EXPECT_EQ(list[2].frame, (Rect{1024, 68, 1280, 800}));
    expectTold(1);
}

TEST_F(X11DisplayListTest, IsNotToldOfWhenTheSameDisplaysAreSetAgain) {
    setMonitors({{"left", left, false}, {"above", above, false}, {"primary", primary, true}});

    expectTold(0);
}

/// Displays of which each is an output of its own, as on a real machine.
class X11RootSizeTest : public X11DisplayTest {
protected:
    void SetUp() override {
        open({.windowManager = {.kind = WindowManagerKind::xfwm4},
              .monitors = {{"left", {0, 0, 1024, 868}, false}, {"primary", {1024, 0, 1280, 800}, true}}});
    }

    void setRootSize(int width, int height) {
        XConnection& connection = observer().connection();
        const auto cookie = xcb_randr_set_screen_size_checked(
            connection.raw(), connection.root(), static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height),
            static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
        const XReply<xcb_generic_error_t> error(xcb_request_check(connection.raw(), cookie));
        ASSERT_FALSE(error);
    }
};

TEST_F(X11RootSizeTest, PanelsAreMeasuredFromTheEdgesOfTheRootWindowAsItIsNow) {
    const PixelRect frame{1024, 760, 1280, 40};
    const xcb_window_t panel = openPanel(RootEdge::bottom, frame);
    ASSERT_EQ(workArea("primary"), (PixelRect{1024, 0, 1280, 760}));

    setRootSize(2304, 1068);

    EXPECT_EQ(workArea("primary"), (PixelRect{1024, 0, 1280, 800}));
    anyClient().setNumbers(panel, "_NET_WM_STRUT_PARTIAL", "CARDINAL",
                           partialStrut(RootEdge::bottom, frame, {0, 0, 2304, 1068}));
    EXPECT_EQ(workArea("primary"), (PixelRect{1024, 0, 1280, 760}));
}

/// A window's frame in the accessibility space and the same in root coordinates.
struct PlaceRow {
    std::string name;
    Rect frame;
    PixelRect inRoot;

    friend void PrintTo(const PlaceRow& row, std::ostream* out) { *out << row.name; }
};

class X11PlaceOnDisplayTest : public X11DisplayListTest, public testing::WithParamInterface<PlaceRow> {};

TEST_P(X11PlaceOnDisplayTest, PutsAWindowExactlyThere) {
    const xcb_window_t window = openWindow({.title = "Placed"});

    const auto placed = windowSystem().setFrame(focusedWindow(), GetParam().frame, soon());

    EXPECT_EQ(placed, GetParam().frame);
    EXPECT_EQ(observer().visibleFrame(window), GetParam().inRoot);
    const auto attributes = windowSystem().attributes(focusedWindow(), Reading::atOnce, soon());
    ASSERT_TRUE(attributes);
    EXPECT_EQ(attributes->frame, GetParam().frame);
}

INSTANTIATE_TEST_SUITE_P(Table, X11PlaceOnDisplayTest,
                         testing::Values(PlaceRow{"PartOfThePrimary", {320, 0, 640, 800}, {1344, 600, 640, 800}},
                                         PlaceRow{"AllOfThePrimary", {0, 0, 1280, 800}, primary},
                                         PlaceRow{"PartOfTheLeftOne", {-512, 100, 512, 768}, {512, 700, 512, 768}},
                                         PlaceRow{"AllOfTheLeftOne", {-1024, 100, 1024, 768}, left},
                                         PlaceRow{"CornerOfTheOneAbove", {1067, -300, 533, 300}, {2091, 300, 533, 300}},
                                         PlaceRow{"AllOfTheOneAbove", {0, -600, 1600, 600}, above}),
                         [](const auto& each) { return each.param.name; });

TEST_F(X11DisplayListTest, PlacesWindowsFromTheNewPrimaryDisplayAtOnce) {
    const xcb_window_t window = openWindow({.title = "Placed"});
    const WindowID id = focusedWindow();
    setMonitors({{"left", left, true}, {"above", above, false}, {"primary", primary, false}});

    EXPECT_EQ(windowSystem().setFrame(id, {0, 0, 512, 768}, soon()), (Rect{0, 0, 512, 768}));

    EXPECT_EQ(observer().visibleFrame(window), (PixelRect{0, 700, 512, 768}));
}

}  // namespace
}  // namespace desktop
}  // namespace velmorand

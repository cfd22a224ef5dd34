#include "desktop/x11/X11DisplayTest.h"

#include <array>

namespace velmorand::desktop {
namespace {

constexpr PixelRect primary{0, 0, 1280, 800};
constexpr PixelRect right{1280, 0, 1024, 800};
constexpr PixelRect panelFrame{0, 760, 1280, 40};
constexpr PixelRect besidePanel{0, 0, 1280, 760};
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

/// Panels that come, change and go while the platform looks on.
class X11PanelChangeTest : public X11DisplayTest {
protected:
    void SetUp() override { openDisplays({{"primary", primary, true}, {"right", right, false}}); }

    [[nodiscard]] TestPanel bottomPanel(std::optional<std::uint32_t> desktop) const {
        return {.frame = panelFrame,
                .partialStrut = partialStrut(RootEdge::bottom, panelFrame, root()),
                .desktop = desktop};
    }

    void reserve(xcb_window_t panel, const std::vector<std::uint32_t>& strut) {
        anyClient().setNumbers(panel, "_NET_WM_STRUT_PARTIAL", "CARDINAL", strut);
    }

    void sendToDesktop(xcb_window_t window, std::uint32_t number) {
        observer().connection().sendToWindowManager(window, "_NET_WM_DESKTOP", {number, 2});
        EXPECT_TRUE(observer().waitUntil([&] {
            return observer().connection().numbers(window, "_NET_WM_DESKTOP") == std::vector<std::uint32_t>{number};
        }));
    }

    void setMapped(xcb_window_t window, bool isMapped) {
        XConnection& connection = observer().connection();
        if (isMapped) {
            xcb_map_window(connection.raw(), window);
        } else {
            xcb_unmap_window(connection.raw(), window);
        }
        EXPECT_TRUE(observer().waitUntil([&] { return observer().isViewable(window) == isMapped; }));
    }

    void moveTo(xcb_window_t window, const PixelRect& frame) {
        XConnection& connection = observer().connection();
        const std::array values{static_cast<std::uint32_t>(frame.x), static_cast<std::uint32_t>(frame.y)};
        xcb_configure_window(connection.raw(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
        EXPECT_TRUE(observer().waitUntil([&] { return observer().clientRect(window) == frame; }));
    }
};

TEST_F(X11PanelChangeTest, APanelThatComesAndGoesIsToldOfOnceEachTime) {
    const xcb_window_t panel = openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);
    EXPECT_EQ(workArea("primary"), besidePanel);

    closeLastClient(panel);

    expectTold(1);
    EXPECT_EQ(workArea("primary"), primary);
}

TEST_F(X11PanelChangeTest, AnotherReservationIsToldOfOnce) {
    const xcb_window_t panel = openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);

    reserve(panel, partialStrut(RootEdge::bottom, {0, 730, 1280, 70}, root()));

    expectTold(1);
    EXPECT_EQ(workArea("primary"), (PixelRect{0, 0, 1280, 730}));
}

TEST_F(X11PanelChangeTest, AReservationThatIsTakenBackIsToldOfOnce) {
    const xcb_window_t panel = openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);

    anyClient().deleteProperty(panel, "_NET_WM_STRUT_PARTIAL");

    expectTold(1);
    EXPECT_EQ(workArea("primary"), primary);
}

TEST_F(X11PanelChangeTest, TheSameReservationWrittenAgainIsNotToldOf) {
    const xcb_window_t panel = openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);

    reserve(panel, partialStrut(RootEdge::bottom, panelFrame, root()));

    expectTold(0);
}

TEST_F(X11PanelChangeTest, APanelThatOnlyReservesWhatAnotherDoesIsNotToldOf) {
    openPanel(RootEdge::bottom, panelFrame, "First");
    expectTold(1);

    openPanel(RootEdge::bottom, {0, 770, 640, 30}, "Second");

    expectTold(0);
}

TEST_F(X11PanelChangeTest, AnOrdinaryWindowIsNotToldOf) {
    ASSERT_NE(openWindow({.title = "Ordinary"}), xcb_window_t{XCB_WINDOW_NONE});

    expectTold(0);
}

TEST_F(X11PanelChangeTest, APanelThatHidesAndShowsItselfIsToldOfOnceEachTime) {
    const xcb_window_t panel = openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);

    setMapped(panel, false);
    EXPECT_EQ(workArea("primary"), primary);
    expectTold(1);

    setMapped(panel, true);
    expectTold(1);
    EXPECT_EQ(workArea("primary"), besidePanel);
}

TEST_F(X11PanelChangeTest, APanelThatMovesToAnotherDisplayIsToldOfOnce) {
    const PixelRect onPrimary{0, 0, 1024, 30};
    const PixelRect onRight{1280, 0, 1024, 30};
    const xcb_window_t panel = openPanel({.frame = onPrimary, .strut = wholeStrut(RootEdge::top, onPrimary, root())});
    expectTold(1);
    ASSERT_EQ(workAreas(), (std::vector{PixelRect{0, 30, 1280, 770}, right}));

    moveTo(panel, onRight);

    EXPECT_EQ(workAreas(), (std::vector{primary, PixelRect{1280, 30, 1024, 770}}));
    expectTold(1);
}

TEST_F(X11PanelChangeTest, APanelOnAnotherDesktopCountsThereAlone) {
    openPanel(bottomPanel(0));
    expectTold(1);
    ASSERT_EQ(workArea("primary"), besidePanel);

    switchToDesktop(1);
    EXPECT_EQ(workArea("primary"), primary);
    expectTold(1);

    switchToDesktop(0);
    expectTold(1);
    EXPECT_EQ(workArea("primary"), besidePanel);
}

TEST_F(X11PanelChangeTest, APanelOnAllDesktopsCountsOnEach) {
    openPanel(bottomPanel(allDesktops));
    expectTold(1);

    switchToDesktop(1);

    expectTold(0);
    EXPECT_EQ(workArea("primary"), besidePanel);
}

TEST_F(X11PanelChangeTest, APanelThatIsSentToAnotherDesktopIsToldOfOnceEachTime) {
    const xcb_window_t panel = openPanel(bottomPanel(0));
    expectTold(1);

    sendToDesktop(panel, 1);
    EXPECT_EQ(workArea("primary"), primary);
    expectTold(1);

    sendToDesktop(panel, allDesktops);
    expectTold(1);
    EXPECT_EQ(workArea("primary"), besidePanel);
}

/// Panels that their window manager does not list.
class X11UnlistedPanelTest : public X11PanelChangeTest {
protected:
    /// A window that the window manager leaves alone, in \p parent or, without one, in the root window.
    xcb_window_t create(const PixelRect& frame, xcb_window_t parent = XCB_WINDOW_NONE) {
        XConnection& connection = observer().connection();
        const xcb_window_t window = xcb_generate_id(connection.raw());
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window,
                          parent == XCB_WINDOW_NONE ? connection.root() : parent, static_cast<std::int16_t>(frame.x),
                          static_cast<std::int16_t>(frame.y), static_cast<std::uint16_t>(frame.width),
                          static_cast<std::uint16_t>(frame.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        xcb_map_window(connection.raw(), window);
        connection.synchronise();
        return window;
    }
};

TEST_F(X11UnlistedPanelTest, CountsWhereItStandsByItself) {
    reserve(create(panelFrame), partialStrut(RootEdge::bottom, panelFrame, root()));

    EXPECT_EQ(workArea("primary"), besidePanel);
}

TEST_F(X11UnlistedPanelTest, CountsWithinAFrameOfItsWindowManager) {
    const xcb_window_t frame = create(panelFrame);
    reserve(create({0, 0, panelFrame.width, panelFrame.height}, frame),
            partialStrut(RootEdge::bottom, panelFrame, root()));

    EXPECT_EQ(workArea("primary"), besidePanel);
}

TEST_F(X11UnlistedPanelTest, IsToldOfWhenItChangesOrGoesOnceItIsKnown) {
    const xcb_window_t panel = create(panelFrame);
    reserve(panel, partialStrut(RootEdge::bottom, panelFrame, root()));
    ASSERT_EQ(workArea("primary"), besidePanel);

    reserve(panel, partialStrut(RootEdge::bottom, {0, 730, 1280, 70}, root()));
    expectTold(1);

    anyClient().destroyWindow(panel);
    expectTold(1);
    EXPECT_EQ(workArea("primary"), primary);
}

TEST_F(X11UnlistedPanelTest, CountsOnTheDesktopThatItNamesAlone) {
    const xcb_window_t panel = create(panelFrame);
    reserve(panel, partialStrut(RootEdge::bottom, panelFrame, root()));
    ASSERT_EQ(workArea("primary"), besidePanel);

    anyClient().setNumbers(panel, "_NET_WM_DESKTOP", "CARDINAL", std::array<std::uint32_t, 1>{1});
    EXPECT_EQ(workArea("primary"), primary);
    anyClient().setNumbers(panel, "_NET_WM_DESKTOP", "CARDINAL", std::array{allDesktops});

    expectTold(1);
    EXPECT_EQ(workArea("primary"), besidePanel);
}

/// A server that does not answer for longer than a call may take: another client has it for itself.
TEST_F(X11PanelChangeTest, PanelsStayWhereTheyWereWhileTheServerDoesNotAnswer) {
    openPanel(RootEdge::bottom, panelFrame);
    expectTold(1);
    const auto before = windowSystem().displays();
    XConnection& other = observer().connection();
    xcb_grab_server(other.raw());
    other.synchronise();

    const auto during = windowSystem().displays();

    xcb_ungrab_server(other.raw());
    other.synchronise();
    EXPECT_EQ(during, before);
}

}  // namespace
}  // namespace velmorand::desktop

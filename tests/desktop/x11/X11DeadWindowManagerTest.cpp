#include "desktop/x11/X11DisplayTest.h"
#include "support/Printing.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

namespace velmorand::desktop {
namespace {

using testing::Contains;
using testing::Field;

constexpr PixelRect display{0, 0, 1280, 800};
constexpr PixelRect bottom{0, 760, 1280, 40};
constexpr PixelRect top{0, 0, 1280, 25};

/// A window manager that ends without cleaning up: what it wrote about the desktop stays on the root window.
class X11DeadWindowManagerTest : public X11DisplayTest {
protected:
    void SetUp() override {
        openDisplays({{"main", display, true}});
        window = openWindow({.title = "Ordinary"});
        id = focusedWindow();
    }

    void killWindowManager() {
        desktop().windowManager()->sendSignal(SIGKILL);
        ASSERT_TRUE(observer().waitUntil([&] { return !observer().windowManagerName(); }));
        for (const auto* property : {"_NET_WORKAREA", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING",
                                     "_NET_ACTIVE_WINDOW", "_NET_SUPPORTING_WM_CHECK", "_NET_CURRENT_DESKTOP"})
            ASSERT_FALSE(onRoot(property).empty()) << property << " is not left behind, so the test would see nothing";
    }

    void startFluxbox() {
        const auto started = desktop().replaceWindowManager({.kind = WindowManagerKind::fluxbox});
        ASSERT_TRUE(started) << started.error();
    }

    [[nodiscard]] std::vector<std::uint32_t> onRoot(std::string_view property) {
        return observer().connection().numbers(observer().connection().root(), property);
    }

    /// The numbers of the windows of the client started last.
    [[nodiscard]] std::vector<xcb_window_t> windowsOfLastClient() {
        std::vector<xcb_window_t> numbers;
        const auto windows = windowSystem().windows(lastClient().pid(), soon());
        EXPECT_TRUE(windows);
        if (windows) std::ranges::transform(*windows, std::back_inserter(numbers), &WindowID::number);
        return numbers;
    }

    xcb_window_t window = XCB_WINDOW_NONE;
    WindowID id;
};

TEST_F(X11DeadWindowManagerTest, TheSessionIsNotTrustedAndSaysWhy) {
    ASSERT_FALSE(windowSystem().missingForTrust(soon()));

    killWindowManager();

    const auto missing = windowSystem().missingForTrust(soon());
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->error, AXError::apiDisabled);
    EXPECT_EQ(missing->sentence, "No window manager that follows the desktop's conventions (EWMH) is running.");
}

TEST_F(X11DeadWindowManagerTest, NoWindowIsMoved) {
    killWindowManager();
    const auto before = observer().clientRect(window);

    EXPECT_EQ(windowSystem().checkMovable(id, soon()).error(), AXError::cannotComplete);
    EXPECT_EQ(windowSystem().setFrame(id, {0, 0, 640, 800}, soon()).error(), AXError::cannotComplete);

    EXPECT_EQ(observer().clientRect(window), before);
}

TEST_F(X11DeadWindowManagerTest, PanelsCountAsLongAsTheyLive) {
    openPanel(RootEdge::top, top, "Top");
    const xcb_window_t dying = openPanel(RootEdge::bottom, bottom, "Bottom");
    expectTold(1);
    killWindowManager();
    EXPECT_EQ(workArea("main"), (PixelRect{0, 25, 1280, 735}));

    closeLastClient(dying);

    ASSERT_THAT(onRoot("_NET_CLIENT_LIST"), Contains(dying));
    EXPECT_EQ(workArea("main"), (PixelRect{0, 25, 1280, 775}));
    expectTold(1);
}

TEST_F(X11DeadWindowManagerTest, APanelThatWasOnAnotherDesktopCountsAsItIsOnScreen) {
    const xcb_window_t panel =
        openPanel({.frame = bottom, .partialStrut = partialStrut(RootEdge::bottom, bottom, root()), .desktop = 0});
    switchToDesktop(1);
    ASSERT_EQ(workArea("main"), display);

    killWindowManager();

    ASSERT_TRUE(observer().waitUntil([&] { return observer().isViewable(panel); }));
    EXPECT_EQ(workArea("main"), (PixelRect{0, 0, 1280, 760}));
}

TEST_F(X11DeadWindowManagerTest, AnotherWindowManagerIsTrustedAndMovesWindows) {
    killWindowManager();
    ASSERT_TRUE(windowSystem().missingForTrust(soon()));

    startFluxbox();
    ASSERT_TRUE(pager().activate(window));

    EXPECT_FALSE(windowSystem().missingForTrust(soon()));
    EXPECT_EQ(windowSystem().setFrame(focusedWindow(), {640, 0, 640, 800}, soon()), (Rect{640, 0, 640, 800}));
    EXPECT_EQ(observer().visibleFrame(window), (PixelRect{640, 0, 640, 800}));
}

TEST_F(X11DeadWindowManagerTest, WindowsThatCameAndWentMeanwhileAreKnownUnderAnotherWindowManager) {
    killWindowManager();
    closeLastClient(window);
    startClient(plainWindow({.title = "New"}));
    startFluxbox();
    const auto added = observer().findWindow("New");
    ASSERT_TRUE(added) << added.error();
    ASSERT_TRUE(pager().activate(*added));

    EXPECT_EQ(windowsOfLastClient(), std::vector{*added});
    EXPECT_EQ(focusedWindow().number, *added);
    EXPECT_EQ(windowSystem().attributes(id, Reading::atOnce, soon()).error(), AXError::invalidElement);
}

TEST_F(X11DeadWindowManagerTest, PanelsAndDesktopsAreThoseOfTheNewWindowManager) {
    switchToDesktop(1);
    openPanel({.title = "Top", .frame = top, .partialStrut = partialStrut(RootEdge::top, top, root()), .desktop = 1});
    ASSERT_EQ(workArea("main"), (PixelRect{0, 25, 1280, 775}));
    killWindowManager();
    startFluxbox();
    openPanel(RootEdge::bottom, bottom, "Bottom");
    const auto current = onRoot("_NET_CURRENT_DESKTOP");
    ASSERT_FALSE(current.empty());

    switchToDesktop(current.front() == 2 ? 3 : 2);
    EXPECT_THAT(workArea("main"), Field("y", &PixelRect::y, 0));
    switchToDesktop(1);

    ASSERT_TRUE(observer().waitUntil([&] { return workArea("main") == PixelRect{0, 25, 1280, 735}; }));
}

}  // namespace
}  // namespace velmorand::desktop

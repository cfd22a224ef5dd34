#include "desktop/x11/X11Test.h"

namespace velmorand::desktop {
namespace {

/// Windows in a state other than normal.
class X11WindowStateTest : public X11Test, public testing::WithParamInterface<WindowManagerKind> {
protected:
    X11WindowStateTest() {
        open({.windowManager = {.kind = GetParam()}});
        number_ = openWindow({.title = "Window", .width = 400, .height = 300});
        window_ = focusedWindow();
    }

    void shade() {
        XConnection& client = observer().connection();
        client.sendToWindowManager(number_, "_NET_WM_STATE", {1, client.atom("_NET_WM_STATE_SHADED"), 0, 2, 0});
        ASSERT_TRUE(observer().waitUntil([this] { return states().shaded; }));
    }

    void expectLanding() {
        const auto settled = windowSystem().setFrame(window_, {40, 60, 700, 500}, soon());
        ASSERT_TRUE(settled) << settled.error().code;
        EXPECT_EQ(*settled, (Rect{40, 60, 700, 500}));
        EXPECT_EQ(observer().waitForSettledFrame(number_, PixelRect{40, 60, 700, 500}, 0),
                  (PixelRect{40, 60, 700, 500}));
    }

    [[nodiscard]] WindowStates states() { return observer().states(number_); }
    [[nodiscard]] xcb_window_t number() const { return number_; }
    [[nodiscard]] WindowID window() const { return window_; }

private:
    xcb_window_t number_ = XCB_WINDOW_NONE;
    WindowID window_;
};

TEST_P(X11WindowStateTest, AShadedWindowIsRolledDownAndPlaced) {
    shade();

    expectLanding();

    EXPECT_FALSE(states().shaded);
}

TEST_P(X11WindowStateTest, AWindowThatIsShadedAndMaximizedIsPlacedInNormalState) {
    ASSERT_TRUE(pager().maximize(number()));
    shade();

    expectLanding();

    EXPECT_FALSE(states().shaded || states().maximizedHorizontally || states().maximizedVertically);
}

TEST_P(X11WindowStateTest, AShadedWindowIsNotMinimized) {
    shade();

    const auto attributes = windowSystem().attributes(window(), Reading::settled, soon());

    ASSERT_TRUE(attributes);
    EXPECT_FALSE(attributes->minimized);
}

TEST_P(X11WindowStateTest, AWindowMaximizedInOneDirectionIsPlacedInNormalState) {
    ASSERT_TRUE(pager().maximizeVertically(number()));

    expectLanding();

    EXPECT_FALSE(states().maximizedHorizontally || states().maximizedVertically);
}

TEST_P(X11WindowStateTest, ASecondPlacementRightAfterTheFirstLandsToo) {
    ASSERT_TRUE(pager().maximize(number()));
    ASSERT_TRUE(windowSystem().setFrame(window(), {500, 300, 300, 400}, soon()));

    expectLanding();
}

INSTANTIATE_TEST_SUITE_P(On, X11WindowStateTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         [](const auto& each) { return std::string(nameOf(each.param)); });

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/harness/TestKeyboard.h"
#include "desktop/x11/X11Test.h"

namespace velmorand::desktop {
namespace {

/// Tiles of real window managers.
class X11TileTest : public X11Test {
protected:
    /// Opens a window under the window manager and remembers it.
    void openUnder(const WindowManagerOptions& windowManager) {
        open({.windowManager = windowManager});
        number_ = openWindow({.title = "Tiled", .width = 400, .height = 300});
        window_ = focusedWindow();
    }

    /// Where the window is once it has stopped there.
    PixelRect settledFrame(const std::function<bool(const PixelRect&)>& accepted) {
        return observer().waitForSettledFrame(number_, accepted).value_or(PixelRect{});
    }

    [[nodiscard]] WindowID window() const { return window_; }
    [[nodiscard]] xcb_window_t number() const { return number_; }

private:
    xcb_window_t number_ = XCB_WINDOW_NONE;
    WindowID window_;
};

TEST_F(X11TileTest, AWindowThatKwinKeepsInATileIsTakenOutOfIt) {
    openUnder({.kind = WindowManagerKind::kwin});
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard);
    // The tile is half of the screen. The service behind the keys may still be starting.
    const auto isTiled = [this] {
        const auto frame = observer().visibleFrame(number());
        return frame && frame->width == 640 && frame->height == 800;
    };
    ASSERT_TRUE(observer().waitUntil([&] {
        if (!isTiled()) keyboard->press({Key::leftSuper}, Key::left);
        return observer().waitUntil(isTiled, std::chrono::milliseconds(300));
    }));
    ASSERT_EQ(observer().states(number()).maximizedVertically, false);

    const auto settled = windowSystem().setFrame(window(), {700, 100, 500, 600}, soon());

    ASSERT_TRUE(settled);
    EXPECT_EQ(*settled, (Rect{700, 100, 500, 600}));
    EXPECT_EQ(observer().visibleFrame(number()), (PixelRect{700, 100, 500, 600}));
}

TEST_F(X11TileTest, AWindowOfATilingLayoutStaysAndIsReportedWhereItIs) {
    openUnder({.kind = WindowManagerKind::i3, .isTiling = true});
    const PixelRect whole = settledFrame([](const PixelRect& frame) { return frame.width == 1280; });

    const auto settled = windowSystem().setFrame(window(), {0, 0, 640, 800}, soon());

    ASSERT_TRUE(settled);
    EXPECT_EQ(*settled, (Rect{static_cast<double>(whole.x), static_cast<double>(whole.y),
                              static_cast<double>(whole.width), static_cast<double>(whole.height)}));
    EXPECT_EQ(observer().visibleFrame(number()), whole);
}

TEST_F(X11TileTest, AFloatingWindowBesideATilingLayoutIsPlacedWithItsTitleBar) {
    openUnder({.kind = WindowManagerKind::i3});

    const auto settled = windowSystem().setFrame(window(), {100, 80, 640, 500}, soon());

    ASSERT_TRUE(settled);
    EXPECT_EQ(*settled, (Rect{100, 80, 640, 500}));
    EXPECT_EQ(observer().visibleFrame(number()), (PixelRect{100, 80, 640, 500}));
    EXPECT_LT(observer().clientRect(number()).value_or(PixelRect{}).height, 500);
}

}  // namespace
}  // namespace velmorand::desktop

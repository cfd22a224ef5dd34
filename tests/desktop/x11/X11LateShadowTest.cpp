#include "desktop/harness/HostileClient.h"
#include "desktop/x11/X11Test.h"

#include <array>

namespace velmorand::desktop {
namespace {

/// A client that draws its own shadow and says so some time after its window was put back to normal. The test is the
/// client, so that it decides when.
class X11LateShadowTest : public X11Test {
protected:
    X11LateShadowTest() {
        open({.windowManager = {.kind = WindowManagerKind::none}});
        startPlainManager({});
        number_ = openWindow({.title = "Shadowy", .width = 300, .height = 200});
        window_ = focusedWindow();
        declareShadow(0);
    }

    void declareShadow(std::uint32_t width) {
        const std::array<std::uint32_t, 4> extents{width, width, width, width};
        HostileClient(observer().connection()).setNumbers(number_, "_GTK_FRAME_EXTENTS", "CARDINAL", extents);
    }

    /// As a client asks for a size of its own.
    void resizeAsClient(std::uint32_t width, std::uint32_t height) {
        const std::array<std::uint32_t, 2> size{width, height};
        xcb_configure_window(observer().connection().raw(), number_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size.data());
        observer().connection().synchronise();
        ASSERT_TRUE(observer().waitForWindowManager());
    }

    void maximize() {
        const auto maximized = pager().maximize(number_);
        ASSERT_TRUE(maximized) << maximized.error();
    }

    void place(const Rect& frame) { ASSERT_TRUE(windowSystem().setFrame(window_, frame, soon())); }

    [[nodiscard]] PixelRect visibleFrame() { return observer().visibleFrame(number_).value_or(PixelRect{}); }
    [[nodiscard]] PixelRect clientRect() { return observer().clientRect(number_).value_or(PixelRect{}); }

    /// Turns in which whatever has arrived is handled, and what that asked for has been done.
    void handleWhatHasArrived() {
        for (int turn = 0; turn < 3; ++turn) {
            runPosted();
            connection().flush();
            observer().connection().synchronise();
            ASSERT_TRUE(observer().waitForWindowManager());
        }
    }

    [[nodiscard]] xcb_window_t number() const { return number_; }

private:
    xcb_window_t number_ = XCB_WINDOW_NONE;
    WindowID window_;
};

constexpr Rect wanted{100, 50, 640, 400};
constexpr PixelRect wantedPixels{100, 50, 640, 400};

TEST_F(X11LateShadowTest, TheFrameIsAssertedAgainWhenTheShadowIsDeclared) {
    maximize();
    place(wanted);
    ASSERT_EQ(visibleFrame(), wantedPixels);

    declareShadow(20);

    EXPECT_TRUE(runUntil([this] { return visibleFrame() == wantedPixels; }));
    EXPECT_EQ(clientRect(), (PixelRect{80, 30, 680, 440}));
}

TEST_F(X11LateShadowTest, ItIsAssertedAgainOnlyOnce) {
    maximize();
    place(wanted);
    declareShadow(20);
    ASSERT_TRUE(runUntil([this] { return visibleFrame() == wantedPixels; }));
    const PixelRect placed = clientRect();

    declareShadow(30);
    handleWhatHasArrived();

    EXPECT_EQ(clientRect(), placed);
}

TEST_F(X11LateShadowTest, ADeclarationOfWhatIsKnownDoesNotUseItUp) {
    maximize();
    place(wanted);
    declareShadow(0);
    handleWhatHasArrived();

    declareShadow(20);

    EXPECT_TRUE(runUntil([this] { return visibleFrame() == wantedPixels; }));
}

TEST_F(X11LateShadowTest, TheLastRequestedFrameIsAsserted) {
    maximize();
    place(wanted);
    place({0, 0, 500, 800});

    declareShadow(20);

    EXPECT_TRUE(runUntil([this] { return visibleFrame() == (PixelRect{0, 0, 500, 800}); }));
}

TEST_F(X11LateShadowTest, TheFrameIsAssertedAgainWhenTheClientTakesTheSizeOfBefore) {
    maximize();
    place(wanted);

    resizeAsClient(300, 200);

    EXPECT_TRUE(runUntil([this] { return visibleFrame() == wantedPixels; }));
}

TEST_F(X11LateShadowTest, AClientThatInsistsOnItsSizeHasItsWay) {
    maximize();
    place(wanted);
    resizeAsClient(300, 200);
    ASSERT_TRUE(runUntil([this] { return visibleFrame() == wantedPixels; }));

    resizeAsClient(300, 200);
    handleWhatHasArrived();

    EXPECT_EQ(clientRect(), (PixelRect{100, 50, 300, 200}));
}

TEST_F(X11LateShadowTest, AWindowThatSomebodyPutsElsewhereStaysThere) {
    maximize();
    place(wanted);

    const auto moved = pager().place(number(), {300, 200, 300, 200});
    ASSERT_TRUE(moved) << moved.error();
    handleWhatHasArrived();

    EXPECT_EQ(clientRect(), (PixelRect{300, 200, 300, 200}));
}

TEST_F(X11LateShadowTest, AWindowThatSomebodyNudgesStaysThereWhenItsShadowIsToldAgain) {
    declareShadow(20);
    maximize();
    place(wanted);

    const auto moved = pager().place(number(), {110, 55, 640, 400}, 0);
    ASSERT_TRUE(moved) << moved.error();
    declareShadow(20);
    handleWhatHasArrived();

    EXPECT_EQ(visibleFrame(), (PixelRect{110, 55, 640, 400}));
}

TEST_F(X11LateShadowTest, AChangeOfShadowAloneMovesNothing) {
    place(wanted);
    const PixelRect placed = clientRect();

    declareShadow(20);
    handleWhatHasArrived();

    EXPECT_EQ(clientRect(), placed);
}

TEST_F(X11LateShadowTest, NothingIsAssertedOnceTheUserHasMaximizedTheWindowAgain) {
    maximize();
    place(wanted);
    const PixelRect placed = clientRect();
    maximize();

    declareShadow(20);
    handleWhatHasArrived();

    EXPECT_EQ(clientRect(), placed);
    EXPECT_TRUE(observer().states(number()).maximizedVertically);
}

TEST_F(X11LateShadowTest, AWindowThatIsGoneByThenIsForgotten) {
    maximize();
    place(wanted);

    declareShadow(20);
    HostileClient(observer().connection()).destroyWindow(number());
    handleWhatHasArrived();

    EXPECT_FALSE(connection().isLost());
}

}  // namespace
}  // namespace velmorand::desktop

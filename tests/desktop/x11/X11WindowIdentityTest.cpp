#include "desktop/x11/X11Test.h"

namespace velmorand::desktop {
namespace {

class X11WindowIdentityTest : public X11Test {
protected:
    /// Maps a window under this number, which may have belonged to another one before, and waits until it is active.
    void createWindow(XConnection& client, xcb_window_t number) {
        xcb_create_window(client.raw(), XCB_COPY_FROM_PARENT, number, client.root(), 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(client.raw(), number);
        client.synchronise();
        ASSERT_TRUE(observer().waitUntil([&] { return observer().isViewable(number); }));
        const auto active = pager().activate(number);
        ASSERT_TRUE(active) << active.error();
    }
};

TEST_F(X11WindowIdentityTest, ANumberThatTheServerGaveToAnotherWindowDoesNotStandForTheOldOne) {
    open();
    auto client = XConnection::open(desktop().displayName());
    ASSERT_TRUE(client);
    const xcb_window_t number = xcb_generate_id(client->raw());
    createWindow(*client, number);
    const WindowID old = focusedWindow();
    ASSERT_EQ(old.number, number);

    xcb_destroy_window(client->raw(), number);
    createWindow(*client, number);

    EXPECT_EQ(windowSystem().attributes(old, Reading::atOnce, soon()).error(), AXError::invalidElement);
    EXPECT_EQ(windowSystem().setFrame(old, {0, 0, 400, 400}, soon()).error(), AXError::invalidElement);
    const WindowID successor = focusedWindow();
    EXPECT_EQ(successor.number, number);
    EXPECT_NE(successor.serial, old.serial);
    EXPECT_TRUE(windowSystem().setFrame(successor, {0, 0, 400, 400}, soon()));
}

}  // namespace
}  // namespace velmorand::desktop

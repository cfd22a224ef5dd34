#include "desktop/harness/HostileClient.h"
#include "desktop/x11/X11Test.h"

#include <array>

namespace velmorand::desktop {
namespace {

/// Window managers that do not act on a request as they should.
class X11PlacementTest : public X11Test {
protected:
    X11PlacementTest() { open({.windowManager = {.kind = WindowManagerKind::none}}); }

    /// Opens a window under a window manager with these options.
    void openUnder(const std::vector<std::string>& managerOptions) {
        startPlainManager(managerOptions);
        number_ = openWindow({.title = "Window", .width = 300, .height = 200});
        window_ = focusedWindow();
        ASSERT_FALSE(
            windowSystem().missingForTrust(soon()));  // the window manager is known before requests are counted
    }

    /// Asks for the frame once and answers where the window then is, as another client sees it.
    PixelRect place(const PixelRect& frame) {
        const auto settled =
            windowSystem().setFrame(window_,
                                    {static_cast<double>(frame.x), static_cast<double>(frame.y),
                                     static_cast<double>(frame.width), static_cast<double>(frame.height)},
                                    soon());
        EXPECT_TRUE(settled) << "error " << settled.error().code;
        return observer().visibleFrame(number_).value_or(PixelRect{});
    }

    /// The same, and how many requests it took.
    std::pair<PixelRect, unsigned int> placeAndCount(const PixelRect& frame) {
        const unsigned int first = xcb_no_operation(connection().raw()).sequence;
        const PixelRect seen = place(frame);
        return {seen, xcb_no_operation(connection().raw()).sequence - first};
    }

    [[nodiscard]] WindowStates states() { return observer().states(number_); }
    [[nodiscard]] xcb_window_t number() const { return number_; }

private:
    xcb_window_t number_ = XCB_WINDOW_NONE;
    WindowID window_;
};

constexpr PixelRect first{100, 50, 640, 400};
constexpr PixelRect second{0, 0, 500, 800};

TEST_F(X11PlacementTest, OneThatDoesNotKnowTheMessageIsAskedAsAClientAsks) {
    openUnder({"--no-message"});

    EXPECT_EQ(place(first), first);
}

TEST_F(X11PlacementTest, OneThatIgnoresTheMessageIsAskedAsAClientAsks) {
    openUnder({"--ignore-message"});

    EXPECT_EQ(place(first), first);
    EXPECT_EQ(states(), WindowStates{});
}

TEST_F(X11PlacementTest, TheWayThatWorkedIsTakenAtOnceTheNextTime) {
    openUnder({"--ignore-message"});

    const auto [seen, requests] = placeAndCount(first);
    const auto [seenNext, requestsNext] = placeAndCount(second);

    EXPECT_EQ(seen, first);
    EXPECT_EQ(seenNext, second);
    EXPECT_LT(requestsNext, requests);
}

TEST_F(X11PlacementTest, TheWayThatWorkedIsForgottenWithItsWindowManager) {
    openUnder({"--ignore-message"});
    ASSERT_EQ(place(first), first);

    openUnder({"--ignore-configure"});
    const auto [seen, requests] = placeAndCount(first);
    const auto [seenNext, requestsNext] = placeAndCount(second);

    EXPECT_EQ(seen, first);
    EXPECT_EQ(seenNext, second);
    EXPECT_EQ(requestsNext, requests);
}

TEST_F(X11PlacementTest, OneThatTakesItsAdvertisementBackIsAskedInTheOtherWayAtOnce) {
    openUnder({"--ignore-message"});
    XConnection& client = observer().connection();
    const std::array supported{client.atom("_NET_SUPPORTING_WM_CHECK"), client.atom("_NET_FRAME_EXTENTS")};
    HostileClient(client).setNumbers(client.root(), "_NET_SUPPORTED", "ATOM", supported);
    ASSERT_FALSE(windowSystem().missingForTrust(soon()));

    const auto [seen, requests] = placeAndCount(first);
    const auto [seenNext, requestsNext] = placeAndCount(second);

    EXPECT_EQ(seen, first);
    EXPECT_EQ(seenNext, second);
    EXPECT_EQ(requests, requestsNext);
}

TEST_F(X11PlacementTest, AWindowInATileThatNothingTellsOfLeavesItByBeingMaximized) {
    openUnder({"--tile"});

    EXPECT_EQ(place(first), first);
    EXPECT_FALSE(states().maximizedHorizontally || states().maximizedVertically);
}

TEST_F(X11PlacementTest, AWindowThatStaysInEveryWayIsGivenUp) {
    openUnder({"--ignore-message", "--ignore-configure"});
    const PixelRect before = observer().visibleFrame(number()).value_or(PixelRect{});

    EXPECT_EQ(place(first), before);
    EXPECT_EQ(states(), WindowStates{});
}

TEST_F(X11PlacementTest, TheOtherWaysAreNotTriedAgainForTheSameRequest) {
    openUnder({"--ignore-message", "--ignore-configure"});

    const auto requests = placeAndCount(first).second;
    const auto requestsAgain = placeAndCount(first).second;
    const auto requestsElsewhere = placeAndCount(second).second;

    EXPECT_LT(requestsAgain, requests);
    EXPECT_EQ(requestsElsewhere, requests);
}

TEST_F(X11PlacementTest, AWindowThatStaysMaximizedStaysWhereItIs) {
    openUnder({"--keep-maximized"});
    const auto maximized = pager().maximize(number());
    ASSERT_TRUE(maximized) << maximized.error();
    const PixelRect before = observer().visibleFrame(number()).value_or(PixelRect{});

    EXPECT_EQ(place(first), before);
    EXPECT_TRUE(states().maximizedHorizontally && states().maximizedVertically);
}

}  // namespace
}  // namespace velmorand::desktop

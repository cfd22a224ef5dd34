#include "platform/linux/x11/X11FrameWriter.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

TEST(X11PlacementMethodTest, IsTheMessageWhereItIsAdvertised) {
    EXPECT_EQ(placementMethodFor("Openbox", true), X11PlacementMethod::moveResizeMessage);
    EXPECT_EQ(placementMethodFor("", true), X11PlacementMethod::moveResizeMessage);
}

TEST(X11PlacementMethodTest, IsTheConfigureRequestWhereTheMessageIsNotAdvertised) {
    EXPECT_EQ(placementMethodFor("awesome", false), X11PlacementMethod::configureRequest);
}

TEST(X11PlacementMethodTest, IsTheConfigureRequestWhereTheMessageIsKnownToFail) {
    EXPECT_EQ(placementMethodFor("Fluxbox", true), X11PlacementMethod::configureRequest);
    EXPECT_EQ(placementMethodFor("herbstluftwm", true), X11PlacementMethod::configureRequest);
}

TEST(X11PlacementMethodTest, HasOneOther) {
    EXPECT_EQ(otherThan(X11PlacementMethod::moveResizeMessage), X11PlacementMethod::configureRequest);
    EXPECT_EQ(otherThan(X11PlacementMethod::configureRequest), X11PlacementMethod::moveResizeMessage);
}

TEST(X11SeveralDesktopsTest, AreShownByWindowManagersWithADesktopOnEachDisplay) {
    EXPECT_TRUE(showsSeveralDesktops("i3"));
    EXPECT_TRUE(showsSeveralDesktops("awesome"));
    EXPECT_FALSE(showsSeveralDesktops("Openbox"));
    EXPECT_FALSE(showsSeveralDesktops(""));
}

/// A window of 400 by 300 with a frame around it, and a request to put it elsewhere.
class X11IgnoredRequestTest : public testing::Test {
protected:
    X11IgnoredRequestTest() { before.geometry = {{105, 129, 400, 300}, {5, 5, 29, 5}, {}}; }

    X11WindowFacts before;
    const Rect wanted{500, 400, 600, 500};
};

TEST_F(X11IgnoredRequestTest, IsOneThatLeftTheWindowWhereItWas) {
    EXPECT_TRUE(isIgnored(before, before, wanted));
}

TEST_F(X11IgnoredRequestTest, IsNotOneThatMovedItSomewhere) {
    X11WindowFacts after = before;
    after.geometry.client.x += 7;

    EXPECT_FALSE(isIgnored(before, after, wanted));
}

TEST_F(X11IgnoredRequestTest, IsNotOneForWhereItIs) {
    EXPECT_FALSE(isIgnored(before, before, before.geometry.visible()));
}

TEST_F(X11IgnoredRequestTest, IsNotOneForASizeThatTheWindowDoesNotAllow) {
    before.sizeHints.smallest = Size{700, 100};
    EXPECT_FALSE(isIgnored(before, before, wanted));
    before.sizeHints.smallest.reset();
    before.sizeHints.largest = Size{300, 300};
    EXPECT_FALSE(isIgnored(before, before, wanted));
}

TEST_F(X11IgnoredRequestTest, IsNotOneForASizeThatRoundsToTheOneItHas) {
    before.sizeHints.step = {100, 100};

    EXPECT_FALSE(isIgnored(before, before, {100, 100, 449, 379}));
    EXPECT_TRUE(isIgnored(before, before, {100, 100, 549, 379}));
}

TEST_F(X11IgnoredRequestTest, IsNotOneForAWindowThatStayedMaximized) {
    X11WindowFacts after = before;
    after.maximizedVertically = true;

    EXPECT_FALSE(isIgnored(before, after, wanted));
}

/// A window whose client draws a shadow of 14 pixels around its 400 by 300, asked to the left edge of the screen.
class X11ShadowKeepsWindowTest : public testing::Test {
protected:
    X11ShadowKeepsWindowTest() {
        before.geometry = {{86, 86, 428, 328}, {}, {14, 14, 14, 14}};
        after = before;
        after.geometry.client = {0, 0, 628, 800};
    }

    X11WindowFacts before;
    X11WindowFacts after;
    const Rect wanted{0, 0, 600, 800};
};

TEST_F(X11ShadowKeepsWindowTest, WhenAllOfItsShadowIsOnScreen) {
    EXPECT_TRUE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWhenItIsWhereItBelongs) {
    after.geometry.client = {-14, -14, 628, 828};

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWhenItIsFartherOffThanItsShadow) {
    after.geometry.client.x += 29;

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWhenItsStepsKeepItFromTheSize) {
    after.geometry.client = {-14, -14, 620, 820};
    after.sizeHints.step = {10, 20};

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWithoutAShadow) {
    after.geometry.shadow = {};

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWhenItDoesNotAllowTheSize) {
    before.sizeHints.largest = Size{600, 800};

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

TEST_F(X11ShadowKeepsWindowTest, NotWhenItIsMaximized) {
    after.maximizedVertically = true;

    EXPECT_FALSE(isKeptByItsShadow(before, after, wanted));
}

}  // namespace
}  // namespace velmorand

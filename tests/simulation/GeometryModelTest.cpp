#include "simulation/GeometryModel.h"

#include "support/Printing.h"
#include "support/TestDisplays.h"

#include <gtest/gtest.h>

namespace velmorand::simulation {
namespace {

/// One display of 1440 by 900 points, the upper 25 under a panel; 8 points to the edges and 10 between windows.
class GeometryModelTest : public testing::Test {
protected:
    [[nodiscard]] std::optional<Rect> target(WindowAction action, const Rect& current = {100, 100, 800, 600}) const {
        return modelTarget(action, current, layout, screens);
    }

    ModelLayout layout{.padding = 8, .gap = 10, .clamps = true};
    std::vector<ModelScreen> screens = modelScreens(describedByWindowServer({mainDisplay()}));
};

TEST_F(GeometryModelTest, KnowsThePartsOfTheScreen) {
    EXPECT_EQ(target(WindowAction::leftHalf), (Rect{8, 33, 707, 859}));
    EXPECT_EQ(target(WindowAction::rightHalf), (Rect{725, 33, 707, 859}));
    EXPECT_EQ(target(WindowAction::leftThird), (Rect{8, 33, 470, 859}));
    EXPECT_EQ(target(WindowAction::centerThird), (Rect{488, 33, 464, 859}));
    EXPECT_EQ(target(WindowAction::rightThird), (Rect{962, 33, 470, 859}));
    EXPECT_EQ(target(WindowAction::centerTwoThirds), (Rect{250, 33, 940, 859}));
    EXPECT_EQ(target(WindowAction::bottomRight), (Rect{725, 468, 707, 424}));
    EXPECT_EQ(target(WindowAction::maximizeWindow), (Rect{8, 33, 1424, 859}));
}

TEST_F(GeometryModelTest, CentersALargeWindowWithItsSizeOnlyWithoutClamping) {
    EXPECT_EQ(target(WindowAction::centerWindow, {0, 0, 2000, 400}), (Rect{8, 263, 1424, 400}));
    layout.clamps = false;
    EXPECT_EQ(target(WindowAction::centerWindow, {0, 0, 2000, 400}), (Rect{-280, 250, 2000, 400}));
}

TEST_F(GeometryModelTest, HasNoOtherDisplayToGoToWithOne) {
    EXPECT_EQ(target(WindowAction::nextDisplay), std::nullopt);
    EXPECT_EQ(target(WindowAction::restore), std::nullopt);
}

TEST_F(GeometryModelTest, GoesRoundTheDisplaysInBothDirections) {
    layout = {.padding = 0, .gap = 0, .clamps = true};
    screens = modelScreens(describedByWindowServer({mainDisplay(), rightDisplay()}));
    const Rect rightHalfOfMain{720, 25, 720, 875};
    const Rect rightHalfOfRight{2400, 25, 960, 1055};

    EXPECT_EQ(target(WindowAction::nextDisplay, rightHalfOfMain), rightHalfOfRight);
    EXPECT_EQ(target(WindowAction::previousDisplay, rightHalfOfMain), rightHalfOfRight);
    EXPECT_EQ(target(WindowAction::nextDisplay, rightHalfOfRight), rightHalfOfMain);
}

TEST_F(GeometryModelTest, SortsDisplaysFromLeftToRightAndThenFromTopToBottom) {
    const TestDisplay above{.number = 7, .name = "Above", .axFrame = {0, -1080, 1920, 1080}};
    const TestDisplay left{.number = 8, .name = "Left", .axFrame = {-1920, 400, 1920, 1080}};
    screens = modelScreens(describedByWindowServer({mainDisplay(), above, left}));

    ASSERT_EQ(screens.size(), 3U);
    EXPECT_EQ(screens[0].number, 8);
    EXPECT_EQ(screens[1].number, 7);
    EXPECT_EQ(screens[1].whole, (Rect{0, -1080, 1920, 1080}));
    EXPECT_EQ(screens[2].number, mainDisplay().number);
}

TEST_F(GeometryModelTest, TakesTheNearestScreenForAWindowThatIsOnNone) {
    screens = modelScreens(describedByWindowServer({mainDisplay(), rightDisplay()}));

    EXPECT_EQ(modelScreenOf({9000, 100, 10, 10}, screens), 1U);
    EXPECT_EQ(modelScreenOf({100, -500, 10, 10}, screens), 0U);
    EXPECT_EQ(modelScreenOf({1340, 100, 200, 100}, screens), 0U);  // as much on both
}

TEST_F(GeometryModelTest, ReturnsWindowsIntoTheVisibleAreaOnlyWithClamping) {
    EXPECT_EQ(modelReturn({-50, 0, 400, 300}, true, screens), (Rect{0, 25, 400, 300}));
    EXPECT_EQ(modelReturn({-50, 0, 400, 300}, false, screens), (Rect{-50, 0, 400, 300}));
}

TEST_F(GeometryModelTest, TakesTwoPointsForNothing) {
    EXPECT_TRUE(modelSame({0, 0, 100, 100}, {2, -2, 102, 98}));
    EXPECT_FALSE(modelSame({0, 0, 100, 100}, {2.5, 0, 100, 100}));
    EXPECT_FALSE(modelSame({0, 0, 100, 100}, {0, 0, 100, 97.5}));
}

}  // namespace
}  // namespace velmorand::simulation

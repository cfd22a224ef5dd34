#include "windows/TargetFrame.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using enum WindowAction;

constexpr Rect someFrame{100, 100, 800, 600};
constexpr LayoutOptions paddingEightGapTen{.outerPadding = 8, .innerGap = 10, .clampToVisibleArea = true};
constexpr LayoutOptions plain{.outerPadding = 0, .innerGap = 0, .clampToVisibleArea = true};

LayoutOptions unclamped(LayoutOptions options) {
    options.clampToVisibleArea = false;
    return options;
}

/// 1440 by 900 points, the upper 25 under a panel.
std::vector<ManagedScreen> oneScreen() {
    return {{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}}};
}

struct TargetRow {
    WindowAction action;
    Rect target;
};

void expectTargets(const std::vector<TargetRow>& rows, const Rect& current, const LayoutOptions& options) {
    for (const TargetRow& row : rows) {
        SCOPED_TRACE(rawValue(row.action));
        EXPECT_EQ(targetFrame(row.action, current, options, oneScreen()), row.target);
    }
}

TEST(TargetFrame, PlacesEveryActionInTheUsableAreaWithPaddingAndGap) {
    expectTargets(
        {
            {leftHalf, {8, 33, 707, 859}},
            {rightHalf, {725, 33, 707, 859}},
            {topHalf, {8, 33, 1424, 425}},
            {bottomHalf, {8, 468, 1424, 424}},
            {topLeft, {8, 33, 707, 425}},
            {topRight, {725, 33, 707, 425}},
            {bottomLeft, {8, 468, 707, 424}},
            {bottomRight, {725, 468, 707, 424}},
            {leftThird, {8, 33, 470, 859}},
            {centerThird, {488, 33, 464, 859}},
            {rightThird, {962, 33, 470, 859}},
            {leftTwoThirds, {8, 33, 944, 859}},
            {centerTwoThirds, {250, 33, 940, 859}},
            {rightTwoThirds, {488, 33, 944, 859}},
            {maximizeWindow, {8, 33, 1424, 859}},
            {centerWindow, {320, 163, 800, 600}},
        },
        someFrame, paddingEightGapTen);
}

TEST(TargetFrame, UsesTheWholeDisplayWhenResultsAreNotClamped) {
    expectTargets(
        {
            {leftHalf, {8, 8, 707, 884}},
            {rightHalf, {725, 8, 707, 884}},
            {topHalf, {8, 8, 1424, 437}},
            {bottomHalf, {8, 455, 1424, 437}},
            {leftThird, {8, 8, 470, 884}},
            {centerThird, {488, 8, 464, 884}},
            {rightThird, {962, 8, 470, 884}},
            {maximizeWindow, {8, 8, 1424, 884}},
            {centerWindow, {320, 150, 800, 600}},
        },
        someFrame, unclamped(paddingEightGapTen));
}

TEST(TargetFrame, HalvesTileTheLayoutRectangleExactlyWithoutPaddingAndGap) {
    expectTargets(
        {
            {leftHalf, {0, 25, 720, 875}},
            {rightHalf, {720, 25, 720, 875}},
            {topHalf, {0, 25, 1440, 438}},
            {bottomHalf, {0, 463, 1440, 437}},
            {maximizeWindow, {0, 25, 1440, 875}},
        },
        someFrame, plain);
}

TEST(TargetFrame, QuartersTileTheLayoutRectangleExactlyWithoutPaddingAndGap) {
    expectTargets(
        {
            {topLeft, {0, 25, 720, 438}},
            {topRight, {720, 25, 720, 438}},
            {bottomLeft, {0, 463, 720, 437}},
            {bottomRight, {720, 463, 720, 437}},
        },
        someFrame, plain);
}

TEST(TargetFrame, AnOuterEdgeGetsNoGapAndAnInnerEdgeExactlyHalf) {
    constexpr LayoutOptions gapOnly{.outerPadding = 0, .innerGap = 30, .clampToVisibleArea = true};
    expectTargets(
        {
            {leftThird, {0, 25, 465, 875}},
            {centerThird, {495, 25, 450, 875}},
            {rightThird, {975, 25, 465, 875}},
            {leftTwoThirds, {0, 25, 945, 875}},
            {centerTwoThirds, {255, 25, 930, 875}},
            {rightTwoThirds, {495, 25, 945, 875}},
        },
        someFrame, gapOnly);
}

TEST(TargetFrame, APaddingLargerThanTheDisplayGivesZeroSizedTargetsAtTheMovedOrigin) {
    constexpr LayoutOptions huge{.outerPadding = 800, .innerGap = 0, .clampToVisibleArea = true};
    expectTargets(
        {
            {leftHalf, {800, 825, 0, 0}},
            {bottomRight, {800, 825, 0, 0}},
            {centerThird, {800, 825, 0, 0}},
            {maximizeWindow, {800, 825, 0, 0}},
            {centerWindow, {800, 825, 0, 0}},
        },
        someFrame, huge);
}

TEST(TargetFrame, APaddingThatUsesUpOnlyTheHeightKeepsTheWidth) {
    constexpr LayoutOptions tall{.outerPadding = 440, .innerGap = 0, .clampToVisibleArea = true};
    expectTargets({{maximizeWindow, {440, 465, 560, 0}}, {rightHalf, {720, 465, 280, 0}}}, someFrame, tall);
}

TEST(TargetFrame, AGapLargerThanAPaneGivesItNoWidth) {
    constexpr LayoutOptions wide{.outerPadding = 0, .innerGap = 2000, .clampToVisibleArea = false};
    expectTargets({{leftThird, {0, 0, 0, 900}}, {centerThird, {1480, 0, 0, 900}}}, someFrame, wide);
}

TEST(TargetFrame, APaneWithoutWidthBeyondTheAreaIsClampedToItsEdge) {
    constexpr LayoutOptions wide{.outerPadding = 0, .innerGap = 2000, .clampToVisibleArea = true};
    expectTargets({{centerThird, {1440, 25, 0, 875}}}, someFrame, wide);
}

TEST(TargetFrame, CenterKeepsAWindowThatIsLargerThanTheAreaWhenResultsAreNotClamped) {
    expectTargets({{centerWindow, {-288, -50, 2016, 1000}}}, {0, 0, 2016, 1000}, unclamped(paddingEightGapTen));
}

TEST(TargetFrame, CenterLimitsTheWindowToTheAreaWhenResultsAreClamped) {
    expectTargets({{centerWindow, {8, 33, 1424, 859}}}, {0, 0, 2016, 1000}, paddingEightGapTen);
}

TEST(TargetFrame, CenterLimitsWidthAndHeightIndependently) {
    expectTargets({{centerWindow, {8, 213, 1424, 500}}}, {0, 0, 2016, 500}, paddingEightGapTen);
}

TEST(TargetFrame, RoundsHalvesAwayFromZero) {
    const std::vector<ManagedScreen> screens{{1, "Left", {-1441, -901, 1441, 901}, {-1441, -901, 1441, 901}}};
    constexpr Rect onScreen{-1000, -800, 300, 200};

    EXPECT_EQ(targetFrame(leftHalf, onScreen, plain, screens), (Rect{-1441, -901, 720, 901}));
    EXPECT_EQ(targetFrame(rightHalf, onScreen, plain, screens), (Rect{-721, -901, 721, 901}));
    EXPECT_EQ(targetFrame(topHalf, onScreen, plain, screens), (Rect{-1441, -901, 1441, 450}));
    EXPECT_EQ(targetFrame(bottomHalf, onScreen, plain, screens), (Rect{-1441, -451, 1441, 451}));
}

TEST(TargetFrame, RoundsTheEdgesOfTheUsableAreaToWholePoints) {
    constexpr LayoutOptions fractional{.outerPadding = 8.25, .innerGap = 0, .clampToVisibleArea = true};
    expectTargets({{maximizeWindow, {8, 33, 1424, 859}}}, someFrame, fractional);
}

TEST(TargetFrame, UsesTheScreenThatTheWindowLiesOn) {
    std::vector<ManagedScreen> screens = oneScreen();
    screens.push_back({2, "Right", {1440, 0, 1920, 1080}, {1440, 25, 1920, 1055}});

    EXPECT_EQ(targetFrame(rightHalf, {1500, 100, 400, 300}, plain, screens), (Rect{2400, 25, 960, 1055}));
}

TEST(TargetFrame, RestoreHasNoTarget) {
    EXPECT_EQ(targetFrame(restore, someFrame, plain, oneScreen()), std::nullopt);
}

TEST(TargetFrame, WithoutAScreenNoActionHasATarget) {
    for (const WindowAction action : allWindowActions) {
        SCOPED_TRACE(rawValue(action));
        EXPECT_EQ(targetFrame(action, someFrame, plain, {}), std::nullopt);
    }
}

}  // namespace
}  // namespace velmorand

#include "support/Printing.h"
#include "windows/TargetFrame.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using enum WindowAction;

constexpr LayoutOptions plain{.outerPadding = 0, .innerGap = 0, .clampToVisibleArea = true};
constexpr LayoutOptions plainUnclamped{.outerPadding = 0, .innerGap = 0, .clampToVisibleArea = false};

ManagedScreen smallScreen() {
    return {1, "Small", {0, 0, 1440, 900}, {0, 25, 1440, 875}};
}

ManagedScreen largeScreen() {
    return {2, "Large", {1440, 0, 1920, 1080}, {1440, 25, 1920, 1055}};
}

ManagedScreen tallScreen() {
    return {3, "Tall", {3360, 0, 1000, 2000}, {3360, 0, 1000, 2000}};
}

struct StepRow {
    std::string_view name;
    WindowAction action;
    Rect current;
    Rect target;
};

TEST(TargetFrameDisplayMove, StepsThroughTheScreensAndWrapsAround) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen(), tallScreen()};
    constexpr Rect allOfSmall{0, 25, 1440, 875};
    constexpr Rect allOfLarge{1440, 25, 1920, 1055};
    constexpr Rect allOfTall{3360, 0, 1000, 2000};
    const std::vector<StepRow> rows{
        {"next from the first", nextDisplay, allOfSmall, allOfLarge},
        {"next from the second", nextDisplay, allOfLarge, allOfTall},
        {"next from the last", nextDisplay, allOfTall, allOfSmall},
        {"previous from the last", previousDisplay, allOfTall, allOfLarge},
        {"previous from the second", previousDisplay, allOfLarge, allOfSmall},
        {"previous from the first", previousDisplay, allOfSmall, allOfTall},
    };
    for (const StepRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(targetFrame(row.action, row.current, plain, screens), row.target);
    }
}

TEST(TargetFrameDisplayMove, KeepsTheRelativePositionAndSize) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {720, 25, 720, 875}, plain, screens), (Rect{2400, 25, 960, 1055}));
    EXPECT_EQ(targetFrame(previousDisplay, {2400, 25, 960, 1055}, plain, screens), (Rect{720, 25, 720, 875}));
}

TEST(TargetFrameDisplayMove, IsRelativeToTheUsableAreasWithTheirPadding) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};
    constexpr LayoutOptions padded{.outerPadding = 20, .innerGap = 0, .clampToVisibleArea = true};

    EXPECT_EQ(targetFrame(nextDisplay, {20, 45, 700, 835}, padded, screens), (Rect{1460, 45, 940, 1015}));
}

TEST(TargetFrameDisplayMove, DoesNotApplyTheInnerGap) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};
    constexpr LayoutOptions gap{.outerPadding = 0, .innerGap = 50, .clampToVisibleArea = true};

    EXPECT_EQ(targetFrame(nextDisplay, {720, 25, 720, 875}, gap, screens), (Rect{2400, 25, 960, 1055}));
}

TEST(TargetFrameDisplayMove, MapsWhatLiesOutsideTheAreaProportionallyOutsideWhenResultsAreNotClamped) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {-144, -90, 288, 180}, plainUnclamped, screens), (Rect{1248, -108, 384, 216}));
}

TEST(TargetFrameDisplayMove, MovesWhatLiesOutsideTheAreaIntoItWhenResultsAreClamped) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {-144, 25, 288, 175}, plain, screens), (Rect{1440, 25, 384, 211}));
    EXPECT_EQ(targetFrame(nextDisplay, {1200, 812.5, 288, 175}, plain, screens), (Rect{2976, 869, 384, 211}));
}

TEST(TargetFrameDisplayMove, ShrinksAWindowLargerThanTheTargetAreaAndPinsItToItsTopLeft) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {-600, -300, 2100, 1300}, plain, screens), (Rect{1440, 25, 1920, 1055}));
}

TEST(TargetFrameDisplayMove, KeepsAWindowLargerThanTheTargetAreaWhenResultsAreNotClamped) {
    const std::vector<ManagedScreen> screens{smallScreen(), largeScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {-720, -450, 2160, 1350}, plainUnclamped, screens),
              (Rect{480, -540, 2880, 1620}));
}

TEST(TargetFrameDisplayMove, RoundsToWholePoints) {
    const std::vector<ManagedScreen> screens{smallScreen(), tallScreen()};

    EXPECT_EQ(targetFrame(nextDisplay, {100, 125, 200, 175}, plain, screens), (Rect{3429, 229, 139, 400}));
}

TEST(TargetFrameDisplayMove, HasNoTargetWithOneScreen) {
    EXPECT_EQ(targetFrame(nextDisplay, {0, 25, 720, 875}, plain, std::vector{smallScreen()}), std::nullopt);
    EXPECT_EQ(targetFrame(previousDisplay, {0, 25, 720, 875}, plain, std::vector{smallScreen()}), std::nullopt);
}

TEST(TargetFrameDisplayMove, HasNoTargetWhenTheSourceAreaHasNoWidth) {
    const std::vector<ManagedScreen> screens{{1, "Narrow", {0, 0, 500, 900}, {0, 25, 500, 875}}, largeScreen()};
    constexpr LayoutOptions padded{.outerPadding = 250, .innerGap = 0, .clampToVisibleArea = true};

    EXPECT_EQ(targetFrame(nextDisplay, {0, 25, 400, 800}, padded, screens), std::nullopt);
}

TEST(TargetFrameDisplayMove, HasNoTargetWhenTheSourceAreaHasNoHeight) {
    const std::vector<ManagedScreen> screens{{1, "Flat", {0, 0, 1440, 400}, {0, 0, 1440, 400}}, largeScreen()};
    constexpr LayoutOptions padded{.outerPadding = 200, .innerGap = 0, .clampToVisibleArea = true};

    EXPECT_EQ(targetFrame(nextDisplay, {0, 25, 400, 300}, padded, screens), std::nullopt);
}

TEST(TargetFrameDisplayMove, HasAZeroSizedTargetWhenOnlyTheTargetAreaIsEmpty) {
    const std::vector<ManagedScreen> screens{smallScreen(), {2, "Narrow", {1440, 0, 500, 1080}, {1440, 25, 500, 1055}}};
    constexpr LayoutOptions padded{.outerPadding = 300, .innerGap = 0, .clampToVisibleArea = true};

    EXPECT_EQ(targetFrame(nextDisplay, {300, 325, 420, 275}, padded, screens), (Rect{1740, 325, 0, 455}));
}

}  // namespace
}  // namespace velmorand

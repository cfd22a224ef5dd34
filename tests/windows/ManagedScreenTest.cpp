#include "windows/ManagedScreen.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

ManagedScreen screen(std::uint32_t id, const Rect& visible) {
    return {id, "Screen", {visible.x, visible.y - 25, visible.width, visible.height + 25}, visible};
}

TEST(ManagedScreen, IsEqualOnlyWhenAllFourFieldsAre) {
    const ManagedScreen base{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}};
    const ManagedScreen otherId{2, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}};
    const ManagedScreen otherName{1, "main", {0, 0, 1440, 900}, {0, 25, 1440, 875}};
    const ManagedScreen otherFrame{1, "Main", {0, 0, 1440, 900.0001}, {0, 25, 1440, 875}};
    const ManagedScreen otherVisibleFrame{1, "Main", {0, 0, 1440, 900}, {0, 25.0001, 1440, 875}};

    EXPECT_EQ(base, (ManagedScreen{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}}));
    EXPECT_NE(base, otherId);
    EXPECT_NE(base, otherName);
    EXPECT_NE(base, otherFrame);
    EXPECT_NE(base, otherVisibleFrame);
}

TEST(ManagedScreen, HashesAllFourFields) {
    const std::hash<ManagedScreen> hash;
    const ManagedScreen base{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}};

    EXPECT_EQ(hash(base), hash(ManagedScreen{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}}));
    EXPECT_NE(hash(base), hash(ManagedScreen{2, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}}));
    EXPECT_NE(hash(base), hash(ManagedScreen{1, "Other", {0, 0, 1440, 900}, {0, 25, 1440, 875}}));
    EXPECT_NE(hash(base), hash(ManagedScreen{1, "Main", {0, 0, 1440, 901}, {0, 25, 1440, 875}}));
    EXPECT_NE(hash(base), hash(ManagedScreen{1, "Main", {0, 0, 1440, 900}, {0, 26, 1440, 875}}));
}

TEST(ManagedScreen, HashesStandardisedRectangles) {
    const ManagedScreen upright{1, "Main", {0, 0, 1440, 900}, {0, 25, 1440, 875}};
    const ManagedScreen folded{1, "Main", {1440, 900, -1440, -900}, {1440, 900, -1440, -875}};

    EXPECT_EQ(std::hash<ManagedScreen>{}(folded), std::hash<ManagedScreen>{}(upright));
    EXPECT_NE(folded, upright);
}

TEST(ScreenForFrame, IsAbsentForAnEmptyList) {
    EXPECT_EQ(screenForFrame({0, 0, 100, 100}, {}), std::nullopt);
}

struct ScreenRow {
    std::string_view name;
    Rect frame;
    std::uint32_t screenId;
};

TEST(ScreenForFrame, IsTheOneOfLargestOverlapElseTheNearest) {
    // Side by side, with a gap of 100 points between their visible frames.
    const std::vector<ManagedScreen> screens{screen(1, {0, 25, 1000, 775}), screen(2, {1100, 25, 1000, 775})};
    const std::vector<ScreenRow> rows{
        {"inside the first", {100, 100, 300, 300}, 1},
        {"inside the second", {1200, 100, 300, 300}, 2},
        {"more of it on the second", {700, 100, 800, 300}, 2},
        {"more of it on the first", {600, 100, 800, 300}, 1},
        {"equally on both", {900, 100, 300, 300}, 1},
        {"covers both", {-100, 0, 3000, 900}, 1},
        {"between them, nearer to the second", {1030, 100, 60, 300}, 2},
        {"between them, nearer to the first", {1010, 100, 60, 300}, 1},
        {"between them, equally near", {1020, 100, 60, 300}, 1},
        {"far to the right", {5000, 100, 300, 300}, 2},
        {"far to the left", {-5000, 100, 300, 300}, 1},
        {"far below the second", {1500, 9000, 300, 300}, 2},
        {"far above the second", {1500, -9000, 300, 300}, 2},
        {"no width, on the second", {1500, 100, 0, 300}, 2},
        {"no height, on the second", {1500, 100, 300, 0}, 2},
        {"no width, between them, nearer to the second", {1060, 100, 0, 300}, 2},
        {"no size at all, on the first", {500, 100, 0, 0}, 1},
    };
    for (const ScreenRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(screenForFrame(row.frame, screens), screens[row.screenId - 1]);
    }
}

TEST(ScreenForFrame, DoesNotCountAnOverlapWithThePanel) {
    // The window lies over the panel of the second screen, diagonally nearer to the visible frame of the first.
    const std::vector<ManagedScreen> screens{{1, "Left", {0, 0, 1000, 800}, {0, 0, 1000, 800}},
                                             {2, "Right", {1000, 0, 1000, 800}, {1000, 200, 1000, 600}}};

    EXPECT_EQ(screenForFrame({1010, 10, 100, 100}, screens), screens[0]);
}

TEST(ScreenForFrame, PrefersTheSmallestOverlapToTheNearestScreen) {
    const std::vector<ManagedScreen> screens{screen(1, {200, 500, 100, 200}), screen(2, {0, 0, 100, 100})};

    EXPECT_EQ(screenForFrame({90, 90, 100, 1000}, screens), screens[1]);
}

TEST(ScreenForFrame, DoesNotCountASharedEdgeAsAnOverlap) {
    const std::vector<ManagedScreen> screens{screen(1, {200, 0, 100, 100}), screen(2, {50, 500, 100, 100})};

    // It touches the left edge of the first, but its centre is nearer to the second.
    EXPECT_EQ(screenForFrame({0, 95, 200, 404}, screens), screens[1]);
}

TEST(ScreenForFrame, MeasuresTheDistanceAlongBothAxesAsTheCrowFlies) {
    const ManagedScreen straight = screen(1, {0, 0, 100, 100});
    const ManagedScreen diagonal = screen(2, {260, 110, 100, 100});
    const ManagedScreen farDiagonal = screen(3, {290, 140, 100, 100});
    constexpr Rect aroundTwoHundredFifty{199, 49, 2, 2};

    // 100 straight; 60 and 60, or 90 and 90, diagonally.
    EXPECT_EQ(screenForFrame(aroundTwoHundredFifty, std::vector{straight, diagonal}), diagonal);
    EXPECT_EQ(screenForFrame(aroundTwoHundredFifty, std::vector{straight, farDiagonal}), straight);
}

TEST(ScreenForFrame, TakesTheOnlyScreenForEveryFrame) {
    const std::vector<ManagedScreen> screens{screen(1, {0, 25, 1440, 875})};

    EXPECT_EQ(screenForFrame({100000, -50000, 10, 10}, screens), screens[0]);
}

TEST(IndexOfScreen, IsTheFirstPositionOfAnEqualRecord) {
    const std::vector<ManagedScreen> screens{screen(1, {0, 0, 100, 100}), screen(2, {100, 0, 100, 100}),
                                             screen(2, {100, 0, 100, 100})};

    EXPECT_EQ(indexOfScreen(screens[0], screens), 0U);
    EXPECT_EQ(indexOfScreen(screens[2], screens), 1U);
}

TEST(IndexOfScreen, IsAbsentWhenOnlySomeFieldsAreEqual) {
    const std::vector<ManagedScreen> screens{screen(1, {0, 0, 100, 100})};
    ManagedScreen renamed = screens[0];
    renamed.name = "Renamed";

    EXPECT_EQ(indexOfScreen(renamed, screens), std::nullopt);
    EXPECT_EQ(indexOfScreen(renamed, {}), std::nullopt);
}

TEST(Centered, PutsTheSizeIntoTheMiddleOfTheArea) {
    EXPECT_EQ(centered({100, 50}, {10, 20, 300, 200}, false), (Rect{110, 95, 100, 50}));
    EXPECT_EQ(centered({101, 51}, {0, 0, 300, 200}, true), (Rect{99.5, 74.5, 101, 51}));
}

TEST(Centered, LimitsTheSizeToTheAreaOnlyWhenAsked) {
    EXPECT_EQ(centered({400, 250}, {10, 20, 300, 200}, false), (Rect{-40, -5, 400, 250}));
    EXPECT_EQ(centered({400, 250}, {10, 20, 300, 200}, true), (Rect{10, 20, 300, 200}));
    EXPECT_EQ(centered({400, 50}, {10, 20, 300, 200}, true), (Rect{10, 95, 300, 50}));
}

struct ClampRow {
    std::string_view name;
    Rect rect;
    Rect result;
};

TEST(Clamped, MovesAndShrinksTheRectangleIntoTheArea) {
    constexpr Rect area{10, 20, 300, 200};
    const std::vector<ClampRow> rows{
        {"inside", {50, 60, 100, 100}, {50, 60, 100, 100}},
        {"beyond the left", {-50, 60, 100, 100}, {10, 60, 100, 100}},
        {"beyond the top", {50, -60, 100, 100}, {50, 20, 100, 100}},
        {"beyond the right", {250, 60, 100, 100}, {210, 60, 100, 100}},
        {"beyond the bottom", {50, 160, 100, 100}, {50, 120, 100, 100}},
        {"too wide", {50, 60, 500, 100}, {10, 60, 300, 100}},
        {"too high", {50, 60, 100, 500}, {50, 20, 100, 200}},
        {"too large", {-500, 600, 5000, 5000}, {10, 20, 300, 200}},
        {"of no size, outside", {5000, -5000, 0, 0}, {310, 20, 0, 0}},
    };
    for (const ClampRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(clamped(row.rect, area), row.result);
    }
}

}  // namespace
}  // namespace velmorand

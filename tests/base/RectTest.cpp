#include "base/Rect.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

TEST(Rect, KnowsItsEdgesAndItsMiddle) {
    constexpr Rect rect{10, -20, 30.5, 40};

    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.minY(), -20);
    EXPECT_EQ(rect.maxX(), 40.5);
    EXPECT_EQ(rect.maxY(), 20);
    EXPECT_EQ(rect.midX(), 25.25);
    EXPECT_EQ(rect.midY(), 0);
    EXPECT_EQ(rect.origin(), (Point{10, -20}));
    EXPECT_EQ(rect.size(), (Size{30.5, 40}));
}

TEST(Rect, IsMadeFromItsEdges) {
    EXPECT_EQ(Rect::fromEdges(-5, 10, 15, 40), (Rect{-5, 10, 20, 30}));
}

TEST(Rect, ComparesExactly) {
    EXPECT_EQ((Rect{1, 2, 3, 4}), (Rect{1, 2, 3, 4}));
    EXPECT_NE((Rect{1, 2, 3, 4}), (Rect{1.0000001, 2, 3, 4}));
    EXPECT_NE((Rect{1, 2, 3, 4}), (Rect{1, 2.0000001, 3, 4}));
    EXPECT_NE((Rect{1, 2, 3, 4}), (Rect{1, 2, 3.0000001, 4}));
    EXPECT_NE((Rect{1, 2, 3, 4}), (Rect{1, 2, 3, 4.0000001}));
}

TEST(Rect, IsEmptyWithoutWidthOrHeight) {
    EXPECT_TRUE((Rect{5, 5, 0, 10}.isEmpty()));
    EXPECT_TRUE((Rect{5, 5, 10, 0}.isEmpty()));
    EXPECT_FALSE((Rect{5, 5, 0.5, 0.5}.isEmpty()));
}

TEST(Rect, FoldsANegativeWidthOrHeightIntoTheOrigin) {
    EXPECT_EQ((Rect{10, 20, -4, 6}.standardized()), (Rect{6, 20, 4, 6}));
    EXPECT_EQ((Rect{10, 20, 4, -6}.standardized()), (Rect{10, 14, 4, 6}));
    EXPECT_EQ((Rect{10, 20, -4, -6}.standardized()), (Rect{6, 14, 4, 6}));
    EXPECT_EQ((Rect{10, 20, 4, 6}.standardized()), (Rect{10, 20, 4, 6}));
}

struct IntersectionRow {
    std::string_view name;
    Rect other;
    std::optional<Rect> common;
};

TEST(Rect, IntersectsWhereItSharesAnArea) {
    constexpr Rect rect{0, 0, 100, 50};
    const std::vector<IntersectionRow> rows{
        {"itself", {0, 0, 100, 50}, Rect{0, 0, 100, 50}},
        {"inside", {10, 10, 20, 20}, Rect{10, 10, 20, 20}},
        {"around", {-10, -10, 200, 200}, Rect{0, 0, 100, 50}},
        {"overlapping the corner", {90, 40, 50, 50}, Rect{90, 40, 10, 10}},
        {"a cross", {40, -10, 20, 100}, Rect{40, 0, 20, 50}},
        {"sharing the right edge", {100, 0, 50, 50}, std::nullopt},
        {"sharing the bottom edge", {0, 50, 50, 50}, std::nullopt},
        {"sharing a corner", {100, 50, 50, 50}, std::nullopt},
        {"apart horizontally", {150, 0, 50, 50}, std::nullopt},
        {"apart vertically", {0, 150, 50, 50}, std::nullopt},
        {"without width, inside", {10, 10, 0, 20}, std::nullopt},
        {"without height, inside", {10, 10, 20, 0}, std::nullopt},
        {"with negative sides", {30, 30, -20, -20}, Rect{10, 10, 20, 20}},
    };
    for (const IntersectionRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(intersection(rect, row.other), row.common);
        EXPECT_EQ(intersection(row.other, rect), row.common);
        EXPECT_EQ(intersects(rect, row.other), row.common.has_value());
    }
}

TEST(Rect, IsDescribedWithAsManyDigitsAsItsValuesNeed) {
    EXPECT_EQ(describe({0, 25, 720, 875}), "(0, 25, 720, 875)");
    EXPECT_EQ(describe({-0.5, 1e6, 0.1, 100.25}), "(-0.5, 1000000, 0.1, 100.25)");
}

}  // namespace
}  // namespace velmorand

#include "windows/FrameTolerance.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

struct ToleranceRow {
    std::string_view name;
    Rect other;
    bool match;
};

TEST(FrameTolerance, IsTwoPointsInclusiveOnEachOfLeftTopWidthAndHeight) {
    constexpr Rect frame{100, 200, 300, 400};
    const std::vector<ToleranceRow> rows{
        {"equal", {100, 200, 300, 400}, true},
        {"all four off by 2", {102, 198, 302, 398}, true},
        {"left +2", {102, 200, 300, 400}, true},
        {"left +2.5", {102.5, 200, 300, 400}, false},
        {"left -2", {98, 200, 300, 400}, true},
        {"left -2.5", {97.5, 200, 300, 400}, false},
        {"top +2", {100, 202, 300, 400}, true},
        {"top +2.5", {100, 202.5, 300, 400}, false},
        {"top -2.5", {100, 197.5, 300, 400}, false},
        {"width +2", {100, 200, 302, 400}, true},
        {"width +2.5", {100, 200, 302.5, 400}, false},
        {"width -2.5", {100, 200, 297.5, 400}, false},
        {"height +2", {100, 200, 300, 402}, true},
        {"height +2.5", {100, 200, 300, 402.5}, false},
        {"height -2.5", {100, 200, 300, 397.5}, false},
        {"just beyond", {100, 200, 300, 402.0001}, false},
        {"right edge off by 4, left and width by 2 each", {102, 200, 302, 400}, true},
    };
    for (const ToleranceRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(framesMatch(frame, row.other), row.match);
        EXPECT_EQ(framesMatch(row.other, frame), row.match);
    }
}

}  // namespace
}  // namespace velmorand

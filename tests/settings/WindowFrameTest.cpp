#include "settings/WindowFrame.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace velmorand {
namespace {

constexpr QSize smallest{720, 520};
constexpr QMargins decorations{2, 30, 2, 4};
const QList<QRect> oneDisplay{{0, 25, 1440, 875}};
const QList<QRect> twoDisplays{{0, 0, 1440, 900}, {1440, 0, 1920, 1080}};

TEST(WindowFrameTest, ComesBackFromItsText) {
    const QRect frame(-100, 40, 780, 560);
    EXPECT_EQ(windowFrameText(frame), "-100 40 780 560");
    EXPECT_EQ(windowFrameFromText(windowFrameText(frame)), frame);
}

TEST(WindowFrameTest, IsAbsentInAnyOtherText) {
    constexpr auto texts = std::to_array<std::string_view>({
        "",
        " ",
        "1",
        "1 2 3",
        "1 2 3 4 5",
        "1 2 3 4 ",
        " 1 2 3 4",
        "1  2 3 4",
        "1,2,3,4",
        "a b c d",
        "1 2 0 4",
        "1 2 3 -4",
        "1 2 3 4x",
        "99999999999 2 3 4",
        "1000001 2 3 4",
        "-2147483648 2 3 4",
        "1.5 2 3 4",
        "+1 2 3 4",
    });
    for (const std::string_view text : texts) EXPECT_EQ(windowFrameFromText(text), std::nullopt) << text;
}

TEST(WindowFrameTest, StaysWhereItIsWhollyOnADisplay) {
    const QRect frame(100, 100, 800, 600);
    EXPECT_EQ(windowFrameWithin(oneDisplay, frame, smallest, decorations), frame);
    EXPECT_EQ(windowFrameWithin(twoDisplays, QRect(2000, 300, 780, 560), smallest, decorations),
              QRect(2000, 300, 780, 560));
}

TEST(WindowFrameTest, ComesBackOntoTheDisplayThatShowsMostOfIt) {
    EXPECT_EQ(windowFrameWithin(oneDisplay, QRect(1000, -50, 780, 560), smallest, decorations),
              QRect(658, 55, 780, 560));
    EXPECT_EQ(windowFrameWithin(twoDisplays, QRect(1300, 900, 780, 560), smallest, decorations),
              QRect(1442, 516, 780, 560));
}

TEST(WindowFrameTest, ComesBackOntoTheNearestDisplayWhenItsOwnIsGone) {
    EXPECT_EQ(windowFrameWithin(oneDisplay, QRect(5000, 5000, 780, 560), smallest, decorations),
              QRect(658, 336, 780, 560));
    EXPECT_EQ(windowFrameWithin(twoDisplays, QRect(-2000, 0, 780, 560), smallest, decorations), QRect(2, 30, 780, 560));
}

TEST(WindowFrameTest, IsMadeSmallerForASmallerDisplay) {
    EXPECT_EQ(windowFrameWithin(oneDisplay, QRect(0, 0, 3000, 2000), smallest, decorations), QRect(2, 55, 1436, 841));
}

TEST(WindowFrameTest, IsNeverSmallerThanTheSmallestAndShowsItsTopLeftCorner) {
    const QList<QRect> tiny{{0, 25, 640, 455}};
    EXPECT_EQ(windowFrameWithin(tiny, QRect(300, 300, 780, 560), smallest, decorations), QRect(2, 55, 720, 520));
}

TEST(WindowFrameTest, StaysWhereItIsWithoutDisplays) {
    EXPECT_EQ(windowFrameWithin({}, QRect(5, 6, 780, 560), smallest, decorations), QRect(5, 6, 780, 560));
}

}  // namespace
}  // namespace velmorand

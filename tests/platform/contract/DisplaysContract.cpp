#include "platform/Displays.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <set>

namespace velmorand {

using testing::IsEmpty;

TEST_P(DisplaysContract, ThePrimaryDisplayComesFirstAndStartsAtTheOrigin) {
    const auto screens = desktop->platform().displays().screens();

    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens.front().frame.origin(), (Point{0, 0}));
    EXPECT_GT(screens.front().frame.width, 0);
    EXPECT_GT(screens.front().frame.height, 0);
}

TEST_P(DisplaysContract, EveryDisplayHasANameAndAVisiblePartInsideItsFrame) {
    for (const DisplayDescription& screen : desktop->platform().displays().screens()) {
        SCOPED_TRACE(describe(screen.frame));
        EXPECT_NE(screen.localizedName, "");
        EXPECT_EQ(intersection(screen.frame, screen.visibleFrame), screen.visibleFrame);
    }
}

TEST_P(DisplaysContract, IsReadAfreshAtEveryCall) {
    VELMORAND_NEEDS(Ability::changeDisplays);
    Displays& displays = desktop->platform().displays();

    desktop->setDisplays({{0, 0, 800, 600}});
    ASSERT_EQ(displays.screens().size(), 1U);
    EXPECT_EQ(displays.screens()[0].frame, (Rect{0, 0, 800, 600}));

    desktop->setDisplays({{0, 0, 800, 600}, {-800, 0, 800, 600}});
    ASSERT_EQ(displays.screens().size(), 2U);
    EXPECT_EQ(displays.screens()[0].frame, (Rect{0, 0, 800, 600}));
    EXPECT_EQ(displays.screens()[1].frame, (Rect{-800, 0, 800, 600}));

    desktop->setDisplays({{0, 0, 640, 480}});
    ASSERT_EQ(displays.screens().size(), 1U);
    EXPECT_EQ(displays.screens()[0].frame, (Rect{0, 0, 640, 480}));
}

TEST_P(DisplaysContract, MeasuresUpwardFromTheBottomOfThePrimaryDisplay) {
    VELMORAND_NEEDS(Ability::changeDisplays);
    // The second display hangs 120 points lower than the top of the first and ends 20 points above its bottom.
    desktop->setDisplays({{0, 0, 800, 600}, {-640, 120, 640, 460}});

    const auto screens = desktop->platform().displays().screens();

    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[1].frame, (Rect{-640, 20, 640, 460}));
    EXPECT_EQ(screens[1].visibleFrame, (Rect{-640, 20, 640, 460}));
}

TEST_P(DisplaysContract, TwoDisplaysHaveDifferentNumbers) {
    VELMORAND_NEEDS(Ability::changeDisplays);
    desktop->setDisplays({{0, 0, 800, 600}, {-800, 0, 800, 600}});

    std::set<std::optional<std::int64_t>> numbers;
    for (const DisplayDescription& screen : desktop->platform().displays().screens()) numbers.insert(screen.number);

    EXPECT_EQ(numbers.size(), 2U);
    EXPECT_FALSE(numbers.contains(std::nullopt));
}

TEST_P(DisplaysContract, ADisplayKeepsItsNumberWhenAnotherComesAndGoes) {
    VELMORAND_NEEDS(Ability::changeDisplays);
    Displays& displays = desktop->platform().displays();
    desktop->setDisplays({{0, 0, 800, 600}});
    ASSERT_EQ(displays.screens().size(), 1U);
    const auto number = displays.screens()[0].number;

    desktop->setDisplays({{0, 0, 800, 600}, {-800, 0, 800, 600}});

    EXPECT_EQ(displays.screens()[0].number, number);
}

TEST_P(DisplaysContract, IsEmptyWithoutADisplay) {
    VELMORAND_NEEDS(Ability::disconnectAllDisplays);
    desktop->setDisplays({});

    EXPECT_THAT(desktop->platform().displays().screens(), IsEmpty());
}

}  // namespace velmorand

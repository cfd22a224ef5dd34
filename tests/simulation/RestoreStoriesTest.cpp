#include "simulation/RestoreStories.h"

#include "simulation/Broken.h"
#include "support/TestDisplays.h"

#include <gtest/gtest.h>

namespace velmorand::simulation {
namespace {

using enum Happening::Kind;

constexpr Rect origin{100, 100, 800, 600};
constexpr Rect leftHalf{0, 25, 720, 875};
constexpr Rect rightHalf{720, 25, 720, 875};

/// What happens to one window.
class RestoreStoriesTest : public testing::Test {
protected:
    void happen(Happening::Kind kind, const Rect& frame, std::optional<Rect> seen = std::nullopt) {
        const Happening happening{.kind = kind, .frame = frame, .at = {.time = {}, .date = date}, .seen = seen};
        stories.follow(std::span(&happening, 1), false, displays);
    }
    void arrange(const Rect& from, const Rect& to) {
        happen(moveBegun, to, from);
        happen(moveEnded, to);
    }

    RestoreStories stories;
    Date date;
    std::vector<DisplayDescription> displays = describedByWindowServer({mainDisplay()});
};

TEST_F(RestoreStoriesTest, WantsTheFrameFromBeforeTheChain) {
    arrange(origin, leftHalf);
    arrange(leftHalf, rightHalf);

    EXPECT_NO_THROW(happen(returnBegun, origin));
    EXPECT_EQ(stories.judged(), 1U);
}

TEST_F(RestoreStoriesTest, DoesNotPutUpWithAnotherFrame) {
    arrange(origin, leftHalf);
    arrange(leftHalf, rightHalf);

    EXPECT_THROW(happen(returnBegun, leftHalf), Broken);
}

TEST_F(RestoreStoriesTest, BeginsAnotherChainWhereTheUserHasMovedTheWindow) {
    arrange(origin, leftHalf);
    arrange({2.5, 25, 720, 875}, rightHalf);

    EXPECT_THROW(happen(returnBegun, origin), Broken);
}

TEST_F(RestoreStoriesTest, DoesNotPutUpWithARefusalOfWhatCanBePutBack) {
    arrange(origin, leftHalf);

    EXPECT_THROW(happen(returnRefused, {}), Broken);
}

TEST_F(RestoreStoriesTest, DoesNotPutUpWithASecondRestore) {
    arrange(origin, leftHalf);
    happen(returnBegun, origin);
    happen(returnLanded, origin);

    EXPECT_THROW(happen(returnBegun, origin), Broken);
    EXPECT_NO_THROW(happen(returnRefused, {}));
}

TEST_F(RestoreStoriesTest, DoesNotPutUpWithARestoreAfterMoreThanAnHour) {
    arrange(origin, leftHalf);
    date += std::chrono::minutes(62);

    EXPECT_THROW(happen(returnBegun, origin), Broken);
}

TEST_F(RestoreStoriesTest, WantsAWindowThatIsOnItsWayBackWhereItStarted) {
    arrange(origin, leftHalf);
    happen(moveBegun, rightHalf, leftHalf);

    EXPECT_NO_THROW(happen(returnBegun, leftHalf));
}

TEST_F(RestoreStoriesTest, PromisesNothingAfterAMoveThatWasLost) {
    arrange(origin, leftHalf);
    happen(moveBegun, rightHalf, leftHalf);
    happen(moveLost, rightHalf);

    EXPECT_NO_THROW(happen(returnBegun, rightHalf));
    EXPECT_EQ(stories.judged(), 0U);
}

}  // namespace
}  // namespace velmorand::simulation

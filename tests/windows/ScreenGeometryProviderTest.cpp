#include "windows/ScreenGeometryProvider.h"

#include "platform/simulated/SimulatedPlatform.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Frames here are the window server's: the origin at the bottom-left corner of the primary display, y upward.
class ScreenGeometryProviderTest : public testing::Test {
protected:
    void setDisplays(std::vector<DisplayDescription> displays) { platform.setDisplays(std::move(displays)); }

    [[nodiscard]] std::vector<std::uint32_t> idsInOrder() const {
        std::vector<std::uint32_t> ids;
        std::ranges::transform(provider.screens(), std::back_inserter(ids), &ManagedScreen::id);
        return ids;
    }

    SimulatedPlatform platform;
    ScreenGeometryProvider provider{platform.displays()};
};

DisplayDescription display(std::int64_t number, const Rect& frame) {
    return {number, "Display", frame, frame};
}

TEST_F(ScreenGeometryProviderTest, TraversesLeftToRightAndTopToBottomByDefault) {
    EXPECT_EQ(provider.traversalOrder(), DisplayTraversalOrder::spatialLeftToRightTopToBottom);
}

TEST_F(ScreenGeometryProviderTest, HasNoScreensWithoutADisplay) {
    setDisplays({});

    EXPECT_THAT(provider.screens(), IsEmpty());
}

TEST_F(ScreenGeometryProviderTest, PutsASingleDisplayAtTheOrigin) {
    setDisplays({{7, "Built-in", {0, 0, 1440, 900}, {0, 80, 1440, 795}}});

    EXPECT_THAT(provider.screens(), ElementsAre(ManagedScreen{7, "Built-in", {0, 0, 1440, 900}, {0, 25, 1440, 795}}));
}

TEST_F(ScreenGeometryProviderTest, GivesADisplayAboveThePrimaryOneANegativeTopEdge) {
    setDisplays({display(1, {0, 0, 1440, 900}), {2, "Upper", {100, 900, 1920, 1080}, {100, 900, 1920, 1055}}});

    EXPECT_THAT(provider.screens(),
                ElementsAre(ManagedScreen{1, "Display", {0, 0, 1440, 900}, {0, 0, 1440, 900}},
                            ManagedScreen{2, "Upper", {100, -1080, 1920, 1080}, {100, -1055, 1920, 1055}}));
}

TEST_F(ScreenGeometryProviderTest, GivesADisplayBelowThePrimaryOneATopEdgeFromTheHeightOfThePrimaryOnOnwards) {
    setDisplays({display(1, {0, 0, 1440, 900}), display(2, {100, -1080, 1920, 1080})});

    EXPECT_EQ(provider.screens()[1].axFrame, (Rect{100, 900, 1920, 1080}));
}

TEST_F(ScreenGeometryProviderTest, MeasuresFromTheTopOfTheFirstDisplayWhateverItsPosition) {
    setDisplays({display(1, {200, 100, 1440, 900}), display(2, {2000, 0, 1000, 2000})});

    EXPECT_THAT(provider.screens(),
                ElementsAre(ManagedScreen{1, "Display", {200, 0, 1440, 900}, {200, 0, 1440, 900}},
                            ManagedScreen{2, "Display", {2000, -1000, 1000, 2000}, {2000, -1000, 1000, 2000}}));
}

TEST_F(ScreenGeometryProviderTest, LeavesOutADisplayWithoutANumber) {
    setDisplays(
        {display(1, {0, 0, 1440, 900}), {std::nullopt, "Unnumbered", {1440, 0, 800, 600}, {1440, 0, 800, 600}}});

    EXPECT_THAT(idsInOrder(), ElementsAre(1));
}

TEST_F(ScreenGeometryProviderTest, StillMeasuresFromAPrimaryDisplayWithoutANumber) {
    setDisplays({{std::nullopt, "Unnumbered", {0, 0, 1440, 900}, {0, 0, 1440, 900}}, display(2, {1440, 0, 800, 600})});

    EXPECT_THAT(provider.screens(),
                ElementsAre(ManagedScreen{2, "Display", {1440, 300, 800, 600}, {1440, 300, 800, 600}}));
}

TEST_F(ScreenGeometryProviderTest, TruncatesTheNumberTo32Bits) {
    setDisplays({display(0x1'0000'0005, {0, 0, 100, 100}), display(-1, {100, 0, 100, 100})});

    EXPECT_THAT(idsInOrder(), ElementsAre(5U, 0xFFFF'FFFFU));
}

TEST_F(ScreenGeometryProviderTest, SortsByLeftEdge) {
    setDisplays({display(1, {0, 0, 100, 100}), display(2, {300, 0, 100, 100}), display(3, {-100, 500, 100, 100}),
                 display(4, {100, -900, 100, 100})});

    EXPECT_THAT(idsInOrder(), ElementsAre(3, 1, 4, 2));
}

TEST_F(ScreenGeometryProviderTest, SortsDisplaysWithTheSameLeftEdgeFromTopToBottom) {
    setDisplays({display(1, {0, 0, 100, 100}), display(2, {0, -100, 100, 100}), display(3, {0, 100, 100, 100})});

    EXPECT_THAT(idsInOrder(), ElementsAre(3, 1, 2));
}

TEST_F(ScreenGeometryProviderTest, ComparesLeftEdgesWithoutATolerance) {
    setDisplays({display(1, {0.25, 100, 100, 100}), display(2, {0, 0, 100, 100})});

    EXPECT_THAT(idsInOrder(), ElementsAre(2, 1));
}

TEST_F(ScreenGeometryProviderTest, ComparesTheEdgesOfWholeDisplaysNotOfTheirVisibleParts) {
    setDisplays(
        {{1, "Left", {0, 0, 500, 500}, {400, 0, 100, 500}}, {2, "Right", {10, 0, 500, 500}, {10, 0, 500, 500}}});

    EXPECT_THAT(idsInOrder(), ElementsAre(1, 2));
}

TEST_F(ScreenGeometryProviderTest, KeepsThePlatformsOrderOfDisplaysInTheSamePlace) {
    setDisplays({display(9, {0, 0, 100, 100}), display(3, {0, 0, 200, 100}), display(5, {0, 0, 50, 100})});

    EXPECT_THAT(idsInOrder(), ElementsAre(9, 3, 5));
}

TEST_F(ScreenGeometryProviderTest, ReadsTheDisplaysAfreshAtEveryCall) {
    setDisplays({display(1, {0, 0, 1440, 900})});
    ASSERT_THAT(idsInOrder(), ElementsAre(1));

    setDisplays({display(1, {0, 0, 1440, 900}), display(2, {1440, 0, 800, 600})});
    EXPECT_THAT(idsInOrder(), ElementsAre(1, 2));

    setDisplays({});
    EXPECT_THAT(idsInOrder(), IsEmpty());
}

TEST_F(ScreenGeometryProviderTest, ComputesTargetFramesAmongTheScreensThereAreNow) {
    constexpr LayoutOptions options{.outerPadding = 8, .innerGap = 10, .clampToVisibleArea = true};
    constexpr Rect current{100, 100, 400, 300};

    setDisplays({{1, "Display", {0, 0, 1440, 900}, {0, 0, 1440, 875}}});
    EXPECT_EQ(provider.targetFrame(WindowAction::rightHalf, current, options), (Rect{725, 33, 707, 859}));

    setDisplays({});
    EXPECT_EQ(provider.targetFrame(WindowAction::rightHalf, current, options), std::nullopt);
}

TEST_F(ScreenGeometryProviderTest, MovesFromTheLastDisplayInTraversalOrderToTheFirst) {
    setDisplays({display(1, {0, 0, 1000, 1000}), display(2, {-500, 0, 500, 1000})});

    EXPECT_EQ(provider.targetFrame(WindowAction::nextDisplay, {0, 0, 500, 1000}, {}), (Rect{-500, 0, 250, 1000}));
}

}  // namespace
}  // namespace velmorand

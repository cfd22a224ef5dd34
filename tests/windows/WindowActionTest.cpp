#include "windows/WindowAction.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

using testing::ElementsAre;
using enum WindowAction;

constexpr std::uint32_t commandOption = 0x900;
constexpr std::uint32_t commandShiftOption = 0xB00;
constexpr std::uint32_t commandOptionControl = 0x1900;

struct CatalogueRow {
    WindowAction action;
    std::string_view rawValue;
    std::string_view title;
    std::string_view menuTitle;
    WindowActionGroup group;
    WindowActionKind kind;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    std::string_view keyLabel;
};

constexpr double third = 0.3333333333333333;
constexpr double twoThirds = 0.6666666666666666;
constexpr double sixth = 0.16666666666666666;

// clang-format off
const std::array<CatalogueRow, 19> catalogue{{
    {leftHalf, "left", "Left", "Move to Left Half", WindowActionGroup::halves, Fraction{0, 0, 0.5, 1}, 123, commandOption, "Left Arrow"},
    {rightHalf, "right", "Right", "Move to Right Half", WindowActionGroup::halves, Fraction{0.5, 0, 0.5, 1}, 124, commandOption, "Right Arrow"},
    {topHalf, "top", "Top", "Move to Top Half", WindowActionGroup::halves, Fraction{0, 0, 1, 0.5}, 126, commandOption, "Up Arrow"},
    {bottomHalf, "bottom", "Bottom", "Move to Bottom Half", WindowActionGroup::halves, Fraction{0, 0.5, 1, 0.5}, 125, commandOption, "Down Arrow"},
    {topLeft, "topLeft", "Top Left", "Move to Top Left", WindowActionGroup::quarters, Fraction{0, 0, 0.5, 0.5}, 14, commandShiftOption, "E"},
    {topRight, "topRight", "Top Right", "Move to Top Right", WindowActionGroup::quarters, Fraction{0.5, 0, 0.5, 0.5}, 15, commandShiftOption, "R"},
    {bottomLeft, "bottomLeft", "Bottom Left", "Move to Bottom Left", WindowActionGroup::quarters, Fraction{0, 0.5, 0.5, 0.5}, 17, commandShiftOption, "T"},
    {bottomRight, "bottomRight", "Bottom Right", "Move to Bottom Right", WindowActionGroup::quarters, Fraction{0.5, 0.5, 0.5, 0.5}, 16, commandShiftOption, "Y"},
    {leftThird, "leftThird", "Left Third", "Move to Left Third", WindowActionGroup::thirds, Fraction{0, 0, third, 1}, 123, commandOptionControl, "Left Arrow"},
    {centerThird, "centerThird", "Center Third", "Move to Center Third", WindowActionGroup::thirds, Fraction{third, 0, third, 1}, 125, commandOptionControl, "Down Arrow"},
    {rightThird, "rightThird", "Right Third", "Move to Right Third", WindowActionGroup::thirds, Fraction{twoThirds, 0, third, 1}, 124, commandOptionControl, "Right Arrow"},
    {leftTwoThirds, "leftTwoThirds", "Left Two Thirds", "Move to Left Two Thirds", WindowActionGroup::twoThirds, Fraction{0, 0, twoThirds, 1}, 14, commandOptionControl, "E"},
    {centerTwoThirds, "centerTwoThirds", "Center Two Thirds", "Move to Center Two Thirds", WindowActionGroup::twoThirds, Fraction{sixth, 0, twoThirds, 1}, 15, commandOptionControl, "R"},
    {rightTwoThirds, "rightTwoThirds", "Right Two Thirds", "Move to Right Two Thirds", WindowActionGroup::twoThirds, Fraction{third, 0, twoThirds, 1}, 17, commandOptionControl, "T"},
    {nextDisplay, "nextDisplay", "Next Display", "Move to Next Display", WindowActionGroup::displays, MoveDisplay{1}, 30, commandOption, "]"},
    {previousDisplay, "previousDisplay", "Previous Display", "Move to Previous Display", WindowActionGroup::displays, MoveDisplay{-1}, 33, commandOption, "["},
    {maximizeWindow, "maximize", "Maximize", "Maximize Window", WindowActionGroup::utility, Maximize{}, 36, commandOption, "Return"},
    {centerWindow, "center", "Center", "Center Window", WindowActionGroup::utility, Center{}, 36, commandOptionControl, "Return"},
    {restore, "restore", "Restore Previous Frame", "Restore Previous Frame", WindowActionGroup::utility, Restore{}, 35, commandShiftOption, "P"},
}};
// clang-format on

TEST(WindowAction, HasEveryRowOfTheCatalogueInItsOrder) {
    ASSERT_EQ(allWindowActions.size(), catalogue.size());
    std::size_t position = 0;
    for (const CatalogueRow& row : catalogue) {
        SCOPED_TRACE(row.rawValue);
        const WindowActionMetadata data = metadata(row.action);
        EXPECT_EQ(std::to_underlying(row.action), position);
        EXPECT_EQ(allWindowActions[position], row.action);
        EXPECT_EQ(rawValue(row.action), row.rawValue);
        EXPECT_EQ(data.title, row.title);
        EXPECT_EQ(data.menuTitle, row.menuTitle);
        EXPECT_EQ(data.group, row.group);
        EXPECT_TRUE(data.kind == row.kind);
        EXPECT_TRUE(kind(row.action) == row.kind);
        EXPECT_EQ(data.defaultShortcut.hotKey.keyCode, row.keyCode);
        EXPECT_EQ(data.defaultShortcut.hotKey.modifiers.rawValue(), row.modifiers);
        EXPECT_EQ(data.defaultShortcut.keyLabel, row.keyLabel);
        ++position;
    }
}

TEST(WindowAction, IsFoundByItsRawValue) {
    for (const CatalogueRow& row : catalogue) {
        SCOPED_TRACE(row.rawValue);
        EXPECT_EQ(windowActionFromRawValue(row.rawValue), row.action);
    }
}

TEST(WindowAction, IsNotFoundByAnyOtherText) {
    for (const std::string_view text :
         {"leftHalf", "rightHalf", "topHalf", "bottomHalf", "maximizeWindow", "centerWindow", "Left", "LEFT", "topleft",
          " left", "left ", "", "moveToSpace", "Restore Previous Frame"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(windowActionFromRawValue(text), std::nullopt);
    }
}

TEST(WindowAction, KindsDifferByKindAndByPayload) {
    EXPECT_TRUE(kind(previousDisplay) == WindowActionKind(MoveDisplay{-1}));
    EXPECT_FALSE(kind(previousDisplay) == kind(nextDisplay));
    EXPECT_FALSE(kind(maximizeWindow) == kind(centerWindow));
    EXPECT_FALSE(kind(leftHalf) == kind(rightHalf));
    EXPECT_FALSE(WindowActionKind(Fraction{0, 0, 1, 1}) == WindowActionKind(Fraction{0, 0, 1, 0.5}));
    EXPECT_FALSE(WindowActionKind(Fraction{0, 0, 1, 1}) == WindowActionKind(Maximize{}));
}

TEST(WindowAction, DefaultShortcutsArePairwiseDistinct) {
    std::set<std::pair<std::uint32_t, std::uint32_t>> combinations;
    for (const WindowAction action : allWindowActions) {
        const HotKey hotKey = metadata(action).defaultShortcut.hotKey;
        combinations.emplace(hotKey.keyCode, hotKey.modifiers.rawValue());
    }
    EXPECT_EQ(combinations.size(), 19U);
}

TEST(WindowAction, FractionsReachTheOuterEdgeExactlyWhereTheyShould) {
    const auto rightEdge = [](WindowAction action) {
        const Fraction fraction = std::get<Fraction>(kind(action));
        return fraction.x + fraction.width;
    };

    EXPECT_EQ(rightEdge(rightThird), 1.0);
    EXPECT_EQ(rightEdge(rightTwoThirds), 1.0);
    EXPECT_LT(rightEdge(centerTwoThirds), 1.0);
    EXPECT_LT(rightEdge(centerThird), 1.0);
}

TEST(WindowActionGroup, HoldsItsActionsInCatalogueOrder) {
    EXPECT_THAT(actionsIn(WindowActionGroup::halves), ElementsAre(leftHalf, rightHalf, topHalf, bottomHalf));
    EXPECT_THAT(actionsIn(WindowActionGroup::quarters), ElementsAre(topLeft, topRight, bottomLeft, bottomRight));
    EXPECT_THAT(actionsIn(WindowActionGroup::thirds), ElementsAre(leftThird, centerThird, rightThird));
    EXPECT_THAT(actionsIn(WindowActionGroup::twoThirds), ElementsAre(leftTwoThirds, centerTwoThirds, rightTwoThirds));
    EXPECT_THAT(actionsIn(WindowActionGroup::displays), ElementsAre(nextDisplay, previousDisplay));
    EXPECT_THAT(actionsIn(WindowActionGroup::utility), ElementsAre(maximizeWindow, centerWindow, restore));
}

TEST(WindowActionGroup, HasSixCasesWithTheirNamesAsRawValues) {
    EXPECT_THAT(allWindowActionGroups,
                ElementsAre(WindowActionGroup::halves, WindowActionGroup::quarters, WindowActionGroup::thirds,
                            WindowActionGroup::twoThirds, WindowActionGroup::displays, WindowActionGroup::utility));
    EXPECT_EQ(rawValue(WindowActionGroup::halves), "halves");
    EXPECT_EQ(rawValue(WindowActionGroup::quarters), "quarters");
    EXPECT_EQ(rawValue(WindowActionGroup::thirds), "thirds");
    EXPECT_EQ(rawValue(WindowActionGroup::twoThirds), "twoThirds");
    EXPECT_EQ(rawValue(WindowActionGroup::displays), "displays");
    EXPECT_EQ(rawValue(WindowActionGroup::utility), "utility");
}

}  // namespace
}  // namespace velmorand

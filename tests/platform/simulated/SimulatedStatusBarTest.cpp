#include "platform/simulated/SimulatedStatusBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const MenuItem header{.kind = MenuItemKind::sectionHeader, .title = "Windows"};
const MenuItem left{.title = "Left", .action = "move", .representedObject = "left", .isEnabled = true};
const MenuItem right{.title = "Right", .action = "move", .representedObject = "right"};
const MenuItem line{.kind = MenuItemKind::separator};
const MenuItem enabledHeader{.kind = MenuItemKind::sectionHeader, .title = "Odd", .isEnabled = true};
const MenuItem enabledLine{.kind = MenuItemKind::separator, .isEnabled = true};

class SimulatedStatusBarTest : public testing::Test {
protected:
    /// A menu with these lines that notes everything that is told.
    void attachMenu(std::vector<MenuItem> lines) {
        item->attachMenu({.needsUpdate =
                              [this, lines = std::move(lines)] {
                                  told.emplace_back("needs update");
                                  item->setMenuItems(lines);
                              },
                          .didClose = [this] { told.emplace_back("closed"); },
                          .chosen = [this](const MenuItem& chosen) { told.push_back("chosen " + chosen.title); }});
    }
    [[nodiscard]] SimulatedStatusItem& seen() { return *bar.items().at(0); }

    std::vector<std::string> told;
    SimulatedStatusBar bar;
    std::unique_ptr<StatusItem> item = bar.makeStatusItem();
};

TEST_F(SimulatedStatusBarTest, ShowsTheItemsThatAreAlive) {
    auto second = bar.makeStatusItem();
    EXPECT_THAT(bar.items(), ElementsAre(item.get(), second.get()));

    item.reset();
    EXPECT_THAT(bar.items(), ElementsAre(second.get()));
    second.reset();
    EXPECT_THAT(bar.items(), IsEmpty());
}

TEST_F(SimulatedStatusBarTest, TheButtonShowsWhatWasSetLast) {
    const StatusImage image{.kind = StatusImageKind::symbol, .name = "one", .description = "One", .isTemplate = true};
    EXPECT_TRUE(item->hasButton());
    EXPECT_EQ(seen().image(), std::nullopt);

    item->setImage({});
    item->setImage(image);
    item->setTitle("title");
    item->setToolTip("tip");

    EXPECT_EQ(seen().image(), image);
    EXPECT_EQ(seen().title(), "title");
    EXPECT_EQ(seen().toolTip(), "tip");
}

TEST_F(SimulatedStatusBarTest, AnItemWithoutAButtonShowsNothingButHasItsMenu) {
    bar.setMakesButtons(false);
    item = bar.makeStatusItem();
    item->setImage({});
    item->setTitle("title");
    item->setToolTip("tip");
    attachMenu({left});

    EXPECT_FALSE(item->hasButton());
    EXPECT_EQ(seen().image(), std::nullopt);
    EXPECT_EQ(seen().title(), "");
    EXPECT_EQ(seen().toolTip(), "");
    EXPECT_TRUE(seen().openMenu());
}

TEST_F(SimulatedStatusBarTest, HasTheImagesThatWereNotTakenAway) {
    EXPECT_EQ(bar.image(StatusImageKind::resource, "MenuBarTemplate", "Text"),
              (StatusImage{StatusImageKind::resource, "MenuBarTemplate", "Text", false}));
    EXPECT_EQ(bar.image(StatusImageKind::symbol, "MenuBarTemplate", ""), std::nullopt);
    EXPECT_EQ(bar.image(StatusImageKind::resource, "", ""), std::nullopt);

    bar.removeImage(StatusImageKind::resource, "MenuBarTemplate");
    bar.addImage(StatusImageKind::symbol, "star");
    EXPECT_EQ(bar.image(StatusImageKind::resource, "MenuBarTemplate", ""), std::nullopt);
    EXPECT_NE(bar.image(StatusImageKind::symbol, "star", ""), std::nullopt);
}

TEST_F(SimulatedStatusBarTest, OpeningTellsBeforeTheItemsAreSeen) {
    attachMenu({left, right});
    EXPECT_THAT(seen().menuItems(), IsEmpty());

    EXPECT_TRUE(seen().openMenu());
    EXPECT_TRUE(seen().openMenu()) << "it is open already";

    EXPECT_THAT(told, ElementsAre("needs update"));
    EXPECT_THAT(seen().menuItems(), ElementsAre(left, right));
}

TEST_F(SimulatedStatusBarTest, WithoutAMenuNothingOpens) {
    item->setMenuItems({left});

    EXPECT_FALSE(seen().openMenu());
    EXPECT_FALSE(seen().choose("Left"));
    seen().closeMenu();
    EXPECT_FALSE(seen().isMenuOpen());
}

TEST_F(SimulatedStatusBarTest, ClosesOnceWithoutAChoice) {
    attachMenu({left});
    seen().openMenu();

    seen().closeMenu();
    seen().closeMenu();

    EXPECT_THAT(told, ElementsAre("needs update", "closed"));
    EXPECT_FALSE(seen().isMenuOpen());
}

TEST_F(SimulatedStatusBarTest, AChoiceByPlaceOrTitleClosesTheMenuFirst) {
    attachMenu({header, left});
    seen().openMenu();
    EXPECT_TRUE(seen().choose(1));
    seen().openMenu();
    EXPECT_TRUE(seen().choose("Left"));

    EXPECT_THAT(told, ElementsAre("needs update", "closed", "chosen Left", "needs update", "closed", "chosen Left"));
}

TEST_F(SimulatedStatusBarTest, WhatCannotBeChosenIsRefused) {
    attachMenu({header, right, line, enabledHeader, enabledLine});
    EXPECT_FALSE(seen().choose(0U)) << "not open";
    seen().openMenu();

    for (const std::size_t index : {0U, 1U, 2U, 3U, 4U, 5U}) EXPECT_FALSE(seen().choose(index)) << index;
    EXPECT_FALSE(seen().choose("Nothing"));

    EXPECT_TRUE(seen().isMenuOpen());
    EXPECT_THAT(told, ElementsAre("needs update"));
}

TEST_F(SimulatedStatusBarTest, TheLinesOfAnOpenMenuCanBeReplaced) {
    attachMenu({left});
    seen().openMenu();

    item->setMenuItems({header, right});

    EXPECT_THAT(seen().menuItems(), ElementsAre(header, right));
    EXPECT_FALSE(seen().choose("Left"));
}

TEST_F(SimulatedStatusBarTest, TheItemMayGoInsideAnyOfItsEvents) {
    item->attachMenu({.needsUpdate = [this] { item.reset(); }, .didClose = {}, .chosen = {}});
    EXPECT_FALSE(seen().openMenu());

    item = bar.makeStatusItem();
    item->attachMenu({.needsUpdate = [this] { item->setMenuItems({left}); },
                      .didClose = [this] { item.reset(); },
                      .chosen = [this](const MenuItem&) { told.emplace_back("chosen"); }});
    seen().openMenu();
    EXPECT_TRUE(seen().choose("Left"));

    item = bar.makeStatusItem();
    item->attachMenu({.needsUpdate = [this] { item->setMenuItems({left}); },
                      .didClose = {},
                      .chosen = [this](const MenuItem&) { item.reset(); }});
    seen().openMenu();
    EXPECT_TRUE(seen().choose("Left"));

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(bar.items(), SizeIs(0));
}

TEST_F(SimulatedStatusBarTest, EventsThatNobodyWantsAreNotTold) {
    item->attachMenu({});
    item->setMenuItems({left});

    EXPECT_TRUE(seen().openMenu());
    EXPECT_TRUE(seen().choose("Left"));
    EXPECT_FALSE(seen().isMenuOpen());
}

}  // namespace
}  // namespace velmorand

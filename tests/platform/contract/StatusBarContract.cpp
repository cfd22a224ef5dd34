#include "platform/StatusBar.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const MenuItem header{.kind = MenuItemKind::sectionHeader, .title = "Windows"};
const MenuItem left{.title = "Left_half & more", .action = "move", .representedObject = "left", .isEnabled = true};
const MenuItem right{.title = "Right", .action = "move", .representedObject = "right"};
const MenuItem line{.kind = MenuItemKind::separator};
const MenuItem quit{.title = "Quit", .action = "quit", .isEnabled = true};

}  // namespace

void StatusBarContract::SetUp() {
    VELMORAND_NEEDS(Ability::showStatusItems);
    desktop->showStatusBar();
    item = bar().makeStatusItem();
    item->attachMenu({.needsUpdate =
                          [this] {
                              told.emplace_back("needs update");
                              item->setMenuItems(lines);
                          },
                      .didClose = [this] { told.emplace_back("closed"); },
                      .chosen =
                          [this](const MenuItem& chosen) {
                              told.push_back("chosen " + chosen.action + " " + chosen.representedObject.value_or("-"));
                              choices.push_back(chosen);
                          }});
}

bool StatusBarContract::waitForTold(const std::vector<std::string>& expected) {
    return desktop->runUntil([&] { return told == expected; }, deadline);
}

TEST_P(StatusBarContract, HasTheImagesOfTheProgramAndNoOthers) {
    EXPECT_EQ(bar().image(StatusImageKind::resource, "MenuBarTemplate", "Text"),
              (StatusImage{StatusImageKind::resource, "MenuBarTemplate", "Text", false}));
    EXPECT_NE(bar().image(StatusImageKind::symbol, "rectangle.3.group", ""), std::nullopt);
    EXPECT_NE(bar().image(StatusImageKind::symbol, "exclamationmark.triangle", ""), std::nullopt);
    EXPECT_EQ(bar().image(StatusImageKind::symbol, "no.such.symbol", ""), std::nullopt);
    EXPECT_EQ(bar().image(StatusImageKind::resource, "", ""), std::nullopt);
}

TEST_P(StatusBarContract, TheMenuShowsTheLinesThatWereSetWhenItOpened) {
    lines = {header, left, right, line, quit};
    desktop->openStatusMenu();
    EXPECT_THAT(desktop->statusMenu(),
                ElementsAre(ContractMenuLine{"Windows", false}, ContractMenuLine{"Left_half & more", true},
                            ContractMenuLine{"Right", false}, ContractMenuLine{"", false},
                            ContractMenuLine{"Quit", true}));
    desktop->closeStatusMenu();
    lines = {quit};
    desktop->openStatusMenu();

    EXPECT_THAT(desktop->statusMenu(), ElementsAre(ContractMenuLine{"Quit", true}));
    EXPECT_TRUE(waitForTold({"needs update", "closed", "needs update"}));
}

TEST_P(StatusBarContract, TheChosenLineIsToldAsItWasSet) {
    lines = {header, left, quit};
    desktop->openStatusMenu();
    desktop->chooseFromStatusMenu(1);
    EXPECT_TRUE(waitForTold({"needs update", "closed", "chosen move left"}));
    desktop->openStatusMenu();
    desktop->chooseFromStatusMenu(2);

    EXPECT_TRUE(waitForTold({"needs update", "closed", "chosen move left", "needs update", "closed", "chosen quit -"}));
    EXPECT_THAT(choices, ElementsAre(left, quit));
}

TEST_P(StatusBarContract, WhatIsDisabledAHeaderOrASeparatorIsNotChosen) {
    lines = {header, right, line};
    desktop->openStatusMenu();

    for (const std::size_t place : {0U, 1U, 2U}) desktop->chooseFromStatusMenu(place);
    desktop->closeStatusMenu();

    EXPECT_TRUE(waitForTold({"needs update", "closed"}));
    EXPECT_FALSE(desktop->runUntil([this] { return !choices.empty(); }, patience));
}

TEST_P(StatusBarContract, TheLinesOfAnOpenMenuCanBeReplaced) {
    lines = {left, quit};
    desktop->openStatusMenu();

    item->setMenuItems({quit});

    EXPECT_THAT(desktop->statusMenu(), ElementsAre(ContractMenuLine{"Quit", true}));
}

TEST_P(StatusBarContract, TheItemMayGoInsideItsEvents) {
    bool isChosen = false;
    item->attachMenu({.needsUpdate = [this] { item->setMenuItems({quit}); },
                      .didClose = {},
                      .chosen =
                          [&](const MenuItem&) {
                              isChosen = true;
                              item.reset();
                          }});
    desktop->openStatusMenu();
    desktop->chooseFromStatusMenu(0);

    EXPECT_TRUE(desktop->runUntil([&] { return isChosen; }, deadline));
    EXPECT_THAT(told, IsEmpty()) << "by the events that it had before";
}

TEST_P(StatusBarContract, TheButtonTakesAnyText) {
    ASSERT_TRUE(item->hasButton());
    for (const char* text : {"", "Title", "a\nb\x1b", "\xff\xfe", "<b>&amp;_"}) {
        item->setTitle(text);
        item->setToolTip(text);
    }
    item->setImage({StatusImageKind::resource, "no such image", "", false});
    lines = {{.title = std::string(100'000, 'a') + "\xff\n", .action = "long", .isEnabled = true}};

    desktop->openStatusMenu();
    desktop->chooseFromStatusMenu(0);
    EXPECT_TRUE(waitForTold({"needs update", "closed", "chosen long -"}));
}

}  // namespace velmorand

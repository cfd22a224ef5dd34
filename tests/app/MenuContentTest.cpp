#include "app/MenuContent.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace velmorand {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using enum WindowAction;

constexpr MenuCapabilitySnapshot everything{
    .isTrusted = true, .screenCount = 2, .frontmostEligible = true, .hasRestoreEntryForFrontmostPid = true};

std::optional<KeyboardShortcut> noShortcut(WindowAction /*action*/) {
    return std::nullopt;
}

std::optional<KeyboardShortcut> defaultShortcut(WindowAction action) {
    return metadata(action).defaultShortcut;
}

/// The item of one action, with this shortcut.
MenuItem itemFor(WindowAction action, const std::optional<KeyboardShortcut>& shortcut,
                 const MenuCapabilitySnapshot& capabilities = everything) {
    const std::array actions{action};
    return actionSection(actions, capabilities, [&](WindowAction) { return shortcut; }).at(1);
}

/// The raw values of the actions whose items are enabled.
std::vector<std::string> enabledActions(const MenuCapabilitySnapshot& capabilities) {
    std::vector<std::string> enabled;
    for (const MenuItem& item : actionSection(allWindowActions, capabilities, noShortcut)) {
        if (item.isEnabled) enabled.push_back(item.representedObject.value_or(""));
    }
    return enabled;
}

std::vector<std::string> titlesOf(const std::vector<MenuItem>& items) {
    std::vector<std::string> titles;
    for (const MenuItem& item : items) {
        const bool isHeader = item.kind == MenuItemKind::sectionHeader;
        titles.push_back(item.kind == MenuItemKind::separator ? "---" : (isHeader ? "# " : "") + item.title);
    }
    return titles;
}

TEST(MenuContentTest, WithPermissionNothingIsSaidOfIt) {
    EXPECT_THAT(permissionSection(true), IsEmpty());
}

TEST(MenuContentTest, WithoutPermissionTheMenuSaysWhatIsMissingAndOpensTheSettings) {
    EXPECT_THAT(permissionSection(false), ElementsAre(MenuItem{.title = "Accessibility permission required"},
                                                      MenuItem{.title = "Enable Velmorand under Privacy & Security"},
                                                      MenuItem{.title = "Open Accessibility Settings...",
                                                               .action = "requestAccessibilityAccess",
                                                               .isEnabled = true},
                                                      MenuItem{.kind = MenuItemKind::separator}));
}

TEST(MenuContentTest, WithoutProblemsNothingIsListed) {
    EXPECT_THAT(problemSection({}), IsEmpty());
}

TEST(MenuContentTest, EachProblemIsALineThatDoesNothing) {
    const std::vector<std::string> problems{"First", "Second"};
    EXPECT_THAT(problemSection(problems), ElementsAre(MenuItem{.title = "First"}, MenuItem{.title = "Second"},
                                                      MenuItem{.kind = MenuItemKind::separator}));
}

TEST(MenuContentTest, TheActionsStandUnderTheirHeadingsInTheOrderOfTheCatalogue) {
    EXPECT_THAT(titlesOf(actionSection(allWindowActions, everything, noShortcut)),
                ElementsAre("# Edges", "Move to Left Half", "Move to Right Half", "Move to Top Half",
                            "Move to Bottom Half", "---", "# Corners", "Move to Top Left", "Move to Top Right",
                            "Move to Bottom Left", "Move to Bottom Right", "---", "# Thirds", "Move to Left Third",
                            "Move to Center Third", "Move to Right Third", "---", "# Two Thirds",
                            "Move to Left Two Thirds", "Move to Center Two Thirds", "Move to Right Two Thirds", "---",
                            "# Displays", "Move to Next Display", "Move to Previous Display", "---", "# Window Actions",
                            "Maximize Window", "Center Window", "Restore Previous Frame", "---"));
}

TEST(MenuContentTest, AGroupWithoutActionsIsLeftOut) {
    const std::array actions{leftHalf, restore};
    EXPECT_THAT(
        titlesOf(actionSection(actions, everything, noShortcut)),
        ElementsAre("# Edges", "Move to Left Half", "---", "# Window Actions", "Restore Previous Frame", "---"));
    EXPECT_THAT(actionSection({}, everything, noShortcut), IsEmpty());
}

TEST(MenuContentTest, AHeadingDoesNothing) {
    EXPECT_EQ(actionSection(allWindowActions, everything, noShortcut).front(),
              (MenuItem{.kind = MenuItemKind::sectionHeader, .title = "Edges"}));
}

TEST(MenuContentTest, AnActionWithoutAShortcutHasNoKey) {
    EXPECT_EQ(
        itemFor(leftHalf, std::nullopt),
        (MenuItem{
            .title = "Move to Left Half", .action = "performAction:", .representedObject = "left", .isEnabled = true}));
}

TEST(MenuContentTest, AShortcutIsAKeyEquivalentWithExactlyItsModifiers) {
    const MenuItem item = itemFor(leftHalf, defaultShortcut(leftHalf));
    EXPECT_EQ(item.title, "Move to Left Half");
    EXPECT_EQ(item.keyEquivalent, "\uF702");
    EXPECT_EQ(item.keyEquivalentModifiers, (KeyEquivalentModifiers{.option = true, .command = true}));
}

struct ModifierRow {
    ShortcutModifiers modifiers;
    KeyEquivalentModifiers shown;
};

TEST(MenuContentTest, EachModifierIsShownAsItself) {
    const std::vector<ModifierRow> rows{
        {ShortcutModifiers::control, {.control = true}},
        {ShortcutModifiers::option, {.option = true}},
        {ShortcutModifiers::shift, {.shift = true}},
        {ShortcutModifiers::command, {.command = true}},
        {ShortcutModifiers(0x1B00), {.control = true, .option = true, .shift = true, .command = true}},
        {ShortcutModifiers(0x10001), {}},
    };
    for (const ModifierRow& row : rows)
        EXPECT_EQ(itemFor(leftHalf, KeyboardShortcut{{40, row.modifiers}, "K"}).keyEquivalentModifiers, row.shown);
}

TEST(MenuContentTest, AShortcutWithoutAKeyEquivalentIsWrittenBehindTheTitle) {
    const MenuItem item = itemFor(leftHalf, KeyboardShortcut{{122, ShortcutModifiers(0x1B00)}, "Key 122"});
    EXPECT_EQ(item.title, "Move to Left Half (⌃ + ⌥ + ⇧ + ⌘ + Key 122)");
    EXPECT_EQ(item.keyEquivalent, "");
    EXPECT_TRUE(item.keyEquivalentModifiers.command) << "the mask stays";
}

TEST(MenuContentTest, AShortcutWithoutModifiersOrKeyEquivalentIsWrittenAlone) {
    EXPECT_EQ(itemFor(leftHalf, KeyboardShortcut{{122, {}}, "F1"}).title, "Move to Left Half (F1)");
}

struct EnabledRow {
    std::string_view name;
    MenuCapabilitySnapshot capabilities;
    std::size_t enabled;
};

TEST(MenuContentTest, ActionsAreEnabledWhereTheyArePossible) {
    std::vector<std::string> all;
    for (const WindowAction action : allWindowActions) all.emplace_back(rawValue(action));
    for (const bool isTrusted : {false, true}) {
        for (const bool isEligible : {false, true}) {
            for (const int screens : {0, 1, 2, 6}) {
                for (const bool canRestore : {false, true}) {
                    SCOPED_TRACE(testing::Message() << isTrusted << isEligible << screens << canRestore);
                    std::vector<std::string> expected = all;
                    if (screens < 2) std::erase_if(expected, [](auto& name) { return name.ends_with("Display"); });
                    if (!canRestore) std::erase(expected, "restore");
                    if (!isTrusted || !isEligible) expected.clear();
                    EXPECT_EQ(enabledActions({.isTrusted = isTrusted,
                                              .screenCount = screens,
                                              .frontmostEligible = isEligible,
                                              .hasRestoreEntryForFrontmostPid = canRestore}),
                              expected);
                }
            }
        }
    }
}

TEST(MenuContentTest, TheApplicationSectionEndsTheMenu) {
    EXPECT_THAT(applicationSection(std::nullopt),
                ElementsAre(MenuItem{.title = "Refresh Permissions", .action = "refreshPermissions", .isEnabled = true},
                            MenuItem{.title = "Settings...",
                                     .action = "openSettings",
                                     .keyEquivalent = ",",
                                     .keyEquivalentModifiers = {.command = true},
                                     .isEnabled = true},
                            MenuItem{.kind = MenuItemKind::separator},
                            MenuItem{.title = "Quit Velmorand",
                                     .action = "quit",
                                     .keyEquivalent = "q",
                                     .keyEquivalentModifiers = {.command = true},
                                     .isEnabled = true}));
}

TEST(MenuContentTest, TheFrontmostApplicationCanBeIgnoredWithoutASeparatorBehindIt) {
    const auto items = applicationSection(MenuApplication{"Editor", "org.example.Editor", false});
    EXPECT_THAT(items, SizeIs(5));
    EXPECT_EQ(items.front(), (MenuItem{.title = "Ignore Editor",
                                       .action = "ignoreCurrentApp:",
                                       .representedObject = "org.example.Editor",
                                       .isEnabled = true}));
    EXPECT_EQ(items[1].title, "Refresh Permissions");
}

TEST(MenuContentTest, AnIgnoredApplicationCanBeTakenBack) {
    EXPECT_EQ(applicationSection(MenuApplication{"Editor", "org.example.Editor", true}).front(),
              (MenuItem{.title = "Stop Ignoring Editor",
                        .action = "unignoreCurrentApp:",
                        .representedObject = "org.example.Editor",
                        .isEnabled = true}));
}

}  // namespace
}  // namespace velmorand

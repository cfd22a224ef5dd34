#include "app/MenuContent.h"

#include "shortcuts/KeyLabels.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>
#include <variant>

namespace velmorand {
namespace {

MenuItem separator() {
    return {.kind = MenuItemKind::separator};
}

MenuItem line(std::string_view title) {
    return {.title = std::string(title)};
}

MenuItem command(std::string_view title, std::string_view action) {
    return {.title = std::string(title), .action = std::string(action), .isEnabled = true};
}

MenuItem commandWithKey(std::string_view title, std::string_view action, std::string_view key) {
    MenuItem item = command(title, action);
    item.keyEquivalent = key;
    item.keyEquivalentModifiers.command = true;
    return item;
}

std::string_view heading(WindowActionGroup group) {
    switch (group) {
        case WindowActionGroup::halves: return "Edges";
        case WindowActionGroup::quarters: return "Corners";
        case WindowActionGroup::thirds: return "Thirds";
        case WindowActionGroup::twoThirds: return "Two Thirds";
        case WindowActionGroup::displays: return "Displays";
        case WindowActionGroup::utility: return "Window Actions";
    }
    std::unreachable();
}

KeyEquivalentModifiers keyEquivalentModifiers(ShortcutModifiers modifiers) {
    return {.control = modifiers.contains(ShortcutModifiers::control),
            .option = modifiers.contains(ShortcutModifiers::option),
            .shift = modifiers.contains(ShortcutModifiers::shift),
            .command = modifiers.contains(ShortcutModifiers::command)};
}

/// A key that no menu draws is written out behind the title.
std::string titleWithShortcut(std::string_view title, const KeyboardShortcut& shortcut) {
    std::vector<std::string_view> keys = displaySymbols(shortcut.hotKey.modifiers);
    keys.emplace_back(shortcut.keyLabel);
    return fmt::format("{} ({})", title, fmt::join(keys, " + "));
}

bool isPossible(WindowAction action, const MenuCapabilitySnapshot& capabilities) {
    if (!capabilities.isTrusted || !capabilities.frontmostEligible) return false;
    const WindowActionKind actionKind = kind(action);
    if (std::holds_alternative<MoveDisplay>(actionKind)) return capabilities.screenCount > 1;
    if (std::holds_alternative<Restore>(actionKind)) return capabilities.hasRestoreEntryForFrontmostPid;
    return true;
}

MenuItem actionItem(WindowAction action, const MenuCapabilitySnapshot& capabilities,
                    const std::optional<KeyboardShortcut>& shortcut) {
    MenuItem item = command(metadata(action).menuTitle, menu_action::performAction);
    item.representedObject = std::string(rawValue(action));
    item.isEnabled = isPossible(action, capabilities);
    if (!shortcut) return item;
    item.keyEquivalent = menuKeyEquivalent(shortcut->hotKey.keyCode, shortcut->keyLabel);
    item.keyEquivalentModifiers = keyEquivalentModifiers(shortcut->hotKey.modifiers);
    if (item.keyEquivalent.empty()) item.title = titleWithShortcut(item.title, *shortcut);
    return item;
}

MenuItem ignoreItem(const MenuApplication& application) {
    MenuItem item = application.isIgnored
                        ? command("Stop Ignoring " + application.name, menu_action::unignoreCurrentApp)
                        : command("Ignore " + application.name, menu_action::ignoreCurrentApp);
    item.representedObject = application.bundleIdentifier;
    return item;
}

}  // namespace

std::vector<MenuItem> permissionSection(bool isTrusted) {
    if (isTrusted) return {};
    return {line("Accessibility permission required"), line("Enable Velmorand under Privacy & Security"),
            command("Open Accessibility Settings...", menu_action::requestAccessibilityAccess), separator()};
}

std::vector<MenuItem> problemSection(std::span<const std::string> problems) {
    std::vector<MenuItem> items;
    for (const std::string& problem : problems) items.push_back(line(problem));
    if (!items.empty()) items.push_back(separator());
    return items;
}

std::vector<MenuItem> actionSection(std::span<const WindowAction> actions, const MenuCapabilitySnapshot& capabilities,
                                    const EffectiveShortcut& shortcut) {
    std::vector<MenuItem> items;
    for (const WindowActionGroup group : allWindowActionGroups) {
        const auto isInGroup = [group](WindowAction action) { return metadata(action).group == group; };
        if (std::ranges::none_of(actions, isInGroup)) continue;
        items.push_back({.kind = MenuItemKind::sectionHeader, .title = std::string(heading(group))});
        for (const WindowAction action : actions) {
            if (isInGroup(action)) items.push_back(actionItem(action, capabilities, shortcut(action)));
        }
        items.push_back(separator());
    }
    return items;
}

std::vector<MenuItem> applicationSection(const std::optional<MenuApplication>& frontmost) {
    std::vector<MenuItem> items;
    if (frontmost) items.push_back(ignoreItem(*frontmost));
    items.push_back(command("Refresh Permissions", menu_action::refreshPermissions));
    items.push_back(commandWithKey("Settings...", menu_action::openSettings, ","));
    items.push_back(separator());
    items.push_back(commandWithKey("Quit Velmorand", menu_action::quit, "q"));
    return items;
}

}  // namespace velmorand

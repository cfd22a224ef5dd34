#include "preferences/PreferencesStore.h"

#include <algorithm>
#include <utility>

namespace velmorand {

PreferencesStore::PreferencesStore(PreferencesState initial) : state_(std::move(initial)) {}

std::optional<KeyboardShortcut> PreferencesStore::effectiveShortcut(WindowAction action) const {
    return velmorand::effectiveShortcut(current(), action);
}

std::vector<WindowAction> PreferencesStore::conflictingActions(std::uint32_t keyCode, ShortcutModifiers modifiers,
                                                               WindowAction edited) const {
    const HotKey wanted{keyCode, modifiers};
    std::vector<WindowAction> conflicting;
    for (const WindowAction action : allWindowActions) {
        if (action == edited) continue;
        const auto shortcut = effectiveShortcut(action);
        if (shortcut && shortcut->hotKey == wanted) conflicting.push_back(action);
    }
    return conflicting;
}

std::vector<ShortcutConflict> PreferencesStore::conflictGroups() const {
    std::vector<ShortcutConflict> groups;
    for (const WindowAction action : allWindowActions) {
        const auto shortcut = effectiveShortcut(action);
        if (!shortcut) continue;
        const auto group = std::ranges::find(groups, shortcut->hotKey, &ShortcutConflict::hotKey);
        if (group == groups.end())
            groups.push_back({shortcut->hotKey, {action}});
        else
            group->actions.push_back(action);
    }
    std::erase_if(groups, [](const ShortcutConflict& group) { return group.actions.size() < 2; });
    return groups;
}

}  // namespace velmorand

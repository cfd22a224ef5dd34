#include "preferences/PreferencesState.h"

#include <algorithm>

namespace velmorand {

const PreferencesState& defaultPreferencesState() {
    static const PreferencesState state = [] {
        PreferencesState defaults;
        for (const WindowAction action : allWindowActions)
            defaults.shortcuts.emplace(rawValue(action), metadata(action).defaultShortcut);
        return defaults;
    }();
    return state;
}

std::optional<KeyboardShortcut> effectiveShortcut(const PreferencesState& state, WindowAction action) {
    if (std::ranges::count(state.disabledShortcutActions, rawValue(action)) > 0) return std::nullopt;
    const auto assigned = state.shortcuts.find(std::string(rawValue(action)));
    return assigned == state.shortcuts.end() ? metadata(action).defaultShortcut : assigned->second;
}

}  // namespace velmorand

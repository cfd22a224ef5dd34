#include "preferences/PreferencesState.h"

#include <algorithm>
#include <functional>

namespace velmorand {
namespace {

void sortWithoutDuplicates(std::vector<std::string>& list) {
    std::ranges::sort(list);
    const auto repeated = std::ranges::unique(list);
    list.erase(repeated.begin(), repeated.end());
}

bool isAction(const std::string& name) {
    return windowActionFromRawValue(name).has_value();
}

}  // namespace

const PreferencesState& defaultPreferencesState() {
    static const PreferencesState state = [] {
        PreferencesState defaults;
        for (const WindowAction action : allWindowActions)
            defaults.shortcuts.emplace(rawValue(action), metadata(action).defaultShortcut);
        return defaults;
    }();
    return state;
}

PreferencesState normalized(PreferencesState state) {
    sortWithoutDuplicates(state.ignoredApps);
    sortWithoutDuplicates(state.disabledShortcutActions);
    std::erase_if(state.disabledShortcutActions, std::not_fn(isAction));
    state.outerPadding = outerPaddingLimit.limited(state.outerPadding);
    state.innerGap = innerGapLimit.limited(state.innerGap);
    state.animationDuration = animationDurationLimit.limited(state.animationDuration);
    std::erase_if(state.shortcuts, [](const auto& entry) { return !isAction(entry.first); });
    return state;
}

PreferencesState completed(PreferencesState state) {
    for (const auto& [action, shortcut] : defaultPreferencesState().shortcuts)
        state.shortcuts.try_emplace(action, shortcut);
    return state;
}

std::optional<KeyboardShortcut> effectiveShortcut(const PreferencesState& state, WindowAction action) {
    if (std::ranges::count(state.disabledShortcutActions, rawValue(action)) > 0) return std::nullopt;
    const auto assigned = state.shortcuts.find(std::string(rawValue(action)));
    return assigned == state.shortcuts.end() ? metadata(action).defaultShortcut : assigned->second;
}

}  // namespace velmorand

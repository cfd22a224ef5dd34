#include "preferences/PreferencesStore.h"

#include "base/UnicodeText.h"
#include "platform/UserDefaults.h"
#include "preferences/PreferencesStateCoding.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace velmorand {
namespace {

/// A slider in motion is stored once it has rested this long.
constexpr std::chrono::milliseconds saveDelay{250};

void disable(PreferencesState& state, WindowAction action) {
    const std::string name(rawValue(action));
    state.shortcuts.erase(name);
    if (std::ranges::count(state.disabledShortcutActions, name) == 0) state.disabledShortcutActions.push_back(name);
}

void assign(PreferencesState& state, WindowAction action, const KeyboardShortcut& shortcut) {
    const std::string name(rawValue(action));
    state.shortcuts.insert_or_assign(name, KeyboardShortcut{shortcut.hotKey, validUtf8(shortcut.keyLabel)});
    std::erase(state.disabledShortcutActions, name);
}

}  // namespace

PreferencesStore::PreferencesStore(UserDefaults& userDefaults, RunLoop& runLoop, Log& log)
    : userDefaults_(userDefaults),
      runLoop_(runLoop),
      logger_(log, "preferences"),
      state_(load(userDefaults, logger_)) {}

PreferencesStore::~PreferencesStore() = default;

PreferencesState PreferencesStore::load(UserDefaults& userDefaults, const Logger& logger) {
    const auto useDefaults = [&logger](std::string_view reason) {
        logger.error("Failed to load preferences, using defaults: {}", reason);
        return defaultPreferencesState();
    };
    const auto document = userDefaults.data(key);
    if (!document) return useDefaults(document.error().description);
    const std::optional<std::string>& stored = *document;
    if (!stored) return defaultPreferencesState();
    auto state = decodePreferencesState(*stored);
    if (!state) return useDefaults(state.error().description);
    return completed(std::move(*state));
}

template <typename Change>
void PreferencesStore::changeNow(Change&& change) {
    state_.modify(std::forward<Change>(change));
    pendingSave_.reset();
    saveNow();
}

template <typename Change>
void PreferencesStore::changeSoon(Change&& change) {
    state_.modify(std::forward<Change>(change));
    scheduleSave();
}

void PreferencesStore::setOuterPadding(double padding) {
    changeSoon([=](PreferencesState& state) { state.outerPadding = outerPaddingLimit.limited(padding); });
}

void PreferencesStore::setInnerGap(double gap) {
    changeSoon([=](PreferencesState& state) { state.innerGap = innerGapLimit.limited(gap); });
}

void PreferencesStore::setAnimationDuration(double duration) {
    changeSoon([=](PreferencesState& state) { state.animationDuration = animationDurationLimit.limited(duration); });
}

void PreferencesStore::setEnableAnimations(bool enabled) {
    changeNow([=](PreferencesState& state) { state.enableAnimations = enabled; });
}

void PreferencesStore::setClampToVisibleArea(bool clamped) {
    changeNow([=](PreferencesState& state) { state.clampToVisibleArea = clamped; });
}

void PreferencesStore::addIgnoredApp(std::string_view bundleIdentifier) {
    addIgnoredApps(std::array{std::string(bundleIdentifier)});
}

void PreferencesStore::addIgnoredApps(std::span<const std::string> bundleIdentifiers) {
    // Copies, as they may be the record's own.
    std::vector<std::string> identifiers;
    for (const std::string& identifier : bundleIdentifiers) identifiers.push_back(validUtf8(identifier));
    changeNow([&](PreferencesState& state) {
        for (std::string& identifier : identifiers) {
            if (std::ranges::count(state.ignoredApps, identifier) == 0)
                state.ignoredApps.push_back(std::move(identifier));
        }
    });
}

void PreferencesStore::removeIgnoredApp(std::string_view bundleIdentifier) {
    changeNow([identifier = validUtf8(bundleIdentifier)](PreferencesState& state) {
        std::erase(state.ignoredApps, identifier);
    });
}

void PreferencesStore::setShortcut(WindowAction action, const KeyboardShortcut& shortcut) {
    changeNow([&](PreferencesState& state) { assign(state, action, shortcut); });
}

void PreferencesStore::assignShortcut(WindowAction action, const KeyboardShortcut& shortcut,
                                      std::span<const WindowAction> conflictingActions) {
    // A copy, as the shortcut may be the record's own, of an action that is disabled here.
    changeNow([&, assigned = shortcut](PreferencesState& state) {
        for (const WindowAction conflicting : conflictingActions) disable(state, conflicting);
        assign(state, action, assigned);
        state = normalized(std::move(state));
    });
}

void PreferencesStore::removeShortcut(WindowAction action) {
    changeNow([=](PreferencesState& state) { disable(state, action); });
}

void PreferencesStore::resetAllShortcuts() {
    changeNow([](PreferencesState& state) {
        state.shortcuts = defaultPreferencesState().shortcuts;
        state.disabledShortcutActions.clear();
    });
}

void PreferencesStore::saveNow() {
    const auto fail = [this](std::string_view reason) { logger_.error("Failed to persist preferences: {}", reason); };
    const auto document = encodePreferencesState(current());
    if (!document) {
        fail(document.error().description);
        return;
    }
    if (const auto stored = userDefaults_.setData(key, *document); !stored) fail(stored.error().description);
}

void PreferencesStore::scheduleSave() {
    pendingSave_ = runLoop_.after(saveDelay, [this] {
        pendingSave_.reset();
        saveNow();
    });
}

void PreferencesStore::savePending() {
    if (!pendingSave_) return;
    pendingSave_.reset();
    saveNow();
}

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

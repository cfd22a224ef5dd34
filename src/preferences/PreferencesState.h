#pragma once

#include "shortcuts/KeyboardShortcut.h"
#include "windows/WindowAction.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// The closed range a number setting lies in.
struct PreferencesLimit {
    double lowest;
    double highest;

    /// A value at or beyond an end becomes that end.
    [[nodiscard]] constexpr double limited(double value) const {
        if (value <= lowest) return lowest;
        return value > highest ? highest : value;
    }
};

inline constexpr PreferencesLimit outerPaddingLimit{0, 50};
inline constexpr PreferencesLimit innerGapLimit{0, 50};
inline constexpr PreferencesLimit animationDurationLimit{0.05, 0.5};

/// All of the user's settings. A plain value: every reader gets a copy, and only the preferences store replaces
/// the one that counts.
struct PreferencesState {
    /// Assigned shortcut per action, keyed by the action's raw value.
    std::map<std::string, KeyboardShortcut> shortcuts;
    /// Bundle identifiers of applications whose windows are never moved.
    std::vector<std::string> ignoredApps;
    /// Keep computed frames inside the part of the screen that panels leave free.
    bool clampToVisibleArea = true;
    /// Raw values of the actions whose shortcut the user removed.
    std::vector<std::string> disabledShortcutActions;
    /// Points between a placed window and the screen edge.
    double outerPadding = 0;
    /// Points between neighbouring placed windows.
    double innerGap = 0;
    bool enableAnimations = false;
    /// Seconds.
    double animationDuration = 0.15;

    bool operator==(const PreferencesState&) const = default;
};

/// The record of a user who never changed anything: every action has its default shortcut.
[[nodiscard]] const PreferencesState& defaultPreferencesState();

/// The record with every value as it may be: the lists without duplicates and sorted byte by byte, numbers within their
/// limits, and nothing about actions that do not exist.
[[nodiscard]] PreferencesState normalized(PreferencesState state);

/// The record with a shortcut for every action: those that have none get their default.
[[nodiscard]] PreferencesState completed(PreferencesState state);

/// The shortcut that counts for an action: none when it is disabled, else the assigned one, else its default.
[[nodiscard]] std::optional<KeyboardShortcut> effectiveShortcut(const PreferencesState& state, WindowAction action);

}  // namespace velmorand

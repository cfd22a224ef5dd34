#pragma once

#include "base/Published.h"
#include "preferences/PreferencesState.h"
#include "shortcuts/KeyboardShortcut.h"
#include "windows/WindowAction.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmorand {

/// A combination that is the effective shortcut of two or more actions.
struct ShortcutConflict {
    HotKey hotKey;
    /// In catalogue order.
    std::vector<WindowAction> actions;

    bool operator==(const ShortcutConflict&) const = default;
};

/// The single owner of the user's settings: publishes the current record and answers the questions that several
/// parts of the program ask about shortcuts. Main thread only.
class PreferencesStore {
public:
    explicit PreferencesStore(PreferencesState initial = defaultPreferencesState());

    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;
    ~PreferencesStore() = default;

    /// The published record.
    [[nodiscard]] Published<PreferencesState>& state() { return state_; }
    [[nodiscard]] const PreferencesState& current() const { return state_.value(); }

    /// The shortcut that counts for an action; absent when the action is disabled.
    [[nodiscard]] std::optional<KeyboardShortcut> effectiveShortcut(WindowAction action) const;

    /// The other actions, in catalogue order, whose effective shortcut has this key and these modifiers. Labels
    /// are not compared; disabled actions never conflict.
    [[nodiscard]] std::vector<WindowAction> conflictingActions(std::uint32_t keyCode, ShortcutModifiers modifiers,
                                                               WindowAction edited) const;

    /// Every combination shared by two or more actions, in the catalogue order of their first actions.
    [[nodiscard]] std::vector<ShortcutConflict> conflictGroups() const;

private:
    Published<PreferencesState> state_;
};

}  // namespace velmorand

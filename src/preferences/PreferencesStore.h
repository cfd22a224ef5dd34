#pragma once

#include "base/Published.h"
#include "platform/Logger.h"
#include "platform/RunLoop.h"
#include "preferences/PreferencesState.h"
#include "shortcuts/KeyboardShortcut.h"
#include "windows/WindowAction.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

class UserDefaults;

/// A combination that is the effective shortcut of two or more actions.
struct ShortcutConflict {
    HotKey hotKey;
    /// In catalogue order.
    std::vector<WindowAction> actions;

    bool operator==(const ShortcutConflict&) const = default;
};

/// The single owner of the user's settings: loads them at the start, publishes the current record, changes it on the
/// user's behalf and stores each change. A discrete change is stored at once; the settings of sliders a moment after
/// the last movement. What cannot be stored stays in force until the program ends, and the log says so. Main thread
/// only.
class PreferencesStore {
public:
    /// Under this key the record is in the user defaults.
    static constexpr std::string_view key = "VelmorandPreferencesState";

    /// Loads the record; one that cannot be read is logged and left as it is. All arguments must outlive the store.
    PreferencesStore(UserDefaults& userDefaults, RunLoop& runLoop, Log& log);

    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;
    virtual ~PreferencesStore();

    /// The published record.
    [[nodiscard]] const Published<PreferencesState>& state() const { return state_; }
    [[nodiscard]] const PreferencesState& current() const { return state_.value(); }

    /// Points; values beyond the limits become the nearer one. Stored after a moment.
    void setOuterPadding(double padding);
    void setInnerGap(double gap);
    /// Seconds; likewise.
    void setAnimationDuration(double duration);

    void setEnableAnimations(bool enabled);
    void setClampToVisibleArea(bool clamped);
    /// Adds the bundle identifier unless it is there already.
    void addIgnoredApp(std::string_view bundleIdentifier);
    /// Adds several, in this order; each unless it is there already. Stored at once, also when nothing was added.
    void addIgnoredApps(std::span<const std::string> bundleIdentifiers);
    void removeIgnoredApp(std::string_view bundleIdentifier);

    /// Gives the action the shortcut, also when it was disabled.
    void setShortcut(WindowAction action, const KeyboardShortcut& shortcut);
    /// Gives the action the shortcut and takes theirs from the others, which are disabled.
    void assignShortcut(WindowAction action, const KeyboardShortcut& shortcut,
                        std::span<const WindowAction> conflictingActions);
    /// Disables the action.
    void removeShortcut(WindowAction action);
    /// Gives every action its default shortcut.
    void resetAllShortcuts();

    /// Stores the record as it is now.
    void saveNow();
    /// Stores the record a moment from now, unless this is asked for again meanwhile.
    void scheduleSave();
    /// Stores what waits to be stored; nothing when nothing waits.
    void savePending();

    /// The shortcut that counts for an action; absent when the action is disabled.
    [[nodiscard]] std::optional<KeyboardShortcut> effectiveShortcut(WindowAction action) const;

    /// The other actions, in catalogue order, whose effective shortcut has this key and these modifiers. Labels
    /// are not compared; disabled actions never conflict.
    [[nodiscard]] std::vector<WindowAction> conflictingActions(std::uint32_t keyCode, ShortcutModifiers modifiers,
                                                               WindowAction edited) const;

    /// Every combination shared by two or more actions, in the catalogue order of their first actions.
    [[nodiscard]] std::vector<ShortcutConflict> conflictGroups() const;

protected:
    [[nodiscard]] Published<PreferencesState>& publishedState() { return state_; }

private:
    [[nodiscard]] static PreferencesState load(UserDefaults& userDefaults, const Logger& logger);
    template <typename Change>
    void changeNow(Change&& change);
    template <typename Change>
    void changeSoon(Change&& change);

    UserDefaults& userDefaults_;
    RunLoop& runLoop_;
    Logger logger_;
    Published<PreferencesState> state_;
    std::optional<RunLoop::Timer> pendingSave_;
};

}  // namespace velmorand

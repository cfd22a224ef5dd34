#pragma once

#include "base/TranslatableText.h"
#include "shortcuts/KeyboardShortcut.h"
#include "windows/WindowAction.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// What the recorder panel shows: one recording of a shortcut, as far as it has come.
struct ShortcutRecorderModel {
    /// The title of the action whose shortcut is recorded.
    std::string actionTitle = {};
    /// The symbols of the modifiers that are held now, in their fixed order.
    std::vector<std::string> heldModifierSymbols = {};
    /// A combination that waits for the user's confirmation.
    std::optional<KeyboardShortcut> pendingShortcut = {};
    /// The actions that have the pending combination now, in catalogue order.
    std::vector<WindowAction> conflictingActions = {};
    /// The pending combination has neither Command nor Control.
    bool awaitingFragileConfirmation = false;
    /// The pending combination is Control and Option without Command.
    bool awaitingVoiceOverConfirmation = false;
    /// What was wrong with the last key press; shown instead of the default hint.
    std::optional<std::string> hint = {};
    /// The action has a shortcut now, which can be removed.
    bool hasCurrentShortcut = false;

    bool operator==(const ShortcutRecorderModel&) const = default;
};

// All texts below are English, and translated in the context "ShortcutRecorder" where they are drawn.

/// The question that waits for an answer: what is the matter, and what follows or helps. A "%1" in them stands for the
/// titles of the conflicting actions.
struct ShortcutRecorderQuestion {
    std::string_view message;
    std::string_view advice;

    bool operator==(const ShortcutRecorderQuestion&) const = default;
};

/// The title of the panel's window.
inline constexpr std::string_view recorderTitle = translatable("ShortcutRecorder", "Record Shortcut");
/// The title of the button that ends recording without a change.
inline constexpr std::string_view recorderCancelTitle = translatable("ShortcutRecorder", "Cancel");
/// The title of the button that takes a combination from the actions that have it.
inline constexpr std::string_view recorderReplaceTitle = translatable("ShortcutRecorder", "Replace");
/// The title of the button that confirms a combination in spite of a warning.
inline constexpr std::string_view recorderUseAnywayTitle = translatable("ShortcutRecorder", "Use Anyway");
/// The title of the button that takes the action's shortcut away.
inline constexpr std::string_view recorderRemoveTitle = translatable("ShortcutRecorder", "Remove Current Shortcut");
/// The hint after a combination without Command, Control or Option.
inline constexpr std::string_view recorderModifierHint =
    translatable("ShortcutRecorder", "Include at least one of Command, Control, or Option.");

/// What the user is asked to do; "%1" stands for the title of the action.
inline constexpr std::string_view recorderPrompt = translatable("ShortcutRecorder", "Press the new shortcut for %1");

/// The error hint, or else how recording ends.
[[nodiscard]] std::string recorderHint(const ShortcutRecorderModel& model);

/// What is asked about the pending combination; absent while none waits.
[[nodiscard]] std::optional<ShortcutRecorderQuestion> recorderQuestion(const ShortcutRecorderModel& model);

}  // namespace velmorand

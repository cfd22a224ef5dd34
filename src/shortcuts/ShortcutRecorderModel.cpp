#include "shortcuts/ShortcutRecorderModel.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

namespace velmorand {
namespace {

constexpr std::string_view defaultHint = "Press Escape to cancel — add a modifier to bind Escape itself.";
constexpr std::string_view fragileWarning =
    "Shortcuts without Command or Control can fail to register on some macOS versions.";
constexpr std::string_view fragileAdvice = "Add Command or Control for a more reliable global shortcut.";
constexpr std::string_view voiceOverWarning = "Control–Option shortcuts can conflict with VoiceOver.";
constexpr std::string_view voiceOverAdvice = "Add Command for a shortcut that won't interfere with VoiceOver.";

std::string joinedTitles(const std::vector<WindowAction>& actions) {
    std::vector<std::string_view> titles;
    for (const WindowAction action : actions) titles.push_back(metadata(action).title);
    return fmt::format("{}", fmt::join(titles, ", "));
}

}  // namespace

std::string recorderPrompt(const ShortcutRecorderModel& model) {
    return "Press the new shortcut for " + model.actionTitle;
}

std::string recorderHint(const ShortcutRecorderModel& model) {
    return model.hint.value_or(std::string(defaultHint));
}

std::optional<ShortcutRecorderQuestion> recorderQuestion(const ShortcutRecorderModel& model) {
    if (!model.pendingShortcut) return std::nullopt;
    if (!model.conflictingActions.empty()) {
        const std::string titles = joinedTitles(model.conflictingActions);
        return ShortcutRecorderQuestion{"This shortcut is already used by " + titles + ".",
                                        titles + " will have no shortcut until you assign a new one."};
    }
    if (model.awaitingFragileConfirmation)
        return ShortcutRecorderQuestion{std::string(fragileWarning), std::string(fragileAdvice)};
    if (model.awaitingVoiceOverConfirmation)
        return ShortcutRecorderQuestion{std::string(voiceOverWarning), std::string(voiceOverAdvice)};
    return std::nullopt;
}

}  // namespace velmorand

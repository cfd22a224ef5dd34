#include "shortcuts/ShortcutRecorderModel.h"

namespace velmorand {
namespace {

constexpr std::string_view defaultHint =
    translatable("ShortcutRecorder", "Press Escape to cancel — add a modifier to bind Escape itself.");
constexpr ShortcutRecorderQuestion conflictQuestion{
    translatable("ShortcutRecorder", "This shortcut is already used by %1."),
    translatable("ShortcutRecorder", "%1 will have no shortcut until you assign a new one.")};
constexpr ShortcutRecorderQuestion fragileQuestion{
    translatable("ShortcutRecorder",
                 "Shortcuts without Command or Control can fail to register on some macOS versions."),
    translatable("ShortcutRecorder", "Add Command or Control for a more reliable global shortcut.")};
constexpr ShortcutRecorderQuestion voiceOverQuestion{
    translatable("ShortcutRecorder", "Control–Option shortcuts can conflict with VoiceOver."),
    translatable("ShortcutRecorder", "Add Command for a shortcut that won't interfere with VoiceOver.")};

}  // namespace

std::string recorderHint(const ShortcutRecorderModel& model) {
    return model.hint.value_or(std::string(defaultHint));
}

std::optional<ShortcutRecorderQuestion> recorderQuestion(const ShortcutRecorderModel& model) {
    if (!model.pendingShortcut) return std::nullopt;
    if (!model.conflictingActions.empty()) return conflictQuestion;
    if (model.awaitingFragileConfirmation) return fragileQuestion;
    if (model.awaitingVoiceOverConfirmation) return voiceOverQuestion;
    return std::nullopt;
}

}  // namespace velmorand

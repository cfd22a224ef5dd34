#include "settings/ShortcutRecorderViewModel.h"

#include "settings/QtText.h"
#include "settings/ShortcutGlyphs.h"
#include "shortcuts/ShortcutRecorderPanel.h"

#include <utility>

namespace velmorand {

ShortcutRecorderViewModel::ShortcutRecorderViewModel(ShortcutRecorderPanel& panel, QObject* parent)
    : QObject(parent),
      panel_(panel),
      model_(panel.model().subscribe([this](const ShortcutRecorderModel&) { Q_EMIT changed(); })) {}

ShortcutRecorderViewModel::~ShortcutRecorderViewModel() = default;

const ShortcutRecorderModel& ShortcutRecorderViewModel::model() const {
    return panel_.model().value();
}

QString ShortcutRecorderViewModel::prompt() const {
    return toQString(recorderPrompt(model()));
}

QStringList ShortcutRecorderViewModel::glyphs() const {
    if (const auto& pending = model().pendingShortcut) return shortcutGlyphs(*pending);
    QStringList held;
    for (const std::string& symbol : model().heldModifierSymbols) held.append(toQString(symbol));
    return held;
}

bool ShortcutRecorderViewModel::isCaptured() const {
    return model().pendingShortcut.has_value();
}

QString ShortcutRecorderViewModel::spoken() const {
    const auto& pending = model().pendingShortcut;
    return pending ? toQString(spokenDescription(*pending)) : QString();
}

QString ShortcutRecorderViewModel::hint() const {
    return question() == Question::NoQuestion || hintIsError() ? toQString(recorderHint(model())) : QString();
}

bool ShortcutRecorderViewModel::hintIsError() const {
    return model().hint.has_value();
}

ShortcutRecorderViewModel::Question ShortcutRecorderViewModel::question() const {
    if (!recorderQuestion(model())) return Question::NoQuestion;
    if (!model().conflictingActions.empty()) return Question::Conflict;
    return model().awaitingFragileConfirmation ? Question::Fragile : Question::VoiceOver;
}

QString ShortcutRecorderViewModel::questionTitle() const {
    return toQString(recorderQuestion(model()).value_or(ShortcutRecorderQuestion{}).message);
}

QString ShortcutRecorderViewModel::questionText() const {
    return toQString(recorderQuestion(model()).value_or(ShortcutRecorderQuestion{}).advice);
}

QString ShortcutRecorderViewModel::cancelTitle() const {
    return toQString(recorderCancelTitle);
}

QString ShortcutRecorderViewModel::confirmTitle() const {
    switch (question()) {
        case Question::NoQuestion: return {};
        case Question::Conflict: return toQString(recorderReplaceTitle);
        case Question::Fragile:
        case Question::VoiceOver: return toQString(recorderUseAnywayTitle);
    }
    std::unreachable();
}

QString ShortcutRecorderViewModel::removeTitle() const {
    return model().hasCurrentShortcut ? toQString(recorderRemoveTitle) : QString();
}

void ShortcutRecorderViewModel::cancel() {
    panel_.cancel();
}

void ShortcutRecorderViewModel::confirm() {
    switch (question()) {
        case Question::NoQuestion: return;
        case Question::Conflict: panel_.replace(); return;
        case Question::Fragile:
        case Question::VoiceOver: panel_.useAnyway(); return;
    }
}

void ShortcutRecorderViewModel::remove() {
    if (model().hasCurrentShortcut) panel_.remove();
}

}  // namespace velmorand

#include "settings/ShortcutRecorderViewModel.h"

#include "settings/QtText.h"
#include "settings/ShortcutGlyphs.h"
#include "settings/TranslatedText.h"
#include "shortcuts/ShortcutRecorderPanel.h"

#include <utility>

namespace velmorand {
namespace {

QString text(std::string_view english) {
    return translated("ShortcutRecorder", english);
}

}  // namespace

ShortcutRecorderViewModel::ShortcutRecorderViewModel(ShortcutRecorderPanel& panel, QObject* parent)
    : QObject(parent),
      panel_(panel),
      model_(panel.model().subscribe([this](const ShortcutRecorderModel&) { Q_EMIT changed(); })) {}

ShortcutRecorderViewModel::~ShortcutRecorderViewModel() = default;

const ShortcutRecorderModel& ShortcutRecorderViewModel::model() const {
    return panel_.model().value();
}

QString ShortcutRecorderViewModel::prompt() const {
    return text(recorderPrompt).arg(translated("WindowAction", model().actionTitle));
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
    return question() == Question::NoQuestion || hintIsError() ? text(recorderHint(model())) : QString();
}

bool ShortcutRecorderViewModel::hintIsError() const {
    return model().hint.has_value();
}

ShortcutRecorderViewModel::Question ShortcutRecorderViewModel::question() const {
    if (!recorderQuestion(model())) return Question::NoQuestion;
    if (!model().conflictingActions.empty()) return Question::Conflict;
    return model().awaitingFragileConfirmation ? Question::Fragile : Question::VoiceOver;
}

QString ShortcutRecorderViewModel::sentence(std::string_view ShortcutRecorderQuestion::* part) const {
    const auto asked = recorderQuestion(model());
    if (!asked) return {};
    return text(*asked.*part).replace(QStringLiteral("%1"), titlesOf(model().conflictingActions));
}

QString ShortcutRecorderViewModel::questionTitle() const {
    return sentence(&ShortcutRecorderQuestion::message);
}

QString ShortcutRecorderViewModel::questionText() const {
    return sentence(&ShortcutRecorderQuestion::advice);
}

QString ShortcutRecorderViewModel::cancelTitle() const {
    return text(recorderCancelTitle);
}

QString ShortcutRecorderViewModel::confirmTitle() const {
    switch (question()) {
        case Question::NoQuestion: return {};
        case Question::Conflict: return text(recorderReplaceTitle);
        case Question::Fragile:
        case Question::VoiceOver: return text(recorderUseAnywayTitle);
    }
    std::unreachable();
}

QString ShortcutRecorderViewModel::removeTitle() const {
    return model().hasCurrentShortcut ? text(recorderRemoveTitle) : QString();
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

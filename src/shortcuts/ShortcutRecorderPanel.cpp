#include "shortcuts/ShortcutRecorderPanel.h"

#include "platform/RunLoop.h"
#include "preferences/PreferencesStore.h"
#include "shortcuts/KeyLabels.h"

#include <cassert>
#include <utility>

namespace velmorand {
namespace {

constexpr std::uint32_t escapeKey = 53;

/// Shift alone makes no shortcut: it only writes other letters.
constexpr ShortcutModifiers significantModifiers{ShortcutModifiers::command, ShortcutModifiers::option,
                                                 ShortcutModifiers::control};
constexpr ShortcutModifiers reliableModifiers{ShortcutModifiers::command, ShortcutModifiers::control};
constexpr ShortcutModifiers voiceOverModifiers{ShortcutModifiers::control, ShortcutModifiers::option};

}  // namespace

ShortcutRecorderPanel::ShortcutRecorderPanel(RecorderPanelHost& host, RunLoop& runLoop)
    : host_(host), runLoop_(runLoop) {}

ShortcutRecorderPanel::~ShortcutRecorderPanel() {
    if (isRecording_) end();
}

void ShortcutRecorderPanel::open(WindowAction action, const std::shared_ptr<PreferencesStore>& preferencesStore) {
    assert(runLoop_.isMainThread());
    if (isRecording_) end();
    action_ = action;
    preferencesStore_ = preferencesStore;
    model_.set({.actionTitle = std::string(metadata(action).title),
                .hasCurrentShortcut = preferencesStore && preferencesStore->effectiveShortcut(action).has_value()});
    host_.show({.keyDown = [this](const RecorderKeyEvent& event) { handleKeyDown(event); },
                .modifiersChanged = [this](std::uint64_t flags) { changeModifiers(flags); },
                .closed = [this] { end(); },
                .resignedKey = [this] { end(); }});
    isRecording_ = true;
    if (onRecordingStateChange_) onRecordingStateChange_(true);
    recordedAction_.set(action);
}

void ShortcutRecorderPanel::changeModifiers(std::uint64_t flags) {
    model_.modify([flags](ShortcutRecorderModel& model) {
        const auto symbols = displaySymbols(modifiersFromEventFlags(flags));
        model.heldModifierSymbols.assign(symbols.begin(), symbols.end());
    });
}

void ShortcutRecorderPanel::handleKeyDown(const RecorderKeyEvent& event) {
    assert(runLoop_.isMainThread());
    const ShortcutModifiers modifiers = modifiersFromEventFlags(event.modifierFlags);
    if (modifiers.isDisjointWith(significantModifiers)) {
        if (event.keyCode == escapeKey) {
            cancel();
        } else {
            model_.modify([](ShortcutRecorderModel& model) { model.hint = recorderModifierHint; });
        }
        return;
    }
    const KeyboardShortcut candidate{{event.keyCode, modifiers},
                                     keyLabelForKeyCode(event.keyCode, event.charactersIgnoringModifiers)};
    const auto store = preferencesStore_.lock();
    if (!action_ || !store) return;
    judge(*action_, candidate, *store);
}

/// A combination that another action has is always shown as that first, whatever else is unwise about it.
void ShortcutRecorderPanel::judge(WindowAction action, const KeyboardShortcut& candidate, PreferencesStore& store) {
    const ShortcutModifiers modifiers = candidate.hotKey.modifiers;
    auto conflicts = store.conflictingActions(candidate.hotKey.keyCode, modifiers, action);
    const bool hasConflict = !conflicts.empty();
    const bool isFragile = !hasConflict && modifiers.isDisjointWith(reliableModifiers);
    const bool isForVoiceOver = !hasConflict && !isFragile && modifiers.contains(voiceOverModifiers) &&
                                !modifiers.contains(ShortcutModifiers::command);
    if (!hasConflict && !isFragile && !isForVoiceOver) {
        store.setShortcut(action, candidate);
        end();
        return;
    }
    model_.modify([&](ShortcutRecorderModel& model) {
        model.pendingShortcut = candidate;
        model.conflictingActions = std::move(conflicts);
        model.awaitingFragileConfirmation = isFragile;
        model.awaitingVoiceOverConfirmation = isForVoiceOver;
        model.hint.reset();
    });
}

void ShortcutRecorderPanel::cancel() {
    if (isRecording_) end();
}

void ShortcutRecorderPanel::replace() {
    confirmPending();
}

void ShortcutRecorderPanel::useAnyway() {
    confirmPending();
}

/// After a warning there is no action to take the combination from.
void ShortcutRecorderPanel::confirmPending() {
    const ShortcutRecorderModel model = model_.value();
    const auto store = preferencesStore_.lock();
    if (!model.pendingShortcut || !action_ || !store) return;
    store->assignShortcut(*action_, *model.pendingShortcut, model.conflictingActions);
    end();
}

void ShortcutRecorderPanel::remove() {
    if (!isRecording_) return;
    const auto store = preferencesStore_.lock();
    if (action_ && store) store->removeShortcut(*action_);
    end();
}

void ShortcutRecorderPanel::end() {
    action_.reset();
    host_.close();
    if (!std::exchange(isRecording_, false)) return;
    if (onRecordingStateChange_) onRecordingStateChange_(false);
    recordedAction_.set(std::nullopt);
}

}  // namespace velmorand

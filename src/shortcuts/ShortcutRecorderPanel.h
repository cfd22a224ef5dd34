#pragma once

#include "base/Published.h"
#include "platform/RecorderPanelHost.h"
#include "shortcuts/ShortcutRecorderModel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace velmorand {

class PreferencesStore;
class RunLoop;

/// Records one key combination for one action: judges every key press, asks where a combination is unwise or taken, and
/// stores the result. There is one for the process, since there is one keyboard. Main thread only.
class ShortcutRecorderPanel {
public:
    /// `host` and `runLoop` must outlive the panel.
    ShortcutRecorderPanel(RecorderPanelHost& host, RunLoop& runLoop);

    ShortcutRecorderPanel(const ShortcutRecorderPanel&) = delete;
    ShortcutRecorderPanel& operator=(const ShortcutRecorderPanel&) = delete;
    /// Ends a recording that still runs.
    ~ShortcutRecorderPanel();

    /// Told true when a recording begins and false when it ends, once each.
    void setOnRecordingStateChange(std::function<void(bool)> callback) {
        onRecordingStateChange_ = std::move(callback);
    }

    /// Says what makes the window of the panel from now on. Where nothing does, a recording ends in the next turn.
    void setWindowMaker(RecorderPanelWindowMaker maker) { host_.setWindowMaker(std::move(maker)); }

    /// Begins to record a shortcut for `action`; a recording that runs is ended before. The store is where the result
    /// goes; it is held weakly, and without it keys have no effect.
    void open(WindowAction action, const std::shared_ptr<PreferencesStore>& preferencesStore);

    [[nodiscard]] bool isRecording() const { return isRecording_; }
    [[nodiscard]] const Published<ShortcutRecorderModel>& model() const { return model_; }
    /// The action that a shortcut is recorded for; absent while none is. Told after the panel is shown or closed.
    [[nodiscard]] const Published<std::optional<WindowAction>>& recordedAction() const { return recordedAction_; }

    /// The user's answers. Without a recording none of them does anything.
    void cancel();
    /// Takes the pending combination from the actions that have it.
    void replace();
    /// Takes the pending combination in spite of the warning.
    void useAnyway();
    /// Takes the action's shortcut away.
    void remove();

private:
    void handleKeyDown(const RecorderKeyEvent& event);
    void changeModifiers(std::uint64_t flags);
    void judge(WindowAction action, const KeyboardShortcut& candidate, PreferencesStore& store);
    void confirmPending();
    void end();

    RecorderPanelHost& host_;
    RunLoop& runLoop_;
    std::function<void(bool)> onRecordingStateChange_;
    Published<ShortcutRecorderModel> model_;
    Published<std::optional<WindowAction>> recordedAction_;
    std::optional<WindowAction> action_;
    std::weak_ptr<PreferencesStore> preferencesStore_;
    bool isRecording_ = false;
};

}  // namespace velmorand

#pragma once

#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

// Flags of key events, and virtual key codes.
inline constexpr std::uint64_t shiftFlag = 0x20000;
inline constexpr std::uint64_t controlFlag = 0x40000;
inline constexpr std::uint64_t optionFlag = 0x80000;
inline constexpr std::uint64_t commandFlag = 0x100000;
inline constexpr std::uint64_t capsLockFlag = 0x10000;

inline constexpr std::uint32_t keyA = 0;
inline constexpr std::uint32_t keyK = 40;
inline constexpr std::uint32_t keyEscape = 53;
inline constexpr std::uint32_t keyLeftArrow = 123;

/// The recorder on a simulated desktop.
class ShortcutRecorderFixture : public DesktopFixture {
protected:
    ShortcutRecorderFixture() {
        panel->setOnRecordingStateChange([this](bool isRecording) { states.push_back(isRecording); });
    }

    [[nodiscard]] SimulatedRecorderPanelHost& host() { return platform.recorderPanelHost(); }
    [[nodiscard]] const ShortcutRecorderModel& model() { return panel->model().value(); }
    /// What is asked, and what is said beside it.
    [[nodiscard]] std::vector<std::string> message() {
        const auto question = recorderQuestion(model());
        if (!question) return {recorderHint(model())};
        if (!model().hint) return {std::string(question->message), std::string(question->advice)};
        return {std::string(question->message), std::string(question->advice), recorderHint(model())};
    }
    [[nodiscard]] std::optional<KeyboardShortcut> shortcut(WindowAction action) {
        return preferencesStore->effectiveShortcut(action);
    }

    void open(WindowAction action = WindowAction::leftHalf) { panel->open(action, preferencesStore); }
    void press(std::uint32_t keyCode, std::uint64_t flags, const std::string& characters = {}) {
        host().press({keyCode, flags, characters});
        platform.runLoop().runPending();
    }
    void settle() { platform.runLoop().runPending(); }

    /// Everything that `onRecordingStateChange` was told.
    std::vector<bool> states;
    std::unique_ptr<ShortcutRecorderPanel> panel =
        std::make_unique<ShortcutRecorderPanel>(platform.recorderPanelHost(), platform.runLoop());
};

}  // namespace velmorand

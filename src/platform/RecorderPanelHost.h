#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace velmorand {

/// A key event of the panel (`NSEvent`).
struct RecorderKeyEvent {
    /// The virtual key code, a physical position.
    std::uint32_t keyCode = 0;
    /// The modifiers that are held, in the bits of `NSEvent`'s modifier flags; a modifier's own key counts as held from
    /// its press on.
    std::uint64_t modifierFlags = 0;
    /// What the key writes in the current layout without any modifier, also without Shift; empty for a key that
    /// writes nothing (arrows, function keys) or a control character.
    std::string charactersIgnoringModifiers;

    bool operator==(const RecorderKeyEvent&) const = default;
};

/// What the panel shows.
struct RecorderPanelContent {
    std::string title;
    std::string prompt;
    /// The symbols of the modifiers that are held, one for each key cap.
    std::vector<std::string> heldModifierSymbols;
    /// The lines below: the hint, or the question that waits for an answer.
    std::vector<std::string> message;

    bool operator==(const RecorderPanelContent&) const = default;
};

/// What is told of a panel. Any of them may be absent.
struct RecorderPanelEvents {
    std::function<void(const RecorderKeyEvent&)> keyDown;
    /// The held modifiers changed, as the flags of `RecorderKeyEvent`.
    std::function<void(std::uint64_t modifierFlags)> modifiersChanged;
    /// The user closed the panel.
    std::function<void()> closed;
    /// The panel is no longer the key window.
    std::function<void()> resignedKey;
};

/// Shows the one panel in which a key combination is recorded (`NSPanel` and a local event monitor). While it is the key
/// window every key goes to it, also those that other programs or the desktop would take, unless the system refuses
/// that. Main thread only; events are told in turns of the main loop, never inside a call.
class RecorderPanelHost {
public:
    virtual ~RecorderPanelHost() = default;
    RecorderPanelHost(const RecorderPanelHost&) = delete;
    RecorderPanelHost& operator=(const RecorderPanelHost&) = delete;

    /// Brings the panel up as the key window. A panel that is shown already is shown anew: the events of the earlier
    /// one are not told any more.
    virtual void show(RecorderPanelContent content, RecorderPanelEvents events) = 0;

    /// Shows something else in the panel; without one nothing happens.
    virtual void update(RecorderPanelContent content) = 0;

    /// Takes the panel away, and gives the keyboard back before anything else. No event of it is told afterwards.
    /// Without a panel nothing happens.
    virtual void close() = 0;

protected:
    RecorderPanelHost() = default;
};

}  // namespace velmorand

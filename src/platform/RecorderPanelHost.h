#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

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

/// The window of one panel, in which the views draw it. It is made but not shown, and goes with the object. Main thread
/// only.
class RecorderPanelWindow {
public:
    virtual ~RecorderPanelWindow() = default;
    RecorderPanelWindow(const RecorderPanelWindow&) = delete;
    RecorderPanelWindow& operator=(const RecorderPanelWindow&) = delete;

    /// The window system's own name of the window: an X window, or the address of an `NSWindow`.
    [[nodiscard]] virtual std::uintptr_t handle() const = 0;
    /// Puts the window on screen. `closed` is called when the user closes it there; the window may be ended inside.
    virtual void show(std::function<void()> closed) = 0;

protected:
    RecorderPanelWindow() = default;
};

/// Makes the window of the next panel; null when that is not possible.
using RecorderPanelWindowMaker = std::function<std::unique_ptr<RecorderPanelWindow>()>;

/// Shows the one panel in which a key combination is recorded (`NSPanel` and a local event monitor). While it is the key
/// window every key goes to it, also those that other programs or the desktop would take, unless the system refuses
/// that. Main thread only; events are told in turns of the main loop, never inside a call.
class RecorderPanelHost {
public:
    virtual ~RecorderPanelHost() = default;
    RecorderPanelHost(const RecorderPanelHost&) = delete;
    RecorderPanelHost& operator=(const RecorderPanelHost&) = delete;

    /// Says what makes the windows of panels from now on; nothing does when it is empty.
    virtual void setWindowMaker(RecorderPanelWindowMaker maker) = 0;

    /// Brings the panel up as the key window. A panel that is shown already is shown anew: the events of the earlier
    /// one are not told any more. A panel that has no window is told to be closed.
    virtual void show(RecorderPanelEvents events) = 0;

    /// Takes the panel away, and gives the keyboard back before anything else. No event of it is told afterwards.
    /// Without a panel nothing happens.
    virtual void close() = 0;

protected:
    RecorderPanelHost() = default;
};

}  // namespace velmorand

#pragma once

#include "base/Hash.h"
#include "base/Rect.h"
#include "platform/Accessibility.h"
#include "platform/Displays.h"
#include "platform/Workspace.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// One window for as long as it exists. The number is the window system's own, which it may use again; the serial
/// is given at first sight and never used again, so an id of a window that is gone is told from its successor.
struct WindowID {
    std::uint32_t number = 0;
    std::uint64_t serial = 0;

    bool operator==(const WindowID&) const = default;
};

/// What a window is, says and allows at one moment.
struct WindowAttributes {
    std::string role;
    /// Absent for a window that is none of the kinds that have one.
    std::optional<std::string> subrole;
    bool minimized = false;
    bool fullScreen = false;
    bool positionSettable = false;
    bool sizeSettable = false;
    /// What the user sees of the window, in the accessibility space.
    Rect frame;
};

/// When a call must be over.
using Deadline = std::chrono::steady_clock::time_point;

/// What keeps this program from working with other applications' windows: the code that calls fail with, and a
/// sentence for the user.
struct TrustProblem {
    AXError error;
    std::string sentence;
};

/// How a window's attributes are read: as they are now, or once what the client is about to declare is there.
enum class Reading : std::uint8_t { atOnce, settled };

/// A window system of Linux in terms of whole frames. X11 and each Wayland compositor implement it; one
/// accessibility service translates from it. Frames are in the accessibility space, which starts at the top-left
/// corner of the primary display. Main thread only; no call takes longer than its deadline.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

    /// What keeps this program from moving other applications' windows; absent when nothing does.
    [[nodiscard]] virtual std::optional<TrustProblem> missingForTrust(Deadline deadline) = 0;

    /// The application whose window is active, or was last if none is now; absent when there is none.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Whether an application with this process identifier is known: it has windows or is running.
    [[nodiscard]] virtual bool hasApplication(std::int32_t pid, Deadline deadline) = 0;

    /// The application's windows on the current desktop, front to back.
    [[nodiscard]] virtual std::expected<std::vector<WindowID>, AXError> windows(std::int32_t pid,
                                                                                Deadline deadline) = 0;
    /// The active window if it is this application's; fails with `noValue` otherwise.
    [[nodiscard]] virtual std::expected<WindowID, AXError> focusedWindow(std::int32_t pid, Deadline deadline) = 0;
    /// The application's most recently active normal window, else its topmost; fails with `noValue` without one.
    [[nodiscard]] virtual std::expected<WindowID, AXError> mainWindow(std::int32_t pid, Deadline deadline) = 0;

    /// Everything about one window, read together.
    [[nodiscard]] virtual std::expected<WindowAttributes, AXError> attributes(WindowID window, Reading reading,
                                                                              Deadline deadline) = 0;

    /// Fails as `setFrame` would where that can be known at once: the window gone, full screen or not movable, the
    /// window system not answering.
    [[nodiscard]] virtual std::expected<void, AXError> checkMovable(WindowID window, Deadline deadline) = 0;

    /// Places the window with one request and waits until the window system has acted. Answers the frame the
    /// window then has, which may not be the wanted one.
    [[nodiscard]] virtual std::expected<Rect, AXError> setFrame(WindowID window, const Rect& frame,
                                                                Deadline deadline) = 0;

    /// The displays in the window server's coordinates, primary first.
    [[nodiscard]] virtual std::vector<DisplayDescription> displays() = 0;

    /// Who is told of what happens on the desktop; each is called in a turn of the main loop.
    struct Observer {
        std::function<void(std::int32_t pid)> applicationTerminated;
        std::function<void()> displaysChanged;
    };
    virtual void setObserver(Observer observer) = 0;

protected:
    WindowSystem() = default;
};

}  // namespace velmorand

template <>
struct std::hash<velmorand::WindowID> {
    std::size_t operator()(const velmorand::WindowID& id) const noexcept {
        std::size_t seed = 0;
        velmorand::hashCombine(seed, id.number);
        velmorand::hashCombine(seed, id.serial);
        return seed;
    }
};

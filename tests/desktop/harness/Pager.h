#pragma once

#include "desktop/harness/XObserver.h"

namespace velmorand::desktop {

/// Asks the window manager for what a pager or taskbar asks, on the user's behalf, and waits until it is done.
/// Everything fails with what was seen instead when it is not done in time.
class Pager {
public:
    /// \p observer must outlive the pager.
    explicit Pager(XObserver& observer) : observer_(observer) {}

    using Outcome = std::expected<void, HarnessError>;

    /// Raises the window, gives it the focus, and brings it back if it is minimised.
    Outcome activate(xcb_window_t window, std::chrono::milliseconds timeout = patience);
    Outcome maximize(xcb_window_t window, std::chrono::milliseconds timeout = patience);
    /// One axis only.
    Outcome maximizeVertically(xcb_window_t window, std::chrono::milliseconds timeout = patience);
    Outcome unmaximize(xcb_window_t window, std::chrono::milliseconds timeout = patience);
    Outcome setFullscreen(xcb_window_t window, bool isFullscreen, std::chrono::milliseconds timeout = patience);
    Outcome minimize(xcb_window_t window, std::chrono::milliseconds timeout = patience);
    /// Asks the client, through the window manager, to close the window, and waits until it is gone.
    Outcome close(xcb_window_t window, std::chrono::milliseconds timeout = patience);

    /// Gives a window in normal state this visible frame (root coordinates) and waits until it has it, within
    /// \p tolerance pixels, and keeps it. Returns the frame that it then has.
    std::expected<PixelRect, HarnessError> place(xcb_window_t window, const PixelRect& visibleFrame, int tolerance = 2,
                                                 std::chrono::milliseconds timeout = patience);
    /// Asks for that frame and does not wait for it.
    void requestFrame(xcb_window_t window, const PixelRect& visibleFrame);

private:
    enum class Change : std::uint32_t { remove = 0, add = 1 };

    /// By the message of the desktop's conventions.
    void requestClientRect(xcb_window_t window, const PixelRect& client);
    /// As the client itself would, where the window manager does not take that message.
    void configure(xcb_window_t window, const PixelRect& client, const Extents& outside);
    void changeState(xcb_window_t window, Change change, std::string_view first, std::string_view second = {});
    Outcome waitFor(std::string_view what, xcb_window_t window, const std::function<bool(const WindowStates&)>& reached,
                    std::chrono::milliseconds timeout);

    XObserver& observer_;
};

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/Deadline.h"
#include "desktop/harness/PixelRect.h"
#include "desktop/harness/XConnection.h"

#include <filesystem>
#include <functional>

namespace velmorand::desktop {

/// An application's window as the window manager lists it.
struct ClientWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    /// UTF-8; empty when the window has none.
    std::string title = {};
    /// What the client says of itself (_NET_WM_PID), if it does.
    std::optional<std::uint32_t> pid = {};
    /// The two parts of WM_CLASS.
    std::string instanceName = {};
    std::string className = {};
};

/// The steps of a window's size, in pixels.
struct SizeSteps {
    int width = 1;
    int height = 1;
};

/// Between which sizes a client wants to be, in pixels; 0 for no limit.
struct SizeLimits {
    int minimumWidth = 0;
    int minimumHeight = 0;
    int maximumWidth = 0;
    int maximumHeight = 0;

    /// Whether it has one size only.
    [[nodiscard]] bool isFixed() const {
        return minimumWidth > 0 && minimumWidth == maximumWidth && minimumHeight == maximumHeight;
    }
};

/// What the window manager says of a window's state.
struct WindowStates {
    bool maximizedHorizontally = false;
    bool maximizedVertically = false;
    bool fullscreen = false;
    bool hidden = false;
    bool shaded = false;
    bool focused = false;

    friend bool operator==(const WindowStates&, const WindowStates&) = default;
};

/// Sees a desktop through its own connection, and computes frames plainly from what the server and the window manager
/// say: a second opinion on where the windows are. All frames are in root coordinates, in pixels. Answers about a
/// window that is gone are absent or empty.
class XObserver {
public:
    /// \p displayName as in DISPLAY.
    [[nodiscard]] static std::expected<XObserver, HarnessError> connect(const std::string& displayName);

    [[nodiscard]] XConnection& connection() { return connection_; }

    /// The managed windows in the order in which they appeared, panels included.
    [[nodiscard]] std::vector<ClientWindow> clients();
    [[nodiscard]] std::optional<ClientWindow> describe(xcb_window_t window);
    /// Waits until a window of exactly this title is listed and on screen.
    [[nodiscard]] std::expected<xcb_window_t, HarnessError> findWindow(std::string_view title,
                                                                       std::chrono::milliseconds timeout = patience);

    /// What the user sees of the window: the client's rectangle with the window manager's decorations added and a
    /// shadow that the client draws itself taken off.
    [[nodiscard]] std::optional<PixelRect> visibleFrame(xcb_window_t window);
    /// The window as its client knows it, without decorations.
    [[nodiscard]] std::optional<PixelRect> clientRect(xcb_window_t window);
    /// The decorations: _NET_FRAME_EXTENTS, or what lies around the client in its outermost window where the window
    /// manager never tells. (Where it does, that window may have borders that nobody sees.)
    [[nodiscard]] std::optional<Extents> frameExtents(xcb_window_t window);
    /// _GTK_FRAME_EXTENTS: the client's own shadow.
    [[nodiscard]] std::optional<Extents> clientShadow(xcb_window_t window);
    [[nodiscard]] WindowStates states(xcb_window_t window);
    [[nodiscard]] bool isViewable(xcb_window_t window);
    /// By how much the window's size goes, as its hints say it; absent when any size is right.
    [[nodiscard]] std::optional<SizeSteps> sizeSteps(xcb_window_t window);
    /// As its hints say it.
    [[nodiscard]] SizeLimits sizeLimits(xcb_window_t window);
    /// Which point of the window its client wants to keep in place, as its hints say it; an X gravity.
    [[nodiscard]] std::uint32_t gravity(xcb_window_t window);
    /// Absent when none is active.
    [[nodiscard]] std::optional<xcb_window_t> activeWindow();
    /// _NET_WM_STRUT_PARTIAL of the first window that reserves an edge of the screen: left, right, top, bottom, and the
    /// start and end of each along the edge. Empty when none does.
    [[nodiscard]] std::vector<std::uint32_t> reservedEdges();

    /// The name of the running window manager; absent when its check window is not alive.
    [[nodiscard]] std::optional<std::string> windowManagerName();
    /// Waits until the window manager handles requests. It announces itself before it does, and what arrives in between
    /// may lie there until the next request.
    [[nodiscard]] bool waitForWindowManager(std::chrono::milliseconds timeout = patience);
    /// Whether the window manager lists \p atomName in _NET_SUPPORTED.
    [[nodiscard]] bool isSupported(std::string_view atomName);
    /// Whether a compositing manager owns this screen.
    [[nodiscard]] bool isComposited();

    /// Waits until \p condition holds, asking again at every event on the desktop and at short intervals. False when it
    /// did not hold within \p timeout.
    bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout = patience);
    /// Waits until the window's frame is accepted and stays so for a moment. Returns the last frame seen, accepted or
    /// not; absent when the window is gone.
    [[nodiscard]] std::optional<PixelRect> waitForSettledFrame(xcb_window_t window,
                                                               const std::function<bool(const PixelRect&)>& accepted,
                                                               std::chrono::milliseconds timeout = patience);
    /// The same for a frame that agrees with \p wanted within \p tolerance pixels.
    [[nodiscard]] std::optional<PixelRect> waitForSettledFrame(xcb_window_t window, const PixelRect& wanted,
                                                               int tolerance = 2,
                                                               std::chrono::milliseconds timeout = patience);

    /// Writes what the screen shows, once programs have finished drawing, as a PNG file.
    std::expected<void, HarnessError> screenshot(const std::filesystem::path& file);

private:
    explicit XObserver(XConnection connection) : connection_(std::move(connection)) {}
    [[nodiscard]] std::optional<Extents> extents(xcb_window_t window, std::string_view property);
    [[nodiscard]] std::optional<Extents> frameOutside(xcb_window_t window);
    [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t window);

    XConnection connection_;
};

}  // namespace velmorand::desktop

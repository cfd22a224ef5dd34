#pragma once

#include "desktop/harness/XConnection.h"
#include "desktop/harness/XObserver.h"

#include <chrono>
#include <vector>

namespace velmorand::desktop {

/// A request to the window manager to give a window a frame, as every client that listens to the root window gets it.
struct FrameRequest {
    /// When it was received.
    std::chrono::steady_clock::time_point at;
    /// What the client's own rectangle is to be, in root coordinates.
    PixelRect clientRect;
    /// Whether it names position and size in one.
    bool isWhole = false;
};

/// Listens on a connection of its own to the requests for one window's frame (_NET_MOVERESIZE_WINDOW), from its making
/// on.
class FrameRecorder {
public:
    [[nodiscard]] static std::expected<FrameRecorder, HarnessError> attach(const std::string& displayName,
                                                                           xcb_window_t window);

    /// Records until \p finished says so, which is asked at short intervals. False when it did not within \p timeout.
    bool recordUntil(const std::function<bool()>& finished, std::chrono::milliseconds timeout = patience);

    /// In the order in which they were sent.
    [[nodiscard]] const std::vector<FrameRequest>& requests() const { return requests_; }

private:
    FrameRecorder(XConnection connection, xcb_window_t window) : connection_(std::move(connection)), window_(window) {}
    void takeRequests();

    XConnection connection_;
    xcb_window_t window_;
    std::vector<FrameRequest> requests_;
};

}  // namespace velmorand::desktop

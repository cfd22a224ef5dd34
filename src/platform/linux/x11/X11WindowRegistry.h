#pragma once

#include "base/Subscription.h"
#include "platform/Workspace.h"
#include "platform/linux/WindowSystem.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace velmorand {

/// The windows seen so far, each under a serial of its own until it is destroyed. The server uses numbers again at
/// once, so the serial is what tells a window from its successor; a destroyed window is dropped the moment its
/// event arrives, before any later reply is looked at.
class X11WindowRegistry {
public:
    explicit X11WindowRegistry(X11Connection& connection);

    X11WindowRegistry(const X11WindowRegistry&) = delete;
    X11WindowRegistry& operator=(const X11WindowRegistry&) = delete;
    ~X11WindowRegistry() = default;

    /// The identity of a window; at first sight it gets a serial and its events are asked for.
    [[nodiscard]] WindowID identify(xcb_window_t window);

    /// Whether the window still is the one that the id was made for.
    [[nodiscard]] bool isCurrent(WindowID id) const;

    /// Notes that the window is the active one now.
    void noteActive(xcb_window_t window);

    /// When the window was last active, as a number that grows; 0 for never.
    [[nodiscard]] std::uint64_t lastActive(WindowID id) const;

    /// The windows that were active, the most recent first.
    [[nodiscard]] std::vector<WindowID> byActivity() const;

    /// The application of the window, once it is known.
    [[nodiscard]] const RunningApplication* application(WindowID id) const;
    void setApplication(WindowID id, RunningApplication application);

    /// Whether any window of this application is known.
    [[nodiscard]] bool hasApplication(std::int32_t pid) const;

    /// Called in a turn of the main loop when the last known window of an application was destroyed.
    void setLastWindowClosed(std::function<void(std::int32_t pid)> lastWindowClosed) {
        lastWindowClosed_ = std::move(lastWindowClosed);
    }

private:
    struct Record {
        std::uint64_t serial = 0;
        std::uint64_t lastActive = 0;
        std::optional<RunningApplication> application;
    };

    void drop(const xcb_generic_event_t& event);
    void tellOfClosedApplications();
    [[nodiscard]] const Record* find(WindowID id) const;

    X11Connection& connection_;
    std::map<xcb_window_t, Record> records_;
    std::vector<std::int32_t> closed_;  // applications that lost a window since the last turn
    std::uint64_t lastSerial_ = 0;
    std::uint64_t activations_ = 0;
    std::function<void(std::int32_t)> lastWindowClosed_;
    Subscription listener_;
    Subscription handler_;
};

}  // namespace velmorand

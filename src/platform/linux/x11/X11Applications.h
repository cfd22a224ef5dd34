#pragma once

#include "platform/Workspace.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/WindowSystem.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowRegistry.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace velmorand {

class ProcessWatcher;

/// Finds out which application each window belongs to, once for each window.
class X11Applications {
public:
    /// `ownIdentifier` is the identifier of windows of this process.
    X11Applications(X11Connection& connection, const X11Atoms& atoms, X11WindowRegistry& registry,
                    ProcessWatcher& processWatcher, std::optional<std::string> ownIdentifier);

    X11Applications(const X11Applications&) = delete;
    X11Applications& operator=(const X11Applications&) = delete;
    ~X11Applications() = default;

    /// The application of the window. Fails when the window is gone or nobody answers in time.
    [[nodiscard]] std::expected<RunningApplication, X11Failure> applicationOf(WindowID window, Deadline deadline);

    /// The last window of this application was closed.
    void forget(std::int32_t pid);

private:
    [[nodiscard]] std::expected<std::optional<std::int32_t>, X11Failure> processOf(xcb_window_t window,
                                                                                   Deadline deadline);
    [[nodiscard]] std::expected<std::optional<std::int32_t>, X11Failure> processByServer(xcb_window_t window,
                                                                                         Deadline deadline);
    [[nodiscard]] std::int32_t pidOfClient(xcb_window_t window);
    [[nodiscard]] RunningApplication identify(xcb_window_t window, std::optional<std::int32_t> pid, Deadline deadline);

    X11Connection& connection_;
    const X11Atoms& atoms_;
    X11WindowRegistry& registry_;
    ProcessWatcher& processWatcher_;
    std::optional<std::string> ownIdentifier_;
    DesktopEntries entries_;
    bool serverKnowsProcesses_ = false;
    std::int32_t lastClientPid_ = 0;
    std::map<std::uint32_t, std::int32_t> clientPids_;  // by the client's part of its windows' numbers
};

}  // namespace velmorand

#pragma once

#include "desktop/harness/TestDesktop.h"

#include <filesystem>
#include <string>

namespace velmorand::desktop {

/// A real session manager (xfce4-session) on a test desktop, which ends the programs of the session at log-out and
/// remembers them for the next one. It starts nothing of its own but a settings daemon, and goes with the object.
class SessionManager {
public:
    /// Returns when it takes in programs. \p desktop must outlive it.
    [[nodiscard]] static std::expected<SessionManager, HarnessError> start(TestDesktop& desktop);

    /// What tells a program where the session manager is; to be added to its environment.
    [[nodiscard]] Environment invitation() const { return {{"SESSION_MANAGER", address_}}; }

    /// Logs the user out as the desktop's menu does. Returns when the session is over, and saved.
    [[nodiscard]] std::expected<void, HarnessError> logOut();

    /// What is written down of the session that was logged out of, for the next one.
    [[nodiscard]] std::string savedSession() const;

private:
    SessionManager(TestDesktop& desktop, ChildProcess process, std::string address)
        : desktop_(&desktop), process_(std::move(process)), address_(std::move(address)) {}

    TestDesktop* desktop_;
    ChildProcess process_;
    std::string address_;
};

}  // namespace velmorand::desktop

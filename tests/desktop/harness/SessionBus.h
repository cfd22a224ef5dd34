#pragma once

#include "desktop/harness/ChildProcess.h"

namespace velmorand::desktop {

/// A D-Bus session of our own.
class SessionBus {
public:
    /// \p environment is what services started by the bus get. The log file goes into \p logFolder. The bus can start
    /// those services that have a file in \p serviceFolder; absent for those that are installed on this machine.
    [[nodiscard]] static std::expected<SessionBus, HarnessError> start(
        const Environment& environment, const std::filesystem::path& logFolder,
        const std::optional<std::filesystem::path>& serviceFolder = {});

    /// As in DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] const std::string& address() const { return address_; }
    [[nodiscard]] ChildProcess& process() { return process_; }

private:
    SessionBus(ChildProcess process, std::string address)
        : process_(std::move(process)), address_(std::move(address)) {}

    ChildProcess process_;
    std::string address_;
};

}  // namespace velmorand::desktop

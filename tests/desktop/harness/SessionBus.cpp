#include "desktop/harness/SessionBus.h"

#include "desktop/harness/Deadline.h"

namespace velmorand::desktop {

std::expected<SessionBus, HarnessError> SessionBus::start(const Environment& environment,
                                                          const std::filesystem::path& logFolder) {
    auto process =
        ChildProcess::start({.arguments = {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                             .environment = environment,
                             .logFile = logFolder / "session-bus.log",
                             .reportsOnDescriptor3 = true});
    if (!process) return std::unexpected(process.error());
    const auto address = process->reportedLine(patience);
    if (!address || address->empty()) {
        return std::unexpected(HarnessError{"the session bus does not start\n" + process->logTail()});
    }
    return SessionBus(std::move(*process), *address);
}

}  // namespace velmorand::desktop

#include "desktop/harness/SessionBus.h"

#include "desktop/harness/Deadline.h"

#include <fmt/format.h>

#include <fstream>

namespace velmorand::desktop {
namespace {

/// A session bus on which everybody may do everything, as on any, without the services of the machine.
constexpr std::string_view isolatedBus =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <servicedir>{}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}  // namespace

std::expected<SessionBus, HarnessError> SessionBus::start(const Environment& environment,
                                                          const std::filesystem::path& logFolder,
                                                          const std::optional<std::filesystem::path>& serviceFolder) {
    std::string configuration = "--session";
    if (serviceFolder) {
        const auto file = logFolder / "session-bus.conf";
        std::ofstream(file) << fmt::format(isolatedBus, serviceFolder->string());
        configuration = "--config-file=" + file.string();
    }
    auto process = ChildProcess::start(
        {.arguments = {"dbus-daemon", configuration, "--nofork", "--nopidfile", "--print-address=3"},
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

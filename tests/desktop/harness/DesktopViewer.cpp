#include "desktop/harness/DesktopViewer.h"

#include "desktop/harness/Deadline.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace velmorand::desktop {

namespace {

constexpr std::chrono::seconds timeToConnect{60};
constexpr std::chrono::milliseconds timeBetweenLooks{50};

/// The text after \p key in the log, up to the end of its line; absent until it is there.
std::optional<std::string> reported(const ChildProcess& process, std::string_view key) {
    const auto log = process.log();
    const auto at = log.find(key);
    const auto end = log.find('\n', at);
    if (at == std::string::npos || end == std::string::npos) return std::nullopt;
    return log.substr(at + key.size(), end - at - key.size());
}

/// Waits while the process runs.
bool waitFor(ChildProcess& process, const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const Deadline deadline(timeout);
    while (!condition()) {
        if (deadline.passed() || process.wait(timeBetweenLooks)) return false;
    }
    return true;
}

}  // namespace

bool DesktopViewer::isWanted() {
    return std::getenv("VELMORAND_TEST_WATCH") != nullptr;
}

std::expected<DesktopViewer, HarnessError> DesktopViewer::start(const std::string& displayName,
                                                                const Environment& environment,
                                                                const std::filesystem::path& folder) {
    const auto connected = folder / "viewer-connected";
    auto process = ChildProcess::start(
        {.arguments = {"x11vnc", "-display", displayName, "-localhost", "-viewonly", "-shared", "-forever", "-nopw",
                       "-quiet", "-autoport", "5900", "-afteraccept", fmt::format("touch '{}'", connected.string())},
         .environment = environment,
         .logFile = folder / "viewer.log"});
    if (!process) return std::unexpected(process.error());
    std::optional<std::string> port;
    waitFor(*process, [&] { return (port = reported(*process, "PORT=")).has_value(); }, patience);
    if (!port) return std::unexpected(HarnessError{"the desktop cannot be watched\n" + process->logTail()});
    fmt::print(stderr, "To watch the desktop {}: vncviewer localhost:{}\n", displayName, *port);
    waitFor(*process, [&] { return std::filesystem::exists(connected); }, timeToConnect);
    return DesktopViewer(std::move(*process));
}

}  // namespace velmorand::desktop

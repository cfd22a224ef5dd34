#include "desktop/demo/ProgramStart.h"

#include <fmt/format.h>

#include <set>

namespace velmorand::desktop {

namespace {

/// How many different shortcuts the log tells of.
std::size_t registeredShortcuts(std::string_view log) {
    constexpr std::string_view announcement = "Registered shortcut ";
    std::set<std::string_view> names;
    for (auto at = log.find(announcement); at != std::string_view::npos; at = log.find(announcement, at + 1)) {
        const auto line = log.substr(at, log.find('\n', at) - at);
        names.insert(line);
    }
    return names.size();
}

}  // namespace

std::filesystem::path storedSettingsFile(const Environment& session) {
    return std::filesystem::path(session.at("XDG_CONFIG_HOME")) / "velmorand/VelmorandPreferencesState";
}

std::expected<ChildProcess, HarnessError> startProgram(TestDesktop& desktop, const std::filesystem::path& program,
                                                       std::size_t shortcuts, const Environment& additions) {
    auto process = desktop.start({program.string()}, additions);
    if (!process) return process;
    desktop.observer().waitUntil(
        [&] { return !process->isRunning() || registeredShortcuts(process->log()) >= shortcuts; });
    const auto registered = registeredShortcuts(process->log());
    if (process->isRunning() && registered >= shortcuts) return process;
    return std::unexpected(HarnessError{fmt::format("the program {} with {} of {} shortcuts registered\n{}",
                                                    process->isRunning() ? "runs" : "has ended", registered, shortcuts,
                                                    process->logTail())});
}

}  // namespace velmorand::desktop

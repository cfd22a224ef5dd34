#include "desktop/harness/TestDesktop.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace velmorand::desktop {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::seconds longestStart{10};
constexpr std::chrono::microseconds pollInterval{200};
/// Until everything that comes with the start has come.
constexpr std::chrono::seconds settling{5};
constexpr std::chrono::seconds idleTime{10};
/// The line that tells of the last hot key.
constexpr std::string_view lastRegistration = "Registered shortcut restore id 19";

/// The number behind a name in one of a process's files in /proc; absent when it is not there.
std::optional<long> numberOf(pid_t pid, std::string_view file, std::string_view name) {
    std::ifstream stream(fmt::format("/proc/{}/{}", pid, file));
    for (std::string word; stream >> word;) {
        long number = 0;
        if (word == name && stream >> number) return number;
    }
    return std::nullopt;
}

/// One start: how long it took until every hot key was there.
std::expected<Milliseconds, HarnessError> timeStart(TestDesktop& desktop, const std::string& program,
                                                    std::optional<ChildProcess>& process) {
    const auto before = std::chrono::steady_clock::now();
    auto started = desktop.start({program});
    if (!started) return std::unexpected(started.error());
    process = std::move(*started);
    while (!process->log().contains(lastRegistration)) {
        if (std::chrono::steady_clock::now() - before > longestStart)
            return std::unexpected(HarnessError{"the hot keys do not come\n" + process->logTail()});
        std::this_thread::sleep_for(pollInterval);
    }
    return std::chrono::steady_clock::now() - before;
}

/// Its memory, and how often it wakes up when nothing happens.
void printFootprint(ChildProcess& process) {
    std::this_thread::sleep_for(settling);
    const auto memory = [&](std::string_view name) {
        return static_cast<double>(numberOf(process.pid(), "smaps_rollup", name).value_or(0)) / 1000;
    };
    fmt::print("resident {:.1f} MB, of which private {:.1f} MB, written to {:.1f} MB\n", memory("Rss:"),
               memory("Private_Clean:") + memory("Private_Dirty:"), memory("Private_Dirty:"));
    const auto wakeUps = [&] { return numberOf(process.pid(), "status", "voluntary_ctxt_switches:").value_or(0); };
    const long before = wakeUps();
    std::this_thread::sleep_for(idleTime);
    fmt::print("woken up {} times in {} idle seconds\n", wakeUps() - before, idleTime.count());
}

std::expected<void, HarnessError> run(const std::string& program, std::size_t starts) {
    const auto desktop = TestDesktop::create({.windowManager = {.kind = WindowManagerKind::openbox},
                                              .monitors = {{"main", {0, 0, 1280, 800}, true}},
                                              .panel = PanelOptions{}});
    if (!desktop) return std::unexpected(desktop.error());
    std::vector<Milliseconds> times;
    std::optional<ChildProcess> process;
    while (times.size() < starts) {
        if (process) process->terminate();
        const auto time = timeStart(**desktop, program, process);
        if (!time) return std::unexpected(time.error());
        times.push_back(*time);
    }
    std::ranges::sort(times);
    fmt::print(
        "{} starts, from exec to the last of 19 hot keys: median {:.0f} ms, fastest {:.0f} ms, slowest {:.0f} ms\n",
        times.size(), times[times.size() / 2].count(), times.front().count(), times.back().count());
    printFootprint(*process);
    return {};
}

}  // namespace
}  // namespace velmorand::desktop

int main(int argumentCount, char** argumentValues) {
    const std::span arguments(argumentValues, static_cast<std::size_t>(argumentCount));
    const long starts = arguments.size() > 2 ? std::strtol(arguments[2], nullptr, 10) : 20;
    if (arguments.size() < 2 || arguments.size() > 3 || starts < 1) {
        std::fputs("Usage: velmorand_start_bench PROGRAM [STARTS]\n", stderr);
        return 2;
    }
    const auto done = velmorand::desktop::run(arguments[1], static_cast<std::size_t>(starts));
    if (done) return 0;
    fmt::print(stderr, "start-bench: {}\n", done.error().message);
    return 1;
}

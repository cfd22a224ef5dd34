#include "simulation/Shrinker.h"
#include "simulation/Simulation.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

namespace velmorand::simulation {
namespace {

/// As ./check wants it, or ./check --full.
std::uint64_t usualSeeds() {
    return std::getenv("VELMORAND_LONG_TESTS") == nullptr ? 2000 : 10000;
}

struct Options {
    std::uint64_t seeds = usualSeeds();
    std::uint64_t first = 1;
    std::size_t steps = 300;
    unsigned jobs = 0;
    std::optional<std::uint64_t> replay;
    std::optional<std::uint64_t> shrink;
};

constexpr std::string_view usage = R"(Usage: velmorand_simulation [OPTION]...
Tries to break the program on random desktops in memory.
  --seeds N      how many desktops (2000)
  --first SEED   the first seed (1)
  --steps N      how many steps on each (300)
  --jobs N       how many at a time (as many as there are cores)
  --replay SEED  does the steps of this seed and prints what happens
  --shrink SEED  prints the fewest steps of this seed that still fail, as a run that fails does for its first one
)";

/// Absent for anything but a whole number that is not negative.
std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

std::optional<Options> parse(const std::vector<std::string_view>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const auto value = i + 1 < arguments.size() ? number(arguments[i + 1]) : std::nullopt;
        if (!value) return std::nullopt;
        if (arguments[i] == "--seeds")
            options.seeds = *value;
        else if (arguments[i] == "--first")
            options.first = *value;
        else if (arguments[i] == "--steps")
            options.steps = *value;
        else if (arguments[i] == "--jobs")
            options.jobs = static_cast<unsigned>(*value);
        else if (arguments[i] == "--replay")
            options.replay = value;
        else if (arguments[i] == "--shrink")
            options.shrink = value;
        else
            return std::nullopt;
    }
    return options;
}

void print(const std::string& line) {
    fmt::print("{}\n", line);
    std::fflush(stdout);
}

void print(std::uint64_t seed, std::size_t steps, const Broken& broken) {
    print(fmt::format(R"(seed {} breaks "{}" in step {}: {})", seed, broken.invariant, steps, broken.what));
}

int replay(std::uint64_t seed, const std::vector<Step>& steps) {
    const RunResult result = run(seed, steps, [](const std::string& line) { print(line); });
    if (!result.failure) return 0;
    print(seed, result.steps, *result.failure);
    return 1;
}

int shrink(std::uint64_t seed, std::vector<Step> steps) {
    const RunResult result = run(seed, steps);
    if (!result.failure) {
        print(fmt::format("seed {} does not fail", seed));
        return 0;
    }
    steps.resize(result.steps);
    const auto fewest = shrunk(steps, [&](const std::vector<Step>& rest) {
        const RunResult again = run(seed, rest);
        return again.failure && again.failure->invariant == result.failure->invariant;
    });
    return replay(seed, fewest);
}

/// Shared by all threads.
struct Findings {
    std::atomic<std::uint64_t> next;
    std::uint64_t end = 0;
    std::mutex mutex;
    std::vector<std::uint64_t> failed;
    std::uint64_t steps = 0;
    std::uint64_t actions = 0;
    std::uint64_t restores = 0;
};

void runSeeds(Findings& findings, std::size_t steps) {
    while (true) {
        const std::uint64_t seed = findings.next++;
        if (seed >= findings.end) return;
        const RunResult result = run(seed, makeSteps(seed, steps));
        const std::lock_guard lock(findings.mutex);
        findings.steps += result.steps;
        findings.actions += result.actions;
        findings.restores += result.judgedRestores;
        if (!result.failure) continue;
        findings.failed.push_back(seed);
        print(seed, result.steps, *result.failure);
    }
}

int runAll(const Options& options, std::string_view program) {
    Findings findings;
    findings.next = options.first;
    findings.end = options.first + options.seeds;
    const auto start = std::chrono::steady_clock::now();
    {
        std::vector<std::jthread> threads;
        const unsigned jobs = options.jobs > 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency());
        for (unsigned i = 0; i < jobs; ++i)
            threads.emplace_back([&findings, steps = options.steps] { runSeeds(findings, steps); });
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    print(fmt::format("{} seeds, {} steps, {} actions and {} restores judged in {:.1f} s: {:.0f} steps/s, {} failed",
                      options.seeds, findings.steps, findings.actions, findings.restores, seconds,
                      static_cast<double>(findings.steps) / seconds, findings.failed.size()));
    if (findings.failed.empty()) return 0;
    const std::string command = fmt::format("{} --steps {}", program, options.steps);
    const std::uint64_t seed = *std::ranges::min_element(findings.failed);
    print(fmt::format("To see what happens: {} --replay {}", command, seed));
    print(fmt::format("The fewest steps that still fail ({} --shrink {}):", command, seed));
    shrink(seed, makeSteps(seed, options.steps));
    return 1;
}

int main(const std::vector<std::string_view>& arguments, std::string_view program) {
    const auto options = parse(arguments);
    if (!options) {
        fmt::print(stderr, "{}", usage);
        return 2;
    }
    if (options->replay) return replay(*options->replay, makeSteps(*options->replay, options->steps));
    if (options->shrink) return shrink(*options->shrink, makeSteps(*options->shrink, options->steps));
    return runAll(*options, program);
}

}  // namespace
}  // namespace velmorand::simulation

int main(int argumentCount, char** arguments) {
    return velmorand::simulation::main({arguments + 1, arguments + argumentCount}, arguments[0]);
}

#pragma once

#include "simulation/Broken.h"
#include "simulation/Step.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace velmorand::simulation {

/// What came of a run.
struct RunResult {
    /// The steps that were done; with a failure, the last one is where it was seen.
    std::size_t steps = 0;
    std::optional<Broken> failure;
    /// How often a restore was compared with where the window had been before.
    std::uint64_t judgedRestores = 0;
    /// How many actions began.
    std::uint64_t actions = 0;
};

/// Told one line after another of what happens.
using Tracer = std::function<void(const std::string& line)>;

/// Makes the desktop of this seed, does the steps on it and judges after each. It ends at the first broken invariant.
[[nodiscard]] RunResult run(std::uint64_t seed, std::span<const Step> steps, const Tracer& trace = {});

}  // namespace velmorand::simulation

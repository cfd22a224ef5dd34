#pragma once

#include <string>

namespace velmorand::simulation {

/// Thrown by whoever sees that an invariant does not hold; it ends the run of the seed.
struct Broken {
    /// The invariant by its name in docs/simulation.md.
    std::string invariant;
    /// What was seen, and what should have been.
    std::string what;
};

}  // namespace velmorand::simulation

#pragma once

#include "simulation/Step.h"

#include <functional>
#include <vector>

namespace velmorand::simulation {

/// Leaves out steps as long as the rest still fails, first many at a time, then single ones, until none can be left out.
/// `fails` must answer true for `steps`.
[[nodiscard]] std::vector<Step> shrunk(std::vector<Step> steps,
                                       const std::function<bool(const std::vector<Step>&)>& fails);

}  // namespace velmorand::simulation

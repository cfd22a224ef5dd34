#pragma once

#include "platform/simulated/SimulatedAccessibility.h"
#include "simulation/Tape.h"

#include <span>

namespace velmorand::simulation {

/// No call takes longer than the messaging timeout: the invariant "time".
void judgeCalls(const Tape& tape);

/// What reached windows in a step is what the program wrote, and each time position and size together: the invariant
/// "writes".
void judgeWrites(std::span<const SimulatedWrite> writes, const Tape& tape);

/// How many calls an action may make: one for each remembered window, 13 for each window of the desktop, and 27 others.
[[nodiscard]] std::size_t mostCalls(std::size_t remembered, std::size_t windows);

}  // namespace velmorand::simulation

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

/// No action makes more calls than one for each window that is remembered before the step, 13 for each window of the
/// desktop and 27 others: the invariant "effort".
void judgeEffort(const Tape& tape, std::size_t remembered);

}  // namespace velmorand::simulation

#pragma once

#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedLog.h"

#include <ostream>

/// How values of the simulated platform appear in failure messages. A test that compares one of these types includes
/// this header.
namespace velmorand {

void PrintTo(const SimulatedWrite& write, std::ostream* out);
void PrintTo(const LogLine& line, std::ostream* out);

}  // namespace velmorand

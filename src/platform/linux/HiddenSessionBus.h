#pragma once

#include <string>
#include <vector>

namespace velmorand {

/// Hides the session bus from everything in this process that connects to it later. A bus that does not answer would hold
/// the toolkit up for ever. It stays hidden, as the environment cannot be changed any more once there are threads: to be
/// called before the first one is started.
void hideSessionBus();

/// The environment for programs that this one starts, as "NAME=value": its own, but with the session bus where it was.
[[nodiscard]] std::vector<std::string> environmentForPrograms();

}  // namespace velmorand

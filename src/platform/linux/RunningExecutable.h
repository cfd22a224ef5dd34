#pragma once

#include <filesystem>

namespace velmorand {

/// The absolute path at which the executable of this process is installed, also when an upgrade has put another one in
/// its place. Empty when the system does not tell. `link` is where the system tells it.
[[nodiscard]] std::filesystem::path runningExecutable(const std::filesystem::path& link = "/proc/self/exe");

}  // namespace velmorand

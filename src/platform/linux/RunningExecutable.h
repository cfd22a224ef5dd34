#pragma once

#include <filesystem>

namespace velmorand {

/// The absolute path at which the executable of a process is installed, also when an upgrade has put another one in its
/// place. `link` is where the system tells it; empty when it does not.
[[nodiscard]] std::filesystem::path executableBehind(const std::filesystem::path& link);

/// That of this process.
[[nodiscard]] inline std::filesystem::path runningExecutable() {
    return executableBehind("/proc/self/exe");
}

}  // namespace velmorand

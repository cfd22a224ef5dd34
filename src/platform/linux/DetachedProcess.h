#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace velmorand {

/// The program of this name in the folders of PATH; absent when none of them has one that may be run.
[[nodiscard]] std::optional<std::filesystem::path> findProgram(const std::string& name);

/// Starts a program that goes on by itself: in a session of its own, nobody's child, with no input and with the signals
/// as a program expects them, in the environment for programs (`environmentForPrograms`). Returns when it runs; fails with the reason of the system when it does not.
[[nodiscard]] std::expected<void, std::error_code> startDetached(const std::filesystem::path& program,
                                                                 const std::vector<std::string>& arguments);

}  // namespace velmorand

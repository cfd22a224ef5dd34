#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace velmorand {

/// The text of a regular file for those who go on without it: empty when there is none, when it is longer than `longest`
/// bytes, when it cannot be read, or when something else is in its place (`readStoredFile` tells which).
[[nodiscard]] std::string readRegularFile(const std::filesystem::path& path, std::size_t longest = 1U << 20U);

}  // namespace velmorand

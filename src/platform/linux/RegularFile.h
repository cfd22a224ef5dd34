#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace velmorand {

/// The text of a regular file; empty when there is none, when it is longer than `longest` bytes, or when something else
/// is in its place: a pipe or a device that another program put there could keep a reader waiting for ever.
[[nodiscard]] std::string readRegularFile(const std::filesystem::path& path, std::size_t longest = 1U << 20U);

}  // namespace velmorand

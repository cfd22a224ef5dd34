#pragma once

#include "desktop/harness/ChildProcess.h"

#include <string_view>

namespace velmorand::desktop {

/// Writes a file of \p content in the place of any that is there, and makes the folders above it.
[[nodiscard]] std::expected<void, HarnessError> writeSettingsFile(const std::filesystem::path& file,
                                                                  std::string_view content);

/// Where the programs of Xfce keep the settings of \p channel in \p session, which has XDG_CONFIG_HOME.
[[nodiscard]] std::filesystem::path xfceSettingsFile(const Environment& session, std::string_view channel);

}  // namespace velmorand::desktop

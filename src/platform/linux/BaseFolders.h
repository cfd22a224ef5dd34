#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace velmorand {

/// Where the XDG base-directory specification keeps the settings of a program of this name: below `XDG_CONFIG_HOME`
/// when that is an absolute path, else below `.config` in the user's home folder.
[[nodiscard]] std::filesystem::path configurationFolder(std::string_view program);

/// The folders of `XDG_CONFIG_DIRS`, in which the system keeps settings for all users, the most important first.
/// Relative ones do not count.
[[nodiscard]] std::vector<std::filesystem::path> systemConfigurationFolders();

/// The folders of `XDG_DATA_HOME` and `XDG_DATA_DIRS`, in which programs keep what does not change, the user's first.
/// Relative ones do not count.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

}  // namespace velmorand

#include "platform/linux/BaseFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <ranges>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

fs::path homeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && fs::path(home).is_absolute()) return home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

/// The user's folder that the variable names, or else this one in the home folder.
fs::path usersFolder(const char* variable, const char* inHome) {
    const char* configured = std::getenv(variable);
    const bool isUsable = configured != nullptr && fs::path(configured).is_absolute();
    return isUsable ? fs::path(configured) : homeFolder() / inHome;
}

/// The folders that the variable names, or else these, between colons.
std::vector<fs::path> systemFolders(const char* variable, std::string_view usual) {
    const char* configured = std::getenv(variable);
    const std::string_view names = configured == nullptr || *configured == '\0' ? usual : configured;
    std::vector<fs::path> folders;
    for (const auto part : std::views::split(names, ':')) {
        fs::path folder(std::string(part.begin(), part.end()));
        if (folder.is_absolute()) folders.push_back(std::move(folder));
    }
    return folders;
}

}  // namespace

fs::path configurationFolder(std::string_view program) {
    return usersFolder("XDG_CONFIG_HOME", ".config") / program;
}

std::vector<fs::path> systemConfigurationFolders() {
    return systemFolders("XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<fs::path> dataFolders() {
    std::vector<fs::path> folders = systemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders.insert(folders.begin(), usersFolder("XDG_DATA_HOME", ".local/share"));
    return folders;
}

}  // namespace velmorand

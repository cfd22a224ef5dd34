#include "desktop/harness/SettingsFile.h"

#include <fmt/format.h>

#include <fstream>
#include <system_error>

namespace velmorand::desktop {

std::expected<void, HarnessError> writeSettingsFile(const std::filesystem::path& file, std::string_view content) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << content << std::flush;
    if (error || !stream) return std::unexpected(HarnessError{"cannot write " + file.string()});
    return {};
}

std::filesystem::path xfceSettingsFile(const Environment& session, std::string_view channel) {
    return std::filesystem::path(session.at("XDG_CONFIG_HOME")) / "xfce4/xfconf/xfce-perchannel-xml" /
           fmt::format("{}.xml", channel);
}

}  // namespace velmorand::desktop

#include "platform/linux/RunningExecutable.h"

#include <string_view>
#include <system_error>

namespace velmorand {

std::filesystem::path executableBehind(const std::filesystem::path& link) {
    /// What the kernel adds to the path of a file that is no longer there.
    constexpr std::string_view mark = " (deleted)";
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink(link, error);
    if (!path.native().ends_with(mark) || std::filesystem::exists(path, error)) return path;
    return path.native().substr(0, path.native().size() - mark.size());
}

}  // namespace velmorand

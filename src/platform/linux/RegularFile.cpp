#include "platform/linux/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace velmorand {

std::string readRegularFile(const std::filesystem::path& path, std::size_t longest) {
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return {};
    std::string text;
    struct stat status{};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        std::array<char, 4096> buffer{};
        while (text.size() <= longest) {
            const ssize_t count = read(file, buffer.data(), buffer.size());
            if (count <= 0) break;
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }
    close(file);
    return text.size() <= longest ? text : std::string();
}

}  // namespace velmorand

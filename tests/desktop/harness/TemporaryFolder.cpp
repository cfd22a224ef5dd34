#include "desktop/harness/TemporaryFolder.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

namespace velmorand::desktop {

std::expected<TemporaryFolder, HarnessError> TemporaryFolder::create(std::string_view prefix) {
    std::error_code error;
    const auto parent = std::filesystem::temp_directory_path(error);
    if (error) {
        return std::unexpected(HarnessError{fmt::format("no folder for temporary files: {}", error.message())});
    }
    auto pattern = (parent / fmt::format("{}-XXXXXX", prefix)).string();
    if (mkdtemp(pattern.data()) == nullptr) {
        return std::unexpected(HarnessError{fmt::format("cannot make {}: {}", pattern, std::strerror(errno))});
    }
    return TemporaryFolder(pattern);
}

TemporaryFolder::TemporaryFolder(TemporaryFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}

TemporaryFolder& TemporaryFolder::operator=(TemporaryFolder&& other) noexcept {
    std::swap(path_, other.path_);
    return *this;
}

TemporaryFolder::~TemporaryFolder() {
    if (path_.empty() || std::getenv("VELMORAND_TEST_KEEP_FILES") != nullptr) return;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/HarnessError.h"

#include <expected>
#include <filesystem>
#include <string_view>

namespace velmorand::desktop {

/// A new folder, readable by this user only, that is removed with everything in it when the object dies. With
/// VELMORAND_TEST_KEEP_FILES set in the environment it stays, for looking at logs afterwards.
class TemporaryFolder {
public:
    /// Made in the system's folder for temporary files, its name beginning with \p prefix.
    [[nodiscard]] static std::expected<TemporaryFolder, HarnessError> create(std::string_view prefix);

    TemporaryFolder(TemporaryFolder&& other) noexcept;
    TemporaryFolder& operator=(TemporaryFolder&& other) noexcept;
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// Absolute.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    explicit TemporaryFolder(std::filesystem::path path) : path_(std::move(path)) {}

    std::filesystem::path path_;
};

}  // namespace velmorand::desktop

#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace velmorand {

/// Why a file could not be read or stored.
struct StoredFileError {
    /// What could not be done, to what, and why, as a sentence for the log.
    std::string description;
    /// What the system said; none when something that is no file lies in the file's place.
    std::error_code code;
    /// What could not be read, made, replaced or removed: the file, or a folder on the way to it.
    std::filesystem::path path;
};

/// What becomes of a symbolic link in a file's place.
enum class LinkInPlace : std::uint8_t {
    follow,   ///< it stays, and the file that it leads to is the one that is meant
    replace,  ///< it goes, and what it leads to stays as it is
};

/// All bytes of a file, through links; absent when there is none. What is larger than `largest` bytes, and what is no
/// file but a pipe, say, is a failure.
[[nodiscard]] std::expected<std::optional<std::string>, StoredFileError> readStoredFile(
    const std::filesystem::path& path, std::size_t largest);

/// Puts a file of these bytes, for the user alone, in the place of one that is there, and makes the folders that are
/// missing on the way to it. They are safe when it returns. When it fails, the old bytes are still there, whole; or,
/// where only safety could not be had, the new ones. Nothing but a file is ever replaced. Also removes what processes
/// left behind that were killed while they did this.
[[nodiscard]] std::expected<void, StoredFileError> storeFile(const std::filesystem::path& path, std::string_view bytes,
                                                             LinkInPlace link = LinkInPlace::follow);

/// Removes the file, or the link, at this path, if there is one. It stays removed when the machine dies afterwards.
[[nodiscard]] std::expected<void, StoredFileError> removeStoredFile(const std::filesystem::path& path);

}  // namespace velmorand

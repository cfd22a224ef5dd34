#include "platform/linux/FileUserDefaults.h"

#include "platform/linux/StoredFile.h"

#include <utility>

namespace velmorand {
namespace {

/// No value of ours comes near it.
constexpr std::size_t largestValue = 16U << 20U;

UserDefaultsError describing(StoredFileError error) {
    return {std::move(error.description)};
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::filesystem::path folder) : folder_(std::move(folder)) {}

std::expected<std::optional<std::string>, UserDefaultsError> FileUserDefaults::data(std::string_view key) {
    auto bytes = readStoredFile(folder_ / key, largestValue);
    if (!bytes) return std::unexpected(describing(std::move(bytes.error())));
    return std::move(*bytes);
}

std::expected<void, UserDefaultsError> FileUserDefaults::setData(std::string_view key, std::string_view bytes) {
    auto stored = storeFile(folder_ / key, bytes);
    if (!stored) return std::unexpected(describing(std::move(stored.error())));
    return {};
}

}  // namespace velmorand

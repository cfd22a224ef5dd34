#include "platform/linux/RegularFile.h"

#include "platform/linux/StoredFile.h"

namespace velmorand {

std::string readRegularFile(const std::filesystem::path& path, std::size_t longest) {
    return readStoredFile(path, longest).value_or(std::nullopt).value_or(std::string());
}

}  // namespace velmorand

#pragma once

#include "platform/UserDefaults.h"

#include <filesystem>

namespace velmorand {

/// A user-defaults database of files, one for each key and named after it, in one folder. Files belong to the user
/// alone (mode 0600), as does the folder (0700), which is made when the first value is stored. A symbolic link in a
/// file's place is followed.
class FileUserDefaults final : public UserDefaults {
public:
    explicit FileUserDefaults(std::filesystem::path folder);

    [[nodiscard]] std::expected<std::optional<std::string>, UserDefaultsError> data(std::string_view key) override;
    [[nodiscard]] std::expected<void, UserDefaultsError> setData(std::string_view key, std::string_view bytes) override;

private:
    std::filesystem::path folder_;
};

}  // namespace velmorand

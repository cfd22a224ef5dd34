#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// Why a value could not be read or stored, as a sentence for the log.
struct UserDefaultsError {
    std::string description;

    bool operator==(const UserDefaultsError&) const = default;
};

/// The user-defaults database (`NSUserDefaults.standardUserDefaults`): values of raw bytes under names of ours, kept
/// from one run of the program to the next. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// The bytes stored under the key (`dataForKey:`); absent when there are none. Fails when there are some that
    /// cannot be read.
    [[nodiscard]] virtual std::expected<std::optional<std::string>, UserDefaultsError> data(std::string_view key) = 0;

    /// Stores the bytes under the key (`setObject:forKey:`). They are safe when it returns. When it fails, the bytes
    /// stored before are still there, whole; or, where only safety could not be had, the new ones. When the process or
    /// the machine dies in the middle, it is the one or the other as well.
    [[nodiscard]] virtual std::expected<void, UserDefaultsError> setData(std::string_view key,
                                                                         std::string_view bytes) = 0;

protected:
    UserDefaults() = default;
};

}  // namespace velmorand

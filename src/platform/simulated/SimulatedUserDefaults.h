#pragma once

#include "platform/UserDefaults.h"

#include <map>
#include <utility>
#include <vector>

namespace velmorand {

/// A user-defaults database in memory, which can be made to fail.
class SimulatedUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::expected<std::optional<std::string>, UserDefaultsError> data(std::string_view key) override {
        if (readFailure_) return std::unexpected(*readFailure_);
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::expected<void, UserDefaultsError> setData(std::string_view key,
                                                                 std::string_view bytes) override {
        if (writeFailure_) return std::unexpected(*writeFailure_);
        values_.insert_or_assign(std::string(key), std::string(bytes));
        writes_.emplace_back(bytes);
        return {};
    }

    /// Puts a value there as an earlier run of the program would have left it.
    void put(std::string_view key, std::string_view bytes) {
        values_.insert_or_assign(std::string(key), std::string(bytes));
    }
    /// What `setData` stored since the start, in order.
    [[nodiscard]] const std::vector<std::string>& writes() const { return writes_; }

    /// From now on reads, or writes, fail with this; nothing lets them succeed again.
    void setReadFailure(std::optional<UserDefaultsError> failure) { readFailure_ = std::move(failure); }
    void setWriteFailure(std::optional<UserDefaultsError> failure) { writeFailure_ = std::move(failure); }

private:
    std::map<std::string, std::string, std::less<>> values_;
    std::vector<std::string> writes_;
    std::optional<UserDefaultsError> readFailure_;
    std::optional<UserDefaultsError> writeFailure_;
};

}  // namespace velmorand

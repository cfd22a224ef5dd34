#pragma once

#include <expected>
#include <optional>

namespace velmorand {

/// The two sides of a result, so that one assertion compares a side and also fails when it is the other one.

template <typename Value, typename Error>
[[nodiscard]] std::optional<Value> valueOf(const std::expected<Value, Error>& result) {
    return result ? std::optional<Value>(*result) : std::nullopt;
}

template <typename Value, typename Error>
[[nodiscard]] std::optional<Error> failureOf(const std::expected<Value, Error>& result) {
    return result ? std::nullopt : std::optional<Error>(result.error());
}

}  // namespace velmorand

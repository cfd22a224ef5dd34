#pragma once

#include "base/DecodingError.h"
#include "windows/WindowAction.h"

#include <nlohmann/json.hpp>

#include <expected>

namespace velmorand {

/// The stored form of an action: its raw value as one string.
[[nodiscard]] nlohmann::ordered_json encodeWindowAction(WindowAction action);

/// Fails for anything but a string that is an action's raw value.
[[nodiscard]] std::expected<WindowAction, DecodingError> decodeWindowAction(const nlohmann::ordered_json& document);

}  // namespace velmorand

#pragma once

#include "base/DecodingError.h"
#include "base/JsonValue.h"
#include "windows/WindowAction.h"

#include <expected>

namespace velmorand {

/// The stored form of an action: its raw value as one string.
[[nodiscard]] JsonValue encodeWindowAction(WindowAction action);

/// Fails for anything but a string that is an action's raw value.
[[nodiscard]] std::expected<WindowAction, DecodingError> decodeWindowAction(const JsonValue& document);

}  // namespace velmorand

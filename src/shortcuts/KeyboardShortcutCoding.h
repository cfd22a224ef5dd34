#pragma once

#include "base/DecodingError.h"
#include "base/JsonValue.h"
#include "shortcuts/KeyboardShortcut.h"

#include <expected>

namespace velmorand {

/// The stored forms of shortcuts. A shortcut is one flat object with the keys "keyCode", "modifiers" and
/// "keyDisplay", written in that order; the label is `keyLabel` in the program and "keyDisplay" in the document,
/// and must stay so for the documents that exist. Values are not checked beyond their types.

[[nodiscard]] JsonValue encodeKeyboardShortcut(const KeyboardShortcut& shortcut);

/// All three keys are required; unknown keys are ignored. An unsigned 32-bit number may be written in any way
/// that is an integral number in range (8, 8.0, 8e0). Of repeated keys the last counts.
[[nodiscard]] std::expected<KeyboardShortcut, DecodingError> decodeKeyboardShortcut(const JsonValue& document);

/// The keyed form of a bare hot key: "keyCode" and "modifiers".
[[nodiscard]] JsonValue encodeHotKey(const HotKey& hotKey);
[[nodiscard]] std::expected<HotKey, DecodingError> decodeHotKey(const JsonValue& document);

}  // namespace velmorand

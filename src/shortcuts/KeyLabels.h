#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// The label of a key: its own name, else the upper-cased first character that the key event gave, else its
/// letter on the US layout, else "Key " and the code.
/// `charactersIgnoringModifiers` is the text of the key event, absent when there was no event.
[[nodiscard]] std::string keyLabelForKeyCode(std::uint32_t keyCode,
                                             std::optional<std::string_view> charactersIgnoringModifiers = {});

/// What is drawn on the key's cap: its glyph, else the label as it is.
[[nodiscard]] std::string keyGlyph(std::uint32_t keyCode, std::string_view label);

/// The key equivalent of a menu item for this key, empty when the key cannot be one.
[[nodiscard]] std::string menuKeyEquivalent(std::uint32_t keyCode, std::string_view keyLabel);

}  // namespace velmorand

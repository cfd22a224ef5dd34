#pragma once

#include <string>
#include <string_view>

namespace velmorand {

/// Text functions that look at characters as a reader sees them (extended grapheme clusters, Unicode Standard
/// Annex 29), independent of any locale. All text is UTF-8; a byte sequence that is not valid counts as U+FFFD.

/// The first user-perceived character; empty for empty text.
[[nodiscard]] std::string firstCharacter(std::string_view text);

/// Whether the text is exactly one user-perceived character.
[[nodiscard]] bool isSingleCharacter(std::string_view text);

/// Full upper-casing, which may change the length ("ß" becomes "SS").
[[nodiscard]] std::string upperCased(std::string_view text);

/// Full lower-casing.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// Whether the text holds `part`, in capital or small letters, as readers of the current locale compare them. No text holds
/// an empty part.
[[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view part);

/// Whether the bytes are valid UTF-8: no overlong forms, no surrogates, nothing cut off.
[[nodiscard]] bool isValidUtf8(std::string_view text);

/// The text with U+FFFD in place of what is not valid UTF-8.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// Whether the text holds a control character (category Cc), such as a line end or an escape.
[[nodiscard]] bool hasControlCharacter(std::string_view text);

/// Whether the text holds a code point that is set aside for use inside programs (a noncharacter), such as U+FFFE. It is
/// valid UTF-8, but not everybody takes it.
[[nodiscard]] bool hasNoncharacter(std::string_view text);

}  // namespace velmorand

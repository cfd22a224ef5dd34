#include "base/UnicodeText.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf.h>

#include <cassert>
#include <cstdint>
#include <memory>

namespace velmorand {
namespace {

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

/// The end of the first user-perceived character, in UTF-16 units.
std::int32_t firstBoundary(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    assert(U_SUCCESS(status) && "ICU is installed with its break rules");
    characters->setText(text);
    characters->first();
    const std::int32_t end = characters->next();
    return end == icu::BreakIterator::DONE ? 0 : end;
}

}  // namespace

std::string firstCharacter(std::string_view text) {
    const icu::UnicodeString whole = fromUtf8(text);
    return toUtf8(whole.tempSubString(0, firstBoundary(whole)));
}

bool isSingleCharacter(std::string_view text) {
    const icu::UnicodeString whole = fromUtf8(text);
    return whole.length() > 0 && firstBoundary(whole) == whole.length();
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    const auto locale = icu::Locale::getDefault();
    const auto folded = [&locale](std::string_view original) { return fromUtf8(original).toLower(locale); };
    return !part.empty() && folded(text).indexOf(folded(part)) >= 0;
}

bool isValidUtf8(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, text.data(), static_cast<std::int32_t>(text.size()), &status);
    return status != U_INVALID_CHAR_FOUND;
}

std::string validUtf8(std::string_view text) {
    return isValidUtf8(text) ? std::string(text) : toUtf8(fromUtf8(text));
}

bool hasControlCharacter(std::string_view text) {
    const icu::UnicodeString characters = fromUtf8(text);
    for (std::int32_t i = 0; i < characters.length(); ++i) {  // control characters are single units
        if (u_charType(characters.charAt(i)) == U_CONTROL_CHAR) return true;
    }
    return false;
}

bool hasNoncharacter(std::string_view text) {
    const icu::UnicodeString characters = fromUtf8(text);
    for (std::int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        if (U_IS_UNICODE_NONCHAR(characters.char32At(i))) return true;
    }
    return false;
}

std::string upperCased(std::string_view text) {
    return toUtf8(fromUtf8(text).toUpper(icu::Locale::getRoot()));
}

std::string lowerCased(std::string_view text) {
    return toUtf8(fromUtf8(text).toLower(icu::Locale::getRoot()));
}

}  // namespace velmorand

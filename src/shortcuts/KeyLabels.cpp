#include "shortcuts/KeyLabels.h"

#include "base/UnicodeText.h"
#include "shortcuts/KeyTables.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace velmorand {
namespace {

std::optional<std::string_view> lookUp(std::span<const KeyTableRow> table, std::uint32_t keyCode) {
    const auto row = std::ranges::find(table, keyCode, &KeyTableRow::keyCode);
    if (row == table.end()) return std::nullopt;
    return row->text;
}

}  // namespace

std::string keyLabelForKeyCode(std::uint32_t keyCode, std::optional<std::string_view> charactersIgnoringModifiers) {
    if (const auto name = lookUp(keyNames, keyCode)) return std::string(*name);
    if (charactersIgnoringModifiers && !charactersIgnoringModifiers->empty())
        return upperCased(firstCharacter(*charactersIgnoringModifiers));
    if (const auto letter = lookUp(layoutIndependentLetters, keyCode)) return std::string(*letter);
    return fmt::format("Key {}", keyCode);
}

std::string keyGlyph(std::uint32_t keyCode, std::string_view label) {
    return std::string(lookUp(keyGlyphs, keyCode).value_or(label));
}

std::string menuKeyEquivalent(std::uint32_t keyCode, std::string_view keyLabel) {
    if (const auto equivalent = lookUp(namedKeyEquivalents, keyCode)) return std::string(*equivalent);
    if (isSingleCharacter(keyLabel)) return lowerCased(keyLabel);
    if (const auto letter = lookUp(layoutIndependentLetters, keyCode); letter && isSingleCharacter(*letter))
        return lowerCased(*letter);
    return {};
}

}  // namespace velmorand

#include "shortcuts/KeyTables.h"

#include "shortcuts/KeyLabels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAreArray;

struct NamedKey {
    std::uint32_t keyCode;
    std::string_view label;
    std::string_view glyph;
    std::string_view menuKeyEquivalent;
};

// Glyphs and equivalents by their code points, in UTF-8.
constexpr std::array<NamedKey, 9> namedKeys{{
    {36, "Return", "\xE2\x86\xA9", "\x0D"},
    {48, "Tab", "\xE2\x87\xA5", "\x09"},
    {49, "Space", "\xE2\x90\xA3", "\x20"},
    {51, "Backspace", "\xE2\x8C\xAB", "\x08"},
    {53, "Escape", "\xE2\x8E\x8B", "\x1B"},
    {123, "Left Arrow", "\xE2\x86\x90", "\xEF\x9C\x82"},
    {124, "Right Arrow", "\xE2\x86\x92", "\xEF\x9C\x83"},
    {125, "Down Arrow", "\xE2\x86\x93", "\xEF\x9C\x81"},
    {126, "Up Arrow", "\xE2\x86\x91", "\xEF\x9C\x80"},
}};

struct Letter {
    std::uint32_t keyCode;
    std::string_view label;
    std::string_view lowerCase;
};

constexpr std::array<Letter, 47> letters{{
    {0, "A", "a"},  {1, "S", "s"},  {2, "D", "d"},  {3, "F", "f"},  {4, "H", "h"},  {5, "G", "g"},    {6, "Z", "z"},
    {7, "X", "x"},  {8, "C", "c"},  {9, "V", "v"},  {11, "B", "b"}, {12, "Q", "q"}, {13, "W", "w"},   {14, "E", "e"},
    {15, "R", "r"}, {16, "Y", "y"}, {17, "T", "t"}, {18, "1", "1"}, {19, "2", "2"}, {20, "3", "3"},   {21, "4", "4"},
    {22, "6", "6"}, {23, "5", "5"}, {24, "=", "="}, {25, "9", "9"}, {26, "7", "7"}, {27, "-", "-"},   {28, "8", "8"},
    {29, "0", "0"}, {30, "]", "]"}, {31, "O", "o"}, {32, "U", "u"}, {33, "[", "["}, {34, "I", "i"},   {35, "P", "p"},
    {37, "L", "l"}, {38, "J", "j"}, {39, "'", "'"}, {40, "K", "k"}, {41, ";", ";"}, {42, "\\", "\\"}, {43, ",", ","},
    {44, "/", "/"}, {45, "N", "n"}, {46, "M", "m"}, {47, ".", "."}, {50, "`", "`"},
}};

std::vector<std::uint32_t> keyCodes(std::span<const KeyTableRow> table) {
    std::vector<std::uint32_t> codes;
    std::ranges::transform(table, std::back_inserter(codes), &KeyTableRow::keyCode);
    return codes;
}

TEST(KeyTables, HoldNineNamedKeys) {
    constexpr std::array<std::uint32_t, 9> codes{36, 48, 49, 51, 53, 123, 124, 125, 126};

    EXPECT_THAT(keyCodes(keyNames), ElementsAreArray(codes));
    EXPECT_THAT(keyCodes(keyGlyphs), ElementsAreArray(codes));
    EXPECT_THAT(keyCodes(namedKeyEquivalents), ElementsAreArray(codes));
}

TEST(KeyTables, HoldFortySevenLetters) {
    std::vector<std::uint32_t> codes;
    std::ranges::transform(letters, std::back_inserter(codes), &Letter::keyCode);

    EXPECT_THAT(keyCodes(layoutIndependentLetters), ElementsAreArray(codes));
}

TEST(KeyTables, GiveEveryNamedKeyItsLabelGlyphAndMenuKeyEquivalent) {
    for (const NamedKey& key : namedKeys) {
        SCOPED_TRACE(key.label);
        EXPECT_EQ(keyLabelForKeyCode(key.keyCode), key.label);
        EXPECT_EQ(keyGlyph(key.keyCode, "anything"), key.glyph);
        EXPECT_EQ(menuKeyEquivalent(key.keyCode, "anything"), key.menuKeyEquivalent);
    }
}

TEST(KeyTables, GiveEveryLetterKeyItsLabelAndItsLowerCaseMenuKeyEquivalent) {
    for (const Letter& letter : letters) {
        SCOPED_TRACE(letter.label);
        EXPECT_EQ(keyLabelForKeyCode(letter.keyCode), letter.label);
        EXPECT_EQ(keyGlyph(letter.keyCode, letter.label), letter.label);
        EXPECT_EQ(menuKeyEquivalent(letter.keyCode, "more than one"), letter.lowerCase);
    }
}

/// Every key code up to 128 that is in none of the two lists above.
std::vector<std::uint32_t> otherKeyCodes() {
    std::set<std::uint32_t> codes;
    for (std::uint32_t keyCode = 0; keyCode <= 128; ++keyCode) codes.insert(keyCode);
    for (const NamedKey& key : namedKeys) codes.erase(key.keyCode);
    for (const Letter& letter : letters) codes.erase(letter.keyCode);
    return {codes.begin(), codes.end()};
}

TEST(KeyTables, GiveEveryOtherKeyItsNumberAndNoMenuKeyEquivalent) {
    ASSERT_EQ(otherKeyCodes().size(), 129U - 9U - 47U);
    for (const std::uint32_t keyCode : otherKeyCodes()) {
        SCOPED_TRACE(keyCode);
        const std::string label = "Key " + std::to_string(keyCode);
        EXPECT_EQ(keyLabelForKeyCode(keyCode), label);
        EXPECT_EQ(keyGlyph(keyCode, label), label);
        EXPECT_EQ(menuKeyEquivalent(keyCode, label), "");
    }
}

}  // namespace
}  // namespace velmorand

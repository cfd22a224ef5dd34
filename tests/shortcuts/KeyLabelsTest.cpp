#include "shortcuts/KeyLabels.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

struct LabelRow {
    std::string_view name;
    std::uint32_t keyCode;
    std::optional<std::string_view> characters;
    std::string_view label;
};

TEST(KeyLabels, TheLabelIsTheNameElseTheEventsCharacterElseTheLetterElseTheCode) {
    const std::vector<LabelRow> rows{
        {"a name wins over the event", 123, "x", "Left Arrow"},
        {"a name without an event", 36, std::nullopt, "Return"},
        {"the event's character in upper case", 0, "a", "A"},
        {"the event's character wins over the letter", 0, "é", "É"},
        {"the event's character for a key without a letter", 10, "^", "^"},
        {"the event's first character only", 0, "qw", "Q"},
        {"the event's first whole character", 0, "e\u0301x", "E\u0301"},
        {"a character that becomes two letters in upper case", 27, "ß", "SS"},
        {"the letter when the event is empty", 0, "", "A"},
        {"the letter without an event", 0, std::nullopt, "A"},
        {"the code of a function key without an event", 122, std::nullopt, "Key 122"},
        {"the code when the event is empty", 122, "", "Key 122"},
        {"the code of a key that does not exist", 4294967295U, std::nullopt, "Key 4294967295"},
    };
    for (const LabelRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(keyLabelForKeyCode(row.keyCode, row.characters), row.label);
    }
}

TEST(KeyLabels, TheGlyphOfANamedKeyDoesNotDependOnItsLabel) {
    EXPECT_EQ(keyGlyph(123, "Left Arrow"), "←");
    EXPECT_EQ(keyGlyph(123, ""), "←");
}

TEST(KeyLabels, TheGlyphOfAnyOtherKeyIsItsLabelUnchanged) {
    EXPECT_EQ(keyGlyph(0, "A"), "A");
    EXPECT_EQ(keyGlyph(0, "é"), "é");
    EXPECT_EQ(keyGlyph(122, "Key 122"), "Key 122");
    EXPECT_EQ(keyGlyph(122, ""), "");
}

struct EquivalentRow {
    std::string_view name;
    std::uint32_t keyCode;
    std::string_view label;
    std::string_view equivalent;
};

TEST(KeyLabels, TheMenuKeyEquivalentIsTheTablesElseTheLabelsElseTheLetters) {
    const std::vector<EquivalentRow> rows{
        {"the table wins over the label", 36, "X", "\r"},
        {"a label of one character in lower case", 0, "A", "a"},
        {"the label wins over the letter", 0, "É", "é"},
        {"a label of one character for a key without a letter", 122, "Ö", "ö"},
        {"a label of one combined character", 122, "E\u0301", "e\u0301"},
        {"the letter when the label is longer", 0, "Letter A", "a"},
        {"the letter when the label is empty", 8, "", "c"},
        {"nothing without a letter", 122, "Key 122", ""},
        {"nothing without label and letter", 122, "", ""},
    };
    for (const EquivalentRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(menuKeyEquivalent(row.keyCode, row.label), row.equivalent);
    }
}

}  // namespace
}  // namespace velmorand

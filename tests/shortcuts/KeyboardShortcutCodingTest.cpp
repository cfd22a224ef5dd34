#include "shortcuts/KeyboardShortcutCoding.h"

#include "support/Expected.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

JsonValue parsed(std::string_view document) {
    return JsonValue::parse(document).value();
}

std::optional<KeyboardShortcut> decoded(std::string_view document) {
    return valueOf(decodeKeyboardShortcut(parsed(document)));
}

TEST(KeyboardShortcutCoding, WritesAFlatObjectOfThreeKeysInTheirOrder) {
    EXPECT_EQ(encodeKeyboardShortcut({{123, ShortcutModifiers(2304)}, "Left Arrow"}).write(),
              R"({"keyCode":123,"modifiers":2304,"keyDisplay":"Left Arrow"})");
}

TEST(KeyboardShortcutCoding, WritesLargeNumbersAndEmptyLabelsAsTheyAre) {
    EXPECT_EQ(encodeKeyboardShortcut({{4294967295U, ShortcutModifiers(4294967295U)}, ""}).write(),
              R"({"keyCode":4294967295,"modifiers":4294967295,"keyDisplay":""})");
}

TEST(KeyboardShortcutCoding, WritesABareHotKeyWithTwoKeys) {
    EXPECT_EQ(encodeHotKey({8, ShortcutModifiers(4352)}).write(), R"({"keyCode":8,"modifiers":4352})");
}

struct ReadableRow {
    std::string_view name;
    std::string_view document;
    KeyboardShortcut shortcut;
};

TEST(KeyboardShortcutCoding, ReadsWhatHasAllThreeKeys) {
    const std::vector<ReadableRow> rows{
        {"as written",
         R"({"keyCode":123,"modifiers":2304,"keyDisplay":"Left Arrow"})",
         {{123, ShortcutModifiers(2304)}, "Left Arrow"}},
        {"in another order", R"({"keyDisplay":"C","modifiers":256,"keyCode":8})", {{8, ShortcutModifiers(256)}, "C"}},
        {"with an extra key",
         R"({"keyCode":8,"modifiers":4352,"keyDisplay":"C","comment":[1,2]})",
         {{8, ShortcutModifiers(4352)}, "C"}},
        {"with an empty label",
         R"({"keyCode":8,"modifiers":4352,"keyDisplay":""})",
         {{8, ShortcutModifiers(4352)}, ""}},
        {"with unknown modifier bits",
         R"({"keyCode":8,"modifiers":1,"keyDisplay":"C"})",
         {{8, ShortcutModifiers(1)}, "C"}},
        {"with no modifiers", R"({"keyCode":0,"modifiers":0,"keyDisplay":"A"})", {{0, {}}, "A"}},
        {"with the largest numbers",
         R"({"keyCode":4294967295,"modifiers":4294967295,"keyDisplay":"?"})",
         {{4294967295U, ShortcutModifiers(4294967295U)}, "?"}},
        {"with whole numbers written as fractions",
         R"({"keyCode":8.0,"modifiers":4.352e3,"keyDisplay":"C"})",
         {{8, ShortcutModifiers(4352)}, "C"}},
    };
    for (const ReadableRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(decoded(row.document), row.shortcut);
    }
}

struct UnreadableRow {
    std::string_view name;
    std::string_view document;
};

TEST(KeyboardShortcutCoding, FailsWhenAKeyIsMissingOrOfAWrongType) {
    const std::vector<UnreadableRow> rows{
        {"no key code", R"({"modifiers":4352,"keyDisplay":"C"})"},
        {"no modifiers", R"({"keyCode":8,"keyDisplay":"C"})"},
        {"no label", R"({"keyCode":8,"modifiers":4352})"},
        {"the label under its other name", R"({"keyCode":8,"modifiers":4352,"keyLabel":"C"})"},
        {"a nested hot key", R"({"hotKey":{"keyCode":8,"modifiers":4352},"keyDisplay":"C"})"},
        {"a key code in quotes", R"({"keyCode":"8","modifiers":4352,"keyDisplay":"C"})"},
        {"modifiers as an object", R"({"keyCode":8,"modifiers":{"rawValue":4352},"keyDisplay":"C"})"},
        {"modifiers as a list", R"({"keyCode":8,"modifiers":["command"],"keyDisplay":"C"})"},
        {"a label that is a number", R"({"keyCode":8,"modifiers":4352,"keyDisplay":8})"},
        {"a null label", R"({"keyCode":8,"modifiers":4352,"keyDisplay":null})"},
        {"a null key code", R"({"keyCode":null,"modifiers":4352,"keyDisplay":"C"})"},
        {"a boolean key code", R"({"keyCode":true,"modifiers":4352,"keyDisplay":"C"})"},
        {"a negative key code", R"({"keyCode":-1,"modifiers":4352,"keyDisplay":"C"})"},
        {"negative modifiers", R"({"keyCode":8,"modifiers":-256,"keyDisplay":"C"})"},
        {"a fractional key code", R"({"keyCode":8.5,"modifiers":4352,"keyDisplay":"C"})"},
        {"a key code beyond 32 bits", R"({"keyCode":4294967296,"modifiers":4352,"keyDisplay":"C"})"},
        {"a key code beyond 64 bits", R"({"keyCode":1e30,"modifiers":4352,"keyDisplay":"C"})"},
        {"a list", R"([8,4352,"C"])"},
        {"a string", R"("C")"},
        {"null", "null"},
    };
    for (const UnreadableRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(decoded(row.document), std::nullopt);
    }
}

TEST(KeyboardShortcutCoding, SaysWhatIsWrong) {
    const auto problemOf = [](std::string_view document) {
        return failureOf(decodeKeyboardShortcut(parsed(document)))->description;
    };

    EXPECT_EQ(problemOf("[]"), "The shortcut is not an object.");
    EXPECT_EQ(problemOf(R"({"keyCode":8,"modifiers":4352})"), R"(The key "keyDisplay" is missing.)");
    EXPECT_EQ(problemOf(R"({"keyCode":"8"})"), R"(The value of "keyCode" is not an unsigned 32-bit number.)");
    EXPECT_EQ(problemOf(R"({"keyCode":8,"modifiers":4352,"keyDisplay":8})"),
              R"(The value of "keyDisplay" is not a string.)");
}

TEST(KeyboardShortcutCoding, ReadsABareHotKey) {
    EXPECT_EQ(valueOf(decodeHotKey(parsed(R"({"keyCode":8,"modifiers":4352})"))), (HotKey{8, ShortcutModifiers(4352)}));
    EXPECT_EQ(valueOf(decodeHotKey(parsed(R"({"keyCode":8})"))), std::nullopt);
    EXPECT_EQ(valueOf(decodeHotKey(parsed(R"({"modifiers":8})"))), std::nullopt);
}

}  // namespace
}  // namespace velmorand

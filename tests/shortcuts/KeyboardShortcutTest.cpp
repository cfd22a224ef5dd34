#include "shortcuts/KeyboardShortcut.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <functional>

namespace velmorand {
namespace {

constexpr ShortcutModifiers controlOption{ShortcutModifiers::control, ShortcutModifiers::option};

TEST(HotKey, IsEqualWhenKeyCodeAndModifiersAre) {
    EXPECT_EQ((HotKey{123, controlOption}), (HotKey{123, ShortcutModifiers(0x1800)}));
    EXPECT_NE((HotKey{123, controlOption}), (HotKey{124, controlOption}));
    EXPECT_NE((HotKey{123, controlOption}), (HotKey{123, ShortcutModifiers::option}));
}

TEST(HotKey, HashesKeyCodeAndModifiers) {
    const std::hash<HotKey> hash;

    EXPECT_EQ(hash({123, controlOption}), hash({123, ShortcutModifiers(0x1800)}));
    EXPECT_NE(hash({123, controlOption}), hash({124, controlOption}));
    EXPECT_NE(hash({123, controlOption}), hash({123, ShortcutModifiers::option}));
    EXPECT_NE(hash({1, ShortcutModifiers(2)}), hash({2, ShortcutModifiers(1)}));
}

TEST(KeyboardShortcut, IsEqualWhenKeyCodeModifiersAndLabelAre) {
    const KeyboardShortcut base{{123, controlOption}, "Left Arrow"};

    EXPECT_EQ(base, (KeyboardShortcut{{123, controlOption}, "Left Arrow"}));
    EXPECT_NE(base, (KeyboardShortcut{{124, controlOption}, "Left Arrow"}));
    EXPECT_NE(base, (KeyboardShortcut{{123, ShortcutModifiers::option}, "Left Arrow"}));
    EXPECT_NE(base, (KeyboardShortcut{{123, controlOption}, "Left"}));
}

TEST(KeyboardShortcut, HashesKeyCodeModifiersAndLabel) {
    const std::hash<KeyboardShortcut> hash;
    const KeyboardShortcut base{{123, controlOption}, "Left Arrow"};

    EXPECT_EQ(hash(base), hash({{123, controlOption}, "Left Arrow"}));
    EXPECT_NE(hash(base), hash({{124, controlOption}, "Left Arrow"}));
    EXPECT_NE(hash(base), hash({{123, ShortcutModifiers::option}, "Left Arrow"}));
    EXPECT_NE(hash(base), hash({{123, controlOption}, "Left"}));
}

TEST(KeyboardShortcut, IsSpokenAsItsModifiersAndItsLabel) {
    EXPECT_EQ(spokenDescription({{123, controlOption}, "Left Arrow"}), "Control + Option + Left Arrow");
    EXPECT_EQ(spokenDescription({{8, ShortcutModifiers(0x1B00)}, "C"}), "Control + Option + Shift + Command + C");
    EXPECT_EQ(spokenDescription({{8, ShortcutModifiers::command}, "C"}), "Command + C");
}

TEST(KeyboardShortcut, IsSpokenAsItsLabelAloneWithoutModifiers) {
    EXPECT_EQ(spokenDescription({{122, {}}, "Key 122"}), "Key 122");
    EXPECT_EQ(spokenDescription({{122, {}}, ""}), "");
}

}  // namespace
}  // namespace velmorand

#include "desktop/settings/ShortcutRecorderTest.h"

namespace velmorand::desktop {
namespace {

class ShortcutsPaneTest : public ShortcutRecorderTest {};

TEST_F(ShortcutsPaneTest, EveryActionIsAButtonThatSaysItsShortcut) {
    ASSERT_NO_FATAL_FAILURE(openPane());

    expectAllShown({"Shortcuts", "Reset Defaults", "Edges", "Corners", "Thirds", "Two Thirds", "Displays",
                    "Window Actions",
                    "Customize keyboard shortcuts to arrange and manage windows exactly how you like. Click a row to "
                    "record."});
    EXPECT_EQ(expectShown("push button", "Left").description, "Option + Command + Left Arrow");
    EXPECT_EQ(expectShown("push button", "Center").description, "Control + Option + Command + Return");
}

TEST_F(ShortcutsPaneTest, AConflictAndAMissingShortcutAreSaidUntilTheDefaultsAreReset) {
    store(R"({"shortcuts":{"topRight":{"keyCode":36,"modifiers":2304,"keyDisplay":"Return"}},)"
          R"("disabledShortcutActions":["bottomRight"]})");
    ASSERT_NO_FATAL_FAILURE(openPane(16));
    EXPECT_EQ(expectShown("push button", "Top Right").description,
              "Option + Command + Return. Conflicts with Maximize");
    EXPECT_EQ(expectShown("push button", "Maximize").description,
              "Option + Command + Return. Conflicts with Top Right");
    EXPECT_EQ(expectShown("push button", "Bottom Right").description, "None");

    press("push button", "Reset Defaults");

    EXPECT_TRUE(observer().waitUntil([&] {
        return expectShown("push button", "Maximize").description == "Option + Command + Return" &&
               expectShown("push button", "Bottom Right").description == "Option + Shift + Command + Y";
    }));
}

}  // namespace
}  // namespace velmorand::desktop

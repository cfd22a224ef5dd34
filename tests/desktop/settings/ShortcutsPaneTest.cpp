#include "desktop/settings/SettingsWindowTest.h"

#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view recorderTitle = "Record Shortcut";

class ShortcutsPaneTest : public SettingsWindowTest {
protected:
    /// Stores the document before the program reads it.
    void store(std::string_view document) {
        const fs::path folder = configuration("velmorand");
        fs::create_directories(folder);
        std::ofstream(folder / "VelmorandPreferencesState", std::ios::binary) << document;
    }
    void openPane() {
        ASSERT_NO_FATAL_FAILURE(openWindow());
        choosePane("Shortcuts");
        expectShown("push button", "Restore Previous Frame");
    }
    [[nodiscard]] bool recorderIsShown() { return observer().findWindow(recorderTitle).has_value(); }
    /// Ends the recording as its user does.
    [[nodiscard]] bool recorderCloses() {
        keyboard().press(Key::escape);
        return observer().waitUntil([&] { return observer().activeWindow() == window(); });
    }
};

TEST_F(ShortcutsPaneTest, EveryActionIsAButtonThatSaysItsShortcut) {
    ASSERT_NO_FATAL_FAILURE(startProgram());
    ASSERT_NO_FATAL_FAILURE(openPane());

    expectAllShown({"Shortcuts", "Reset Defaults", "Edges", "Corners", "Thirds", "Two Thirds", "Displays",
                    "Window Actions",
                    "Customize keyboard shortcuts to arrange and manage windows exactly how you like. Click a row to "
                    "record."});
    EXPECT_EQ(expectShown("push button", "Left").description, "Option + Command + Left Arrow");
    EXPECT_EQ(expectShown("push button", "Center").description, "Control + Option + Command + Return");
}

TEST_F(ShortcutsPaneTest, ARowOpensTheRecorderBeItPressedClickedOrReachedByKeys) {
    ASSERT_NO_FATAL_FAILURE(startProgram());
    ASSERT_NO_FATAL_FAILURE(openPane());

    press("push button", "Left");
    ASSERT_TRUE(recorderIsShown());
    ASSERT_TRUE(recorderCloses());

    click("push button", "Right");
    ASSERT_TRUE(recorderIsShown());
    ASSERT_TRUE(recorderCloses());

    for (const Key key : {Key::space, Key::enter}) {
        EXPECT_TRUE(bus().focus(expectShown("push button", "Top")));
        keyboard().press(key);
        ASSERT_TRUE(recorderIsShown());
        ASSERT_TRUE(recorderCloses());
    }
}

TEST_F(ShortcutsPaneTest, WhatIsRecordedIsShownInItsRow) {
    ASSERT_NO_FATAL_FAILURE(startProgram());
    ASSERT_NO_FATAL_FAILURE(openPane());

    press("push button", "Left");
    ASSERT_TRUE(recorderIsShown());
    keyboard().press({Key::leftControl, Key::leftSuper}, Key::j);

    EXPECT_TRUE(observer().waitUntil(
        [&] { return expectShown("push button", "Left").description == "Control + Command + J"; }));
}

TEST_F(ShortcutsPaneTest, AConflictAndAMissingShortcutAreSaidUntilTheDefaultsAreReset) {
    store(R"({"shortcuts":{"topRight":{"keyCode":36,"modifiers":2304,"keyDisplay":"Return"}},)"
          R"("disabledShortcutActions":["bottomRight"]})");
    ASSERT_NO_FATAL_FAILURE(startProgram({}, 16));
    ASSERT_NO_FATAL_FAILURE(openPane());
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

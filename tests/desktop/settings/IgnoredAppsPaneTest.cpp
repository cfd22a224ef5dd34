#include "desktop/settings/SettingsWindowTest.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view question = "Choose applications for Velmorand to ignore";

class IgnoredAppsPaneTest : public SettingsWindowTest {
protected:
    [[nodiscard]] fs::path applications() {
        return fs::path(desktop().environment().at("XDG_DATA_HOME")) / "applications";
    }
    void install(const std::string& identifier, const std::string& name) {
        fs::create_directories(applications());
        std::ofstream(applications() / (identifier + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=true\n";
    }
    /// With two applications on the desktop and no others.
    void openPane() {
        install("org.example.Editor", "Editor");
        install("org.example.Paintbox", "Paintbox");
        ASSERT_NO_FATAL_FAILURE(startProgram({{"XDG_DATA_DIRS", desktop().environment().at("XDG_RUNTIME_DIR")}}));
        ASSERT_NO_FATAL_FAILURE(openWindow());
        choosePane("Ignored Apps");
    }
    void ignoreEditor() {
        press("push button", "Add Your First App...");
        press("check box", "Editor");
        press("push button", "Ignore");
        expectShown("list item", "Editor");
    }
};

TEST_F(IgnoredAppsPaneTest, WithoutApplicationsItSaysSo) {
    ASSERT_NO_FATAL_FAILURE(openPane());

    expectAllShown({"Ignored Apps", "Apps added here will be excluded from Velmorand snapping behaviors.", "Add App...",
                    "No ignored apps yet", "Apps you add here will be excluded from all Velmorand window management.",
                    "Add Your First App...", "Changes take effect immediately. No restart required."});
}

TEST_F(IgnoredAppsPaneTest, WhatIsChosenIsIgnoredAtOnceAndRemovedAgain) {
    ASSERT_NO_FATAL_FAILURE(openPane());

    ignoreEditor();
    EXPECT_TRUE(isStored(R"("ignoredApps":["org.example.Editor"])")) << stored();
    EXPECT_TRUE(goes(question));
    expectShown("", "org.example.Editor");
    EXPECT_FALSE(tree().shows("No ignored apps yet"));

    click("push button", "Remove");
    expectShown("", "No ignored apps yet");
    EXPECT_TRUE(isStored(R"("ignoredApps":[])")) << stored();
}

TEST_F(IgnoredAppsPaneTest, ApplicationsAreChosenByKeysAlone) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    EXPECT_TRUE(bus().focus(expectShown("push button", "Add App...")));
    keyboard().press(Key::space);
    expectShown("check box", "Paintbox");

    for (const Key key : {Key::p, Key::a, Key::i}) keyboard().press(key);
    EXPECT_TRUE(goes("Editor"));
    for (const Key key : {Key::down, Key::space, Key::tab, Key::tab, Key::enter}) keyboard().press(key);

    EXPECT_TRUE(isStored(R"("ignoredApps":["org.example.Paintbox"])")) << stored();
}

TEST_F(IgnoredAppsPaneTest, EscapeLeavesTheChooserWithoutAChoice) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    press("push button", "Add App...");
    press("check box", "Editor");
    EXPECT_TRUE(becomesChecked("Editor", true));
    expectShown("dialog", question);

    keyboard().press(Key::escape);

    EXPECT_TRUE(goes(question));
    expectShown("", "No ignored apps yet");
    EXPECT_FALSE(stored().contains("Editor"));
}

TEST_F(IgnoredAppsPaneTest, AfterARemovalTheKeyboardIsAtTheNextRow) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    press("push button", "Add App...");
    press("check box", "Editor");
    press("check box", "Paintbox");
    press("push button", "Ignore");
    expectShown("list item", "Paintbox");

    EXPECT_TRUE(bus().focus(expectShown("push button", "Remove")));
    keyboard().press(Key::space);
    EXPECT_TRUE(goes("Editor"));
    keyboard().press(Key::space);

    expectShown("", "No ignored apps yet");
    EXPECT_TRUE(isStored(R"("ignoredApps":[])")) << stored();
}

TEST_F(IgnoredAppsPaneTest, AnApplicationThatIsGoneIsShownByItsIdentifierWhenThePaneAppears) {
    ASSERT_NO_FATAL_FAILURE(openPane());
    ignoreEditor();
    choosePane("About");
    fs::remove(applications() / "org.example.Editor.desktop");

    choosePane("Ignored Apps");

    expectShown("list item", "org.example.Editor");
}

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/settings/IgnoredAppsTest.h"

namespace velmorand::desktop {
namespace {

class ApplicationChooserTest : public IgnoredAppsTest {
protected:
    void openChooserWithTwo() {
        openPaneWithTwo();
        if (HasFatalFailure()) return;
        openChooser();
    }
};

TEST_F(ApplicationChooserTest, IsWorkedByKeysAlone) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());
    tabTo("Add App...");
    keyboard().press(Key::space);
    EXPECT_TRUE(getsKeyboard("Search"));

    keyboard().type("ed");
    EXPECT_TRUE(goes("Paintbox"));
    keyboard().press(Key::down);
    EXPECT_TRUE(getsKeyboard("Editor"));
    keyboard().press(Key::space);
    EXPECT_TRUE(becomesChecked("Editor", true));
    keyboard().press(Key::backspace);
    keyboard().press(Key::backspace);
    expectShown("check box", "Paintbox");
    for (const Key key : {Key::down, Key::down, Key::space}) keyboard().press(key);
    expectShown("", "Chosen: 2");
    tabTo("Ignore");
    keyboard().press(Key::space);

    EXPECT_TRUE(areIgnored({"org.example.Editor", "org.example.Paintbox"})) << stored();
    EXPECT_TRUE(getsKeyboard("Add App...")) << focused();
}

TEST_F(ApplicationChooserTest, IsWorkedByAssistiveTechnologyAlone) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());
    press("push button", "Add App...");
    EXPECT_TRUE(bus().write(expectShown("text", "Search"), "paint"));
    EXPECT_TRUE(goes("Editor"));
    press("check box", "Paintbox");
    EXPECT_TRUE(becomesChecked("Paintbox", true));
    EXPECT_TRUE(bus().write(expectShown("text", "Search"), ""));
    press("check box", "Editor");
    expectShown("", "Chosen: 2");

    press("push button", "Ignore");

    EXPECT_TRUE(areIgnored({"org.example.Editor", "org.example.Paintbox"})) << stored();
    press("push button", "Remove Editor");
    EXPECT_TRUE(areIgnored({"org.example.Paintbox"})) << stored();
}

TEST_F(ApplicationChooserTest, ReturnChoosesWhatWasFoundAndThenIgnoresIt) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    keyboard().type("pai");
    EXPECT_TRUE(goes("Editor"));
    keyboard().press(Key::enter);
    EXPECT_TRUE(becomesChecked("Paintbox", true));
    keyboard().press(Key::enter);

    EXPECT_TRUE(areIgnored({"org.example.Paintbox"})) << stored();
    EXPECT_TRUE(goes(question));
}

TEST_F(ApplicationChooserTest, ReturnInTheListIgnoresWhatIsChosenAndNothingElse) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    for (const Key key : {Key::down, Key::space, Key::down}) keyboard().press(key);
    EXPECT_TRUE(becomesChecked("Editor", true));
    EXPECT_TRUE(getsKeyboard("Paintbox"));
    keyboard().press(Key::enter);

    EXPECT_TRUE(areIgnored({"org.example.Editor"})) << stored();
}

TEST_F(ApplicationChooserTest, ReturnInTheListChoosesTheRowWhileNothingIsChosen) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    for (const Key key : {Key::down, Key::end, Key::enter}) keyboard().press(key);

    EXPECT_TRUE(becomesChecked("Paintbox", true));
    EXPECT_FALSE(isChecked("Editor"));
    expectShown("dialog", question);
    EXPECT_FALSE(stored().contains("Paintbox"));
}

TEST_F(ApplicationChooserTest, WhatIsTypedInTheListIsSearchedFor) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());
    keyboard().press(Key::down);
    EXPECT_TRUE(getsKeyboard("Editor"));

    keyboard().type("pai");

    EXPECT_TRUE(goes("Editor"));
    EXPECT_TRUE(getsKeyboard("Search"));
    keyboard().press(Key::down);
    EXPECT_TRUE(getsKeyboard("Paintbox"));
    for (int erased = 0; erased < 3; ++erased) keyboard().press(Key::backspace);
    expectShown("check box", "Editor");
}

TEST_F(ApplicationChooserTest, GivesTheKeyboardBackAlsoWhereTheButtonIsGone) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());
    tabTo("Add Your First App...");
    keyboard().press(Key::space);
    EXPECT_TRUE(getsKeyboard("Search"));
    keyboard().press(Key::escape);
    EXPECT_TRUE(goes(question));
    EXPECT_TRUE(getsKeyboard("Add Your First App...")) << focused();

    keyboard().press(Key::space);
    EXPECT_TRUE(getsKeyboard("Search"));
    for (const Key key : {Key::down, Key::space, Key::enter}) keyboard().press(key);
    expectShown("list item", "Editor");
    EXPECT_TRUE(getsKeyboard("Add App...")) << focused();
}

TEST_F(ApplicationChooserTest, EscapeLeavesItWithoutAChoice) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());
    click("check box", "Editor");
    EXPECT_TRUE(becomesChecked("Editor", true));
    click("heading", question);  // nothing that takes the keyboard

    keyboard().press(Key::escape);

    EXPECT_TRUE(goes(question));
    expectShown("", "No ignored apps yet");
    EXPECT_FALSE(stored().contains("Editor"));
}

TEST_F(ApplicationChooserTest, AddsNeitherVelmorandNorWhatIsIgnoredAlready) {
    install("app.velmorand.Velmorand", "Velmorand");
    storeIgnored({"org.example.Editor"});
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    press("check box", "Velmorand");
    press("check box", "Editor");
    press("check box", "Paintbox");
    press("push button", "Ignore");

    EXPECT_TRUE(areIgnored({"org.example.Editor", "org.example.Paintbox"})) << stored();
    EXPECT_TRUE(goes(question));
    EXPECT_FALSE(tree().shows("Remove Velmorand"));
}

TEST_F(ApplicationChooserTest, OffersNothingThatRunsInATerminal) {
    install("org.example.Monitor", "Monitor", "Exec=true\nTerminal=true\n");
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    expectShown("check box", "Editor");
    EXPECT_FALSE(tree().shows("Monitor"));
}

TEST_F(ApplicationChooserTest, TakesAnApplicationFromAnotherFolder) {
    writeEntry("tools/own.desktop", "Type=Application\nName=Own Tool\nExec=own-tool\n");
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    click("push button", "Other...");
    click("push button", "tools");
    click("push button", "Own Tool");
    EXPECT_TRUE(becomesChecked("Own Tool", true));
    EXPECT_TRUE(getsKeyboard("Own Tool"));
    click("push button", "Ignore");

    EXPECT_TRUE(areIgnored({"own"})) << stored();
    expectShown("list item", "own");
}

TEST_F(ApplicationChooserTest, AnotherFolderIsReachedByKeysAlone) {
    writeEntry("tools/own.desktop", "Type=Application\nName=Own Tool\nExec=own-tool\n");
    writeEntry("attic/some.txt", "");
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());

    tabTo("Other...");
    keyboard().press(Key::space);
    EXPECT_TRUE(getsKeyboard("attic"));
    for (const Key key : {Key::down, Key::enter}) keyboard().press(key);
    EXPECT_TRUE(getsKeyboard("Own Tool"));
    keyboard().press(Key::backspace);
    EXPECT_TRUE(getsKeyboard("tools")) << "the folder that was left";
    keyboard().type("tools/own.desktop");
    EXPECT_TRUE(getsKeyboard("Folder or file"));
    keyboard().press(Key::enter);
    EXPECT_TRUE(becomesChecked("Own Tool", true));
    keyboard().press(Key::enter);

    EXPECT_TRUE(areIgnored({"own"})) << stored();
}

TEST_F(ApplicationChooserTest, SaysWhyAnEntryCannotBeTaken) {
    writeEntry("broken.desktop", "Type=Link\n");
    writeEntry("monitor.desktop", "Type=Application\nName=Monitor\nExec=true\nTerminal=true\n");
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());
    press("push button", "Other...");

    press("push button", "broken");
    expectShown("", "“broken.desktop” is not an application with windows of its own.");
    press("push button", "Monitor");
    expectShown("", "“monitor.desktop” is not an application with windows of its own.");
    EXPECT_TRUE(bus().write(expectShown("text", "Folder or file"), "/nowhere"));
    EXPECT_TRUE(bus().focus(expectShown("text", "Folder or file")));
    keyboard().press(Key::enter);
    expectShown("", "There is no “/nowhere”.");

    keyboard().press(Key::escape);
    expectShown("check box", "Editor");
    EXPECT_FALSE(tree().shows("There is no “/nowhere”."));
    EXPECT_FALSE(tree().shows("broken"));
    keyboard().press(Key::escape);
    EXPECT_TRUE(goes(question));
}

TEST_F(ApplicationChooserTest, FitsIntoTheSmallestWindow) {
    ASSERT_NO_FATAL_FAILURE(openChooserWithTwo());
    ASSERT_NO_FATAL_FAILURE(resizeToMinimum());
    press("check box", "Editor");
    expectShown("", "Chosen: 1");

    const PixelRect whole = observer().visibleFrame(window()).value_or(PixelRect{});
    for (const char* name : {"Other...", "Cancel", "Ignore"}) {
        const PixelRect button = expectShown("push button", name).frame.value_or(PixelRect{});
        EXPECT_GT(button.x, whole.x) << name;
        EXPECT_LT(button.x + button.width, whole.x + whole.width) << name;
        EXPECT_LT(button.y + button.height, whole.y + whole.height) << name;
    }
    const PixelRect count = expectShown("", "Chosen: 1").frame.value_or(PixelRect{});
    const PixelRect cancel = expectShown("push button", "Cancel").frame.value_or(PixelRect{});
    EXPECT_LT(count.x + count.width, cancel.x);
}

}  // namespace
}  // namespace velmorand::desktop

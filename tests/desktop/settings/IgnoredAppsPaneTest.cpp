#include "desktop/settings/IgnoredAppsTest.h"

#include <fmt/format.h>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

class IgnoredAppsPaneTest : public IgnoredAppsTest {
protected:
    static constexpr int manyCount = 200;

    [[nodiscard]] static std::string identifierOf(int number) { return fmt::format("org.example.App{:03}", number); }
    void storeMany() {
        std::vector<std::string> identifiers;
        for (int number = 1; number <= manyCount; ++number) identifiers.push_back(identifierOf(number));
        storeIgnored(identifiers);
    }
    [[nodiscard]] PixelRect frameOf(std::string_view role, std::string_view name) {
        return expectShown(role, name).frame.value_or(PixelRect{});
    }
    [[nodiscard]] PixelRect windowFrame() { return observer().visibleFrame(window()).value_or(PixelRect{}); }
    [[nodiscard]] bool isInTheWindow(const PixelRect& frame) {
        const PixelRect whole = windowFrame();
        return frame.x >= whole.x && frame.y >= whole.y && frame.x + frame.width <= whole.x + whole.width &&
               frame.y + frame.height <= whole.y + whole.height;
    }
};

TEST_F(IgnoredAppsPaneTest, WithoutApplicationsItSaysSo) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());

    expectAllShown({"Ignored Apps", "Apps added here will be excluded from Velmorand snapping behaviors.", "Add App...",
                    "No ignored apps yet", "Apps you add here will be excluded from all Velmorand window management.",
                    "Add Your First App...", "Changes take effect immediately. No restart required."});
    EXPECT_FALSE(tree().shows("Remove"));
}

TEST_F(IgnoredAppsPaneTest, WithApplicationsItHasARowForEachInPlaceOfThat) {
    storeIgnored({"org.example.Editor", "org.example.Paintbox"});
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());

    expectAllShown({"Ignored Apps", "Apps added here will be excluded from Velmorand snapping behaviors.", "Add App...",
                    "Editor", "org.example.Editor", "Remove Editor", "Paintbox", "org.example.Paintbox",
                    "Remove Paintbox", "Changes take effect immediately. No restart required."});
    for (const char* gone : {"No ignored apps yet", "Add Your First App..."}) EXPECT_FALSE(tree().shows(gone)) << gone;
    const PixelRect header = frameOf("push button", "Add App...");
    const PixelRect first = frameOf("list item", "Editor");
    const PixelRect second = frameOf("list item", "Paintbox");
    const PixelRect note = frameOf("", "Changes take effect immediately. No restart required.");
    EXPECT_LT(header.y + header.height, first.y);
    EXPECT_EQ(first.y + first.height, second.y);
    EXPECT_LT(second.y + second.height, note.y);
    EXPECT_EQ(expectShown("push button", "Remove Editor").description, "org.example.Editor");
}

TEST_F(IgnoredAppsPaneTest, WhatIsChosenIsIgnoredAtOnceAndRemovedAgain) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());

    press("push button", "Add Your First App...");
    press("check box", "Editor");
    press("push button", "Ignore");
    EXPECT_TRUE(areIgnored({"org.example.Editor"})) << stored();
    EXPECT_TRUE(goes(question));
    expectShown("", "org.example.Editor");
    EXPECT_FALSE(tree().shows("No ignored apps yet"));

    click("push button", "Remove Editor");
    expectShown("", "No ignored apps yet");
    EXPECT_TRUE(areIgnored({})) << stored();
}

TEST_F(IgnoredAppsPaneTest, IdentifiersThatDifferOnlyInLetterCaseAreTwoApplications) {
    install("org.example.Notes", "Notes");
    install("org.example.notes", "Smaller Notes");
    storeIgnored({"org.example.notes", "org.example.Notes"});
    ASSERT_NO_FATAL_FAILURE(openPane());

    EXPECT_LT(frameOf("list item", "Notes").y, frameOf("list item", "Smaller Notes").y) << "capital letters come first";
    press("push button", "Remove Notes");

    EXPECT_TRUE(areIgnored({"org.example.notes"})) << stored();
    EXPECT_TRUE(goes("Notes"));
    expectShown("list item", "Smaller Notes");
}

TEST_F(IgnoredAppsPaneTest, AnApplicationThatIsGoneIsShownByItsIdentifierAndCanBeRemoved) {
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());
    ignore("Editor");
    choosePane("About");
    fs::remove(applications() / "org.example.Editor.desktop");

    choosePane("Ignored Apps");

    expectShown("list item", "org.example.Editor");
    press("push button", "Remove org.example.Editor");
    EXPECT_TRUE(areIgnored({})) << stored();
    expectShown("", "No ignored apps yet");
}

TEST_F(IgnoredAppsPaneTest, AfterARemovalTheKeyboardIsAtTheNextRow) {
    storeIgnored({"org.example.Editor", "org.example.Paintbox"});
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());

    EXPECT_TRUE(bus().focus(expectShown("push button", "Remove Editor")));
    keyboard().press(Key::space);
    EXPECT_TRUE(goes("Editor"));
    EXPECT_TRUE(getsKeyboard("Remove Paintbox"));
    keyboard().press(Key::space);

    expectShown("", "No ignored apps yet");
    EXPECT_TRUE(areIgnored({})) << stored();
    EXPECT_TRUE(getsKeyboard("Add App..."));
}

TEST_F(IgnoredAppsPaneTest, ArrowsGoFromRowToRow) {
    storeIgnored({"org.example.Editor", "org.example.Paintbox"});
    ASSERT_NO_FATAL_FAILURE(openPaneWithTwo());
    EXPECT_TRUE(bus().focus(expectShown("push button", "Remove Editor")));

    keyboard().press(Key::down);
    EXPECT_TRUE(getsKeyboard("Remove Paintbox"));
    keyboard().press(Key::up);
    EXPECT_TRUE(getsKeyboard("Remove Editor"));
}

/// To look at all of it takes assistive technology seconds, so it is done as seldom as possible.
TEST_F(IgnoredAppsPaneTest, TheLastOfManyAreReachedAndRemovedByKeys) {
    storeMany();
    ASSERT_NO_FATAL_FAILURE(openPane());
    EXPECT_TRUE(bus().focus(expectShown("push button", "Remove " + identifierOf(1))));

    keyboard().press(Key::end);
    for (const int number : {manyCount, manyCount - 1}) {
        keyboard().press(Key::space);
        EXPECT_TRUE(observer().waitUntil([&] { return !stored().contains(identifierOf(number)); })) << number;
    }

    EXPECT_TRUE(stored().contains(identifierOf(1)));
    EXPECT_TRUE(stored().contains(identifierOf(manyCount - 2)));
    const std::string last = "Remove " + identifierOf(manyCount - 2);
    EXPECT_TRUE(getsKeyboard(last));
    EXPECT_TRUE(isInTheWindow(frameOf("push button", last))) << frameOf("push button", last).text();
}

TEST_F(IgnoredAppsPaneTest, LongAndForeignNamesLeaveTheButtonsWhereTheyAre) {
    std::string endless = "An application";
    for (int word = 0; word < 30; ++word) endless += " with an endless name";
    const std::string rightToLeft = "עורך טקסט";
    install("a.short", "Short");
    install("b." + std::string(200, 'x'), endless);
    install("c.right-to-left", rightToLeft);
    storeIgnored({"a.short", "b." + std::string(200, 'x'), "c.right-to-left"});
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(resizeToMinimum());

    const PixelRect usual = frameOf("push button", "Remove Short");
    EXPECT_TRUE(isInTheWindow(usual)) << usual << " in " << windowFrame();
    for (const std::string& name : {endless, rightToLeft}) {
        const PixelRect button = frameOf("push button", "Remove " + name);
        const PixelRect text = frameOf("label", name);
        EXPECT_EQ(button.x, usual.x) << name;
        EXPECT_EQ(button.width, usual.width) << name;
        EXPECT_EQ(text.x, frameOf("label", "Short").x) << name;
        EXPECT_LT(text.x + text.width, button.x) << name;
        EXPECT_EQ(frameOf("list item", name).height, frameOf("list item", "Short").height) << name;
    }
}

TEST_F(IgnoredAppsPaneTest, ANameThatIsCutCanBeReadWholeAtThePointer) {
    const std::string identifier = "b." + std::string(100, 'x');
    std::string name = "An application";
    for (int word = 0; word < 10; ++word) name += " with a long name";
    install("a.short", "Short");
    install(identifier, name);
    storeIgnored({"a.short", identifier});
    ASSERT_NO_FATAL_FAILURE(openPane());
    ASSERT_NO_FATAL_FAILURE(resizeToMinimum());

    click("label", name);
    const PixelRect tip = frameOf("label", name + "\n" + identifier);
    EXPECT_TRUE(isInTheWindow(tip)) << tip << " in " << windowFrame();
    EXPECT_GT(tip.height, frameOf("label", name).height * 3);
    click("label", "Short");
    EXPECT_TRUE(goes(name + "\n" + identifier));
}

TEST_F(IgnoredAppsPaneTest, IdentifiersThatCannotBeReadHaveARowLikeOthers) {
    storeIgnored({"", "a.short", "b\\nin\\nlines", "c.\u202Emoc"});
    ASSERT_NO_FATAL_FAILURE(openPane());

    const PixelRect usual = frameOf("list item", "a.short");
    for (const char* name : {"Unnamed app", "b�in�lines", "c.�moc"})
        EXPECT_EQ(frameOf("list item", name).height, usual.height) << name;
    for (const char* name : {"Remove Unnamed app", "Remove b�in�lines", "Remove c.�moc"}) press("push button", name);
    EXPECT_TRUE(areIgnored({"a.short"})) << stored();
}

TEST_F(IgnoredAppsPaneTest, AnIconThatIsNotThereIsNoError) {
    install("org.example.Editor", "Editor", "Exec=true\nIcon=/nowhere/editor.png\n");
    install("org.example.Paintbox", "Paintbox", "Exec=true\nIcon=no-such-icon\n");
    storeIgnored({"org.example.Editor", "org.example.Paintbox"});
    ASSERT_NO_FATAL_FAILURE(openPane());

    expectShown("list item", "Paintbox");
    EXPECT_FALSE(program().log().contains(" error: ")) << program().log();
}

}  // namespace
}  // namespace velmorand::desktop

#include "platform/linux/DesktopEntries.h"

#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::IsNull;
using testing::NotNull;

std::string entryText(const std::string& name, const std::string& more = "") {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
}

/// The name of the entry, or what stands for a look-up that found nothing.
std::string nameOf(const DesktopEntry* entry) {
    return entry == nullptr ? "nothing" : entry->name.value_or("no name");
}

/// An index over a user's folder and one of the system.
class DesktopEntriesTest : public testing::Test {
protected:
    void addToUser(const fs::path& file, std::string_view text) { folder.write("user/applications" / file, text); }
    void addToSystem(const fs::path& file, std::string_view text) { folder.write("system/applications" / file, text); }

    /// Makes sure that the folder looks changed, however coarse the clock of the file system is.
    void markChanged(const fs::path& changed) {
        const fs::path path = folder.path() / changed;
        fs::last_write_time(path, fs::last_write_time(path) + 2s);
    }

    ScratchFolder folder;
    DesktopEntries entries{{folder.path() / "user", folder.path() / "system"}, {"de"}};
};

TEST_F(DesktopEntriesTest, AreNoneWithoutFolders) {
    EXPECT_THAT(entries.byID("org.example.Editor"), IsNull());
    EXPECT_THAT(entries.byStartupWMClass("Editor"), IsNull());
    EXPECT_THAT(entries.byBaseName("editor"), IsNull());
    EXPECT_THAT(entries.byExecutable("editor"), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundInEveryFolder) {
    addToUser("one.desktop", entryText("One"));
    addToSystem("two.desktop", entryText("Two"));

    EXPECT_EQ(nameOf(entries.byID("one")), "One");
    EXPECT_EQ(nameOf(entries.byID("two")), "Two");
    EXPECT_EQ(entries.byID("two")->id, "two");
}

TEST_F(DesktopEntriesTest, AreNamedInTheUsersLanguage) {
    addToUser("files.desktop", entryText("Files", "Name[de]=Dateien\n"));

    EXPECT_EQ(nameOf(entries.byID("files")), "Dateien");
}

TEST_F(DesktopEntriesTest, OfTheUserWinOverThoseOfTheSystem) {
    addToSystem("editor.desktop", entryText("System"));
    addToUser("editor.desktop", entryText("User"));

    EXPECT_EQ(nameOf(entries.byID("editor")), "User");
}

TEST_F(DesktopEntriesTest, ThatTheUserHidAreGone) {
    addToSystem("editor.desktop", entryText("System"));
    addToUser("editor.desktop", entryText("User", "Hidden=true\n"));

    EXPECT_THAT(entries.byID("editor"), IsNull());
}

TEST_F(DesktopEntriesTest, InSubfoldersHaveTheFolderInTheirId) {
    addToSystem("vendor/editor.desktop", entryText("Editor"));
    addToSystem("vendor/tools/viewer.desktop", entryText("Viewer"));

    EXPECT_EQ(nameOf(entries.byID("vendor-editor")), "Editor");
    EXPECT_EQ(nameOf(entries.byID("vendor-tools-viewer")), "Viewer");
    EXPECT_THAT(entries.byID("editor"), IsNull());
    EXPECT_THAT(entries.byID("vendor/editor"), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundById) {
    addToSystem("org.example.Editor.desktop", entryText("Editor"));

    EXPECT_THAT(entries.byID("org.example.Editor"), NotNull());
    EXPECT_THAT(entries.byID("org.example.editor"), IsNull());
    EXPECT_THAT(entries.byID("org.example.Editor.desktop"), IsNull());
    EXPECT_THAT(entries.byID("Editor"), IsNull());
    EXPECT_THAT(entries.byID(""), IsNull());
}

TEST_F(DesktopEntriesTest, AreOnlyFilesWithTheEndingOfAnEntry) {
    addToSystem("editor.desktop.bak", entryText("Backup"));
    addToSystem("editor.txt", entryText("Text"));
    addToSystem("desktop", entryText("No Ending"));
    addToSystem("folder.desktop/inside.txt", entryText("Inside"));

    EXPECT_THAT(entries.byID("editor"), IsNull());
    EXPECT_THAT(entries.byID("editor.desktop"), IsNull());
    EXPECT_THAT(entries.byID("desktop"), IsNull());
    EXPECT_THAT(entries.byID("folder"), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundNextToBrokenOnes) {
    addToSystem("a.desktop", std::string("\0\xFF[Desktop", 10));
    addToSystem("b.desktop", entryText("Huge", std::string((1U << 20U) + 1, 'x')));
    folder.link("system/applications/c.desktop", "missing.desktop");
    folder.link("system/applications/d.desktop", "d.desktop");
    folder.makePipe("system/applications/e.desktop");
    addToSystem("f.desktop", entryText("Good"));

    EXPECT_EQ(nameOf(entries.byID("f")), "Good");
    EXPECT_THAT(entries.byID("a"), IsNull());
    EXPECT_THAT(entries.byID("b"), IsNull());
    EXPECT_THAT(entries.byID("c"), IsNull());
    EXPECT_THAT(entries.byID("d"), IsNull());
    EXPECT_THAT(entries.byID("e"), IsNull());
}

TEST_F(DesktopEntriesTest, MayBeLinks) {
    folder.write("elsewhere/editor.desktop", entryText("Editor"));
    folder.link("system/applications/editor.desktop", (folder.path() / "elsewhere/editor.desktop").string());

    EXPECT_EQ(nameOf(entries.byID("editor")), "Editor");
}

TEST_F(DesktopEntriesTest, AreReadAgainWhenAFileIsAdded) {
    addToSystem("one.desktop", entryText("One"));
    EXPECT_THAT(entries.byID("two"), IsNull());

    addToSystem("two.desktop", entryText("Two"));
    markChanged("system/applications");

    EXPECT_EQ(nameOf(entries.byID("two")), "Two");
    EXPECT_EQ(nameOf(entries.byID("one")), "One");
}

TEST_F(DesktopEntriesTest, AreReadAgainWhenAFileIsRemoved) {
    addToSystem("one.desktop", entryText("One"));
    EXPECT_THAT(entries.byID("one"), NotNull());

    fs::remove(folder.path() / "system/applications/one.desktop");
    markChanged("system/applications");

    EXPECT_THAT(entries.byID("one"), IsNull());
}

TEST_F(DesktopEntriesTest, AreReadAgainWhenAFolderAppears) {
    addToSystem("one.desktop", entryText("System"));
    EXPECT_EQ(nameOf(entries.byID("one")), "System");

    addToUser("one.desktop", entryText("User"));

    EXPECT_EQ(nameOf(entries.byID("one")), "User");
}

TEST_F(DesktopEntriesTest, AreReadAgainWhenAFileIsAddedToASubfolder) {
    addToSystem("vendor/one.desktop", entryText("One"));
    EXPECT_THAT(entries.byID("vendor-two"), IsNull());

    addToSystem("vendor/two.desktop", entryText("Two"));
    markChanged("system/applications/vendor");

    EXPECT_EQ(nameOf(entries.byID("vendor-two")), "Two");
}

TEST_F(DesktopEntriesTest, AreFoundByTheWindowClassExactlyBeforeAnyOtherLetterCase) {
    addToSystem("a.desktop", entryText("Other Case", "StartupWMClass=EDITOR\n"));
    addToSystem("b.desktop", entryText("Exact", "StartupWMClass=Editor\n"));

    EXPECT_EQ(nameOf(entries.byStartupWMClass("Editor")), "Exact");
    EXPECT_EQ(nameOf(entries.byStartupWMClass("EDITOR")), "Other Case");
    EXPECT_EQ(nameOf(entries.byStartupWMClass("eDITOR")), "Other Case");
    EXPECT_THAT(entries.byStartupWMClass("Edito"), IsNull());
    EXPECT_THAT(entries.byStartupWMClass(""), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundByAnyLetterCaseBeyondAscii) {
    addToSystem("a.desktop", entryText("Beetle", "StartupWMClass=KÄFER\n"));

    EXPECT_EQ(nameOf(entries.byStartupWMClass("Käfer")), "Beetle");
}

TEST_F(DesktopEntriesTest, AreFoundByTheirBaseNameInAnyLetterCase) {
    addToSystem("FeatherPad.desktop", entryText("Pad"));

    EXPECT_EQ(nameOf(entries.byBaseName("featherpad")), "Pad");
    EXPECT_EQ(nameOf(entries.byBaseName("FEATHERPAD")), "Pad");
    EXPECT_THAT(entries.byBaseName("feather"), IsNull());
    EXPECT_THAT(entries.byBaseName(""), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundByTheLastPartOfAReverseDomainId) {
    addToSystem("org.gnome.Calculator.desktop", entryText("Calculator"));

    EXPECT_EQ(nameOf(entries.byBaseName("calculator")), "Calculator");
    EXPECT_EQ(nameOf(entries.byBaseName("org.gnome.calculator")), "Calculator");
    EXPECT_THAT(entries.byBaseName("gnome"), IsNull());
}

TEST_F(DesktopEntriesTest, AreFoundByTheWholeIdBeforeItsLastPart) {
    addToSystem("a.files.desktop", entryText("Last Part"));
    addToSystem("files.desktop", entryText("Whole"));

    EXPECT_EQ(nameOf(entries.byBaseName("Files")), "Whole");
}

TEST_F(DesktopEntriesTest, AreFoundByTheirExecutable) {
    addToSystem("a.desktop", entryText("Editor", "Exec=/usr/bin/the-editor %F\n"));
    addToSystem("b.desktop", entryText("Without"));

    EXPECT_EQ(nameOf(entries.byExecutable("the-editor")), "Editor");
    EXPECT_THAT(entries.byExecutable("/usr/bin/the-editor"), IsNull());
    EXPECT_THAT(entries.byExecutable("The-Editor"), IsNull());
    EXPECT_THAT(entries.byExecutable(""), IsNull());
}

TEST_F(DesktopEntriesTest, ThatMenusListAreFoundBeforeThoseThatTheyHide) {
    const std::string more = "StartupWMClass=Browser\nExec=browser %U\n";
    addToSystem("com.example.Browser.desktop", entryText("Hidden", more + "NoDisplay=true\n"));
    addToSystem("org.example.browser.desktop", entryText("Listed", more));

    EXPECT_EQ(nameOf(entries.byStartupWMClass("Browser")), "Listed");
    EXPECT_EQ(nameOf(entries.byStartupWMClass("browser")), "Listed");
    EXPECT_EQ(nameOf(entries.byBaseName("browser")), "Listed");
    EXPECT_EQ(nameOf(entries.byExecutable("browser")), "Listed");
    EXPECT_EQ(nameOf(entries.byID("com.example.Browser")), "Hidden");
}

TEST_F(DesktopEntriesTest, ThatMenusHideAreFoundByAnExactClassBeforeListedOnesByAnyLetterCase) {
    addToSystem("a.desktop", entryText("Listed", "StartupWMClass=EDITOR\n"));
    addToSystem("b.desktop", entryText("Hidden", "StartupWMClass=Editor\nNoDisplay=true\n"));

    EXPECT_EQ(nameOf(entries.byStartupWMClass("Editor")), "Hidden");
}

TEST_F(DesktopEntriesTest, OfTheMenusAreListed) {
    addToUser("b.desktop", entryText("Here", "NoDisplay=true\n"));
    addToSystem("a.desktop", entryText("First", "TryExec=/bin/sh\n"));
    addToSystem("b.desktop", entryText("Covered"));
    addToSystem("c.desktop", entryText("Other Desktop", "OnlyShowIn=Other;\n"));
    addToSystem("d.desktop", entryText("Program Missing", "TryExec=/nowhere/editor\n"));
    addToSystem("e.desktop", entryText("Last", "NotShowIn=Other;\nTryExec=sh\n"));

    const auto listed = entries.listed();

    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(listed[0].id, "a");
    EXPECT_EQ(listed[0].path, folder.path() / "system/applications/a.desktop");
    EXPECT_EQ(listed[1].id, "e");
}

TEST_F(DesktopEntriesTest, HaveTheIdOfTheIndexWhenTheyAreReadFromTheirFile) {
    addToSystem("vendor/editor.desktop", entryText("Editor", "Name[de]=Schreiber\n"));
    folder.write("elsewhere/editor.desktop", entryText("Other"));
    const fs::path inside = folder.path() / "system/applications/vendor/editor.desktop";
    const fs::path outside = folder.path() / "elsewhere/editor.desktop";

    const auto inIndex = entries.inFile(inside);
    const auto elsewhere = entries.inFile(outside);

    ASSERT_TRUE(inIndex && elsewhere);
    EXPECT_EQ(inIndex->id, "vendor-editor");
    EXPECT_EQ(inIndex->name, "Schreiber");
    EXPECT_EQ(inIndex->path, inside);
    EXPECT_EQ(elsewhere->id, "editor");
    EXPECT_TRUE(entries.covers(inside));
    EXPECT_FALSE(entries.covers(outside));
    EXPECT_FALSE(entries.covers(folder.path() / "system/applications/vendor/editor.txt"));
}

TEST_F(DesktopEntriesTest, AreNotReadFromWhatIsNone) {
    addToSystem("broken.desktop", "[Desktop Entry]\nType=App");
    addToSystem("editor.txt", entryText("Text"));
    folder.write("folder.desktop/file", "");
    folder.makePipe("pipe.desktop");

    EXPECT_EQ(entries.inFile(folder.path() / "system/applications/broken.desktop"), std::nullopt);
    EXPECT_EQ(entries.inFile(folder.path() / "system/applications/editor.txt"), std::nullopt);
    EXPECT_EQ(entries.inFile(folder.path() / "folder.desktop"), std::nullopt);
    EXPECT_EQ(entries.inFile(folder.path() / "pipe.desktop"), std::nullopt);
    EXPECT_EQ(entries.inFile("/"), std::nullopt);
    EXPECT_EQ(entries.inFile(""), std::nullopt);
}

/// An index over the folders and language that the environment names.
class SessionDesktopEntriesTest : public testing::Test {
protected:
    [[nodiscard]] std::string at(const std::string& relative) const { return (folder.path() / relative).string(); }

    ScratchFolder folder;
    ScopedEnvironment home{"HOME", at("home")};
    ScopedEnvironment dataHome{"XDG_DATA_HOME", std::nullopt};
    ScopedEnvironment dataFolders{"XDG_DATA_DIRS", at("first") + ":relative::" + at("second")};
    ScopedEnvironment allLocales{"LC_ALL", std::nullopt};
    ScopedEnvironment messageLocale{"LC_MESSAGES", std::nullopt};
    ScopedEnvironment language{"LANG", "C.UTF-8"};
};

TEST_F(SessionDesktopEntriesTest, AreInTheHomeFolderUnlessAnotherIsNamed) {
    folder.write("home/.local/share/applications/a.desktop", entryText("Home"));
    folder.write("data/applications/a.desktop", entryText("Data Home"));

    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Home");

    const ScopedEnvironment empty{"XDG_DATA_HOME", ""};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Home");

    const ScopedEnvironment named{"XDG_DATA_HOME", at("data")};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Data Home");
}

TEST_F(SessionDesktopEntriesTest, AreInTheSystemsFoldersInTheirOrderAfterTheUsers) {
    folder.write("home/.local/share/applications/a.desktop", entryText("User"));
    for (const std::string id : {"a", "b"}) folder.write("first/applications/" + id + ".desktop", entryText("First"));
    for (const std::string id : {"a", "b", "c"})
        folder.write("second/applications/" + id + ".desktop", entryText("Second"));
    DesktopEntries entries = DesktopEntries::ofSession();

    EXPECT_EQ(nameOf(entries.byID("a")), "User");
    EXPECT_EQ(nameOf(entries.byID("b")), "First");
    EXPECT_EQ(nameOf(entries.byID("c")), "Second");
}

TEST_F(SessionDesktopEntriesTest, AreListedAsTheDesktopOfTheSessionWants) {
    folder.write("first/applications/a.desktop", entryText("A", "OnlyShowIn=XFCE;\n"));
    folder.write("first/applications/b.desktop", entryText("B", "NotShowIn=XFCE;\n"));
    const ScopedEnvironment desktops{"XDG_CURRENT_DESKTOP", "Own:XFCE"};

    const auto listed = DesktopEntries::ofSession().listed();

    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0].id, "a");
}

TEST_F(SessionDesktopEntriesTest, AreNamedInTheLanguageOfTheSession) {
    folder.write("first/applications/a.desktop",
                 entryText("Files", "Name[de]=Dateien\nName[de_AT]=Akten\nName[fr]=Fichiers\n"));
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Files");

    const ScopedEnvironment weakest{"LANG", "de_DE.UTF-8"};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Dateien");

    const ScopedEnvironment stronger{"LC_MESSAGES", "de_AT.UTF-8@euro"};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Akten");

    const ScopedEnvironment strongest{"LC_ALL", "fr"};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Fichiers");

    const ScopedEnvironment none{"LC_ALL", "POSIX"};
    EXPECT_EQ(nameOf(DesktopEntries::ofSession().byID("a")), "Files");
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/DesktopApplications.h"

#include "platform/linux/ApplicationIdentity.h"
#include "platform/linux/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Field;

std::string entryText(const std::string& more = "") {
    return "[Desktop Entry]\nType=Application\n" + more;
}

class DesktopApplicationsTest : public testing::Test {
protected:
    /// Answers the location.
    fs::path install(const fs::path& file, const std::string& more = "Name=Editor\n") {
        folder.write("data/applications" / file, entryText(more));
        return folder.path() / "data/applications" / file;
    }
    fs::path writeElsewhere(const fs::path& file, const std::string& text) {
        folder.write("elsewhere" / file, text);
        return folder.path() / "elsewhere" / file;
    }

    ScratchFolder folder;
    DesktopApplications applications{DesktopEntries({folder.path() / "data"}, {"de"})};
};

TEST_F(DesktopApplicationsTest, AreNamedInTheUsersLanguageAndElseByTheirIdentifier) {
    EXPECT_EQ(applications.displayName(install("a.desktop", "Name=Files\nName[de]=Dateien\n")), "Dateien");
    EXPECT_EQ(applications.displayName(install("org.example.Nameless.desktop", "")), "org.example.Nameless");
}

TEST_F(DesktopApplicationsTest, AreNamedByTheirPathWhereThereIsNone) {
    EXPECT_EQ(applications.displayName("/nowhere/org.example.Gone.desktop"), "org.example.Gone");
    EXPECT_EQ(applications.displayName("/nowhere/some file.txt"), "some file.txt");
    EXPECT_EQ(applications.displayName("/"), "/");
    EXPECT_EQ(applications.displayName("/nowhere/caf\xE9.txt"), "caf\uFFFD.txt");
}

TEST_F(DesktopApplicationsTest, HaveAnIconOfTheThemeOrAFileThatIsThere) {
    folder.write("icon.png", "");
    const std::string picture = (folder.path() / "icon.png").string();

    EXPECT_EQ(applications.icon(install("a.desktop", "Icon=editor\n")),
              (ApplicationIcon{ApplicationIcon::Source::theme, "editor"}));
    EXPECT_EQ(applications.icon(install("b.desktop", "Icon=" + picture + "\n")),
              (ApplicationIcon{ApplicationIcon::Source::file, picture}));
    EXPECT_EQ(applications.icon(install("c.desktop", "Icon=/nowhere/icon.png\n")), std::nullopt);
    EXPECT_EQ(applications.icon(install("d.desktop")), std::nullopt);
    EXPECT_EQ(applications.icon("/nowhere/e.desktop"), std::nullopt);
}

TEST_F(DesktopApplicationsTest, AreFoundAlsoWhenMenusHideThem) {
    const fs::path location = install("helper.desktop", "NoDisplay=true\n");

    EXPECT_EQ(applications.withIdentifier("helper"), location);
    EXPECT_EQ(applications.identifier(location), "helper");
    EXPECT_THAT(applications.listed(), testing::IsEmpty());
}

TEST_F(DesktopApplicationsTest, HaveNoIdentifierThatIsNoneOrThatNoWindowHas) {
    EXPECT_EQ(applications.identifier(install("hidden.desktop", "Hidden=true\n")), std::nullopt);
    EXPECT_EQ(applications.identifier(writeElsewhere("broken.desktop", "[Desktop Entry]\nName=A\n")), std::nullopt);
    EXPECT_EQ(applications.identifier(install("caf\xE9.desktop")), std::nullopt);
    EXPECT_EQ(applications.identifier(install("li\nne.desktop")), std::nullopt);
    EXPECT_EQ(applications.identifier(install(std::string(200, 'a') + ".desktop")), std::string(200, 'a'));
    EXPECT_EQ(applications.identifier(install(fs::path(std::string(200, 'a')) / (std::string(60, 'b') + ".desktop"))),
              std::nullopt);
    EXPECT_THAT(applications.listed(),
                ElementsAre(Field(&InstalledApplication::bundleIdentifier, std::string(200, 'a'))));
}

TEST_F(DesktopApplicationsTest, WithoutAWindowOfTheirOwnCannotBeChosen) {
    const fs::path location = install("monitor.desktop", "Name=Monitor\nTerminal=true\n");

    EXPECT_EQ(applications.identifier(location), std::nullopt);
    EXPECT_THAT(applications.listed(), testing::IsEmpty());
    EXPECT_EQ(applications.withIdentifier("monitor"), location) << "it may have been ignored in another way";
    EXPECT_EQ(applications.displayName(location), "Monitor");
}

TEST_F(DesktopApplicationsTest, OwnTheWindowsOfAProgramThatAlsoRunsInATerminal) {
    install("editor-in-terminal.desktop", "Exec=/usr/bin/example-edit --terminal\nTerminal=true\n");
    install("org.example.Editor.desktop", "Exec=/usr/bin/example-edit\nTerminal=false\n");
    DesktopEntries entries({folder.path() / "data"}, {});

    EXPECT_EQ(entries.byExecutable("example-edit")->id, "org.example.Editor");
}

TEST_F(DesktopApplicationsTest, AreListedWithWhatTheUserSees) {
    const fs::path editor = install("org.example.Editor.desktop", "Name=Editor\nIcon=editor\n");
    const fs::path other = install("org.example.editor.desktop", "");

    EXPECT_THAT(applications.listed(),
                ElementsAre(InstalledApplication{editor, "org.example.Editor", "Editor",
                                                 ApplicationIcon{ApplicationIcon::Source::theme, "editor"}},
                            InstalledApplication{other, "org.example.editor", "org.example.editor", std::nullopt}));
}

struct ElsewhereRow {
    std::string name;
    std::string file;
    std::string lines;
    std::string expected;

    friend void PrintTo(const ElsewhereRow& row, std::ostream* out) { *out << row.name; }
};

/// Entries outside the folders of the session. In these there are an editor, a terminal and something of Python.
class EntryElsewhereTest : public DesktopApplicationsTest, public testing::WithParamInterface<ElsewhereRow> {
protected:
    void SetUp() override {
        install("org.example.Editor.desktop", "StartupWMClass=Example-editor\nExec=/usr/bin/example-edit %F\n");
        install("terminal.desktop", "Exec=terminal\n");
        install("script.desktop", "Exec=python3 /opt/script\n");
        install("sandboxed.desktop", "Exec=/usr/bin/flatpak run org.example.Sandboxed\n");
    }
};

TEST_P(EntryElsewhereTest, HasTheIdentifierOfTheApplicationThatItStarts) {
    EXPECT_EQ(applications.identifier(writeElsewhere(GetParam().file, entryText(GetParam().lines))),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, EntryElsewhereTest,
    testing::Values(
        ElsewhereRow{"ByItsFile", "org.example.Editor.desktop", "Exec=another\n", "org.example.Editor"},
        ElsewhereRow{"ByItsWindowClass", "a.desktop", "StartupWMClass=example-Editor\n", "org.example.Editor"},
        ElsewhereRow{"ByTheBaseNameOfAnId", "a.desktop", "StartupWMClass=Editor\n", "org.example.Editor"},
        ElsewhereRow{"ByItsProgram", "a.desktop", "Exec=example-edit --new\n", "org.example.Editor"},
        ElsewhereRow{"ByTheClassThatItsProgramHas", "a.desktop", "Exec=/opt/Terminal\n", "terminal"},
        ElsewhereRow{"ByItsOwnWindowClass", "a.desktop", "StartupWMClass=Other\nExec=other\n", "Other"},
        ElsewhereRow{"ByNothingButItsFile", "The Other.desktop", "Exec=other\n", "The Other"},
        ElsewhereRow{"NotByAnInterpreter", "a.desktop", "Exec=python3 /opt/other\n", "a"},
        ElsewhereRow{"NotByAProgramThatStartsOthers", "a.desktop", "Exec=flatpak run org.example.Other\n", "a"}),
    [](const auto& each) { return each.param.name; });

TEST_F(DesktopApplicationsTest, AreKnownByTheIdentifierThatTheirWindowsHave) {
    install("com.example.Browser.desktop", "StartupWMClass=Browser\nNoDisplay=true\n");
    const fs::path listed = install("org.example.browser.desktop", "StartupWMClass=Browser\n");
    DesktopEntries entries({folder.path() / "data"}, {});

    ApplicationClues clues;
    clues.windowClass = "Browser";
    const ApplicationIdentity running = identifyApplication(clues, entries);

    EXPECT_EQ(running.identifier, applications.identifier(listed));
    EXPECT_EQ(applications.withIdentifier(*running.identifier), listed);
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/DesktopEntries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace velmorand {

void PrintTo(const DesktopEntry& entry, std::ostream* out) {
    *out << entry.id << " name " << entry.name.value_or("none") << " class " << entry.startupWMClass.value_or("none")
         << " executable " << entry.executable.value_or("none") << " icon " << entry.icon.value_or("none");
}

namespace {

using namespace std::string_literals;

const std::vector<std::string> austrian{"de_AT", "de"};

std::optional<DesktopEntry> parsed(std::string_view text) {
    return parseDesktopEntry("org.example.Editor", text, austrian);
}

/// The entry with one more line in its main group.
std::optional<DesktopEntry> parsedWith(const std::string& line) {
    return parsed("[Desktop Entry]\nType=Application\n" + line + "\n");
}

TEST(DesktopEntryTest, TellsIdNameWindowClassAndExecutable) {
    const auto entry = parsed("[Desktop Entry]\n"
                              "Type=Application\n"
                              "Name=Editor\n"
                              "StartupWMClass=Example-editor\n"
                              "Exec=/usr/bin/editor --new %F\n");

    EXPECT_EQ(entry, (DesktopEntry{"org.example.Editor", "Editor", "Example-editor", "editor"}));
}

TEST(DesktopEntryTest, NeedsNothingButItsType) {
    EXPECT_EQ(parsed("[Desktop Entry]\nType=Application"),
              (DesktopEntry{"org.example.Editor", std::nullopt, std::nullopt, std::nullopt}));
}

TEST(DesktopEntryTest, TakesEmptyValuesAsAbsent) {
    EXPECT_EQ(parsed("[Desktop Entry]\nType=Application\nName=\nStartupWMClass=\nExec=\n"),
              (DesktopEntry{"org.example.Editor", std::nullopt, std::nullopt, std::nullopt}));
}

TEST(DesktopEntryTest, IgnoresCommentsEmptyLinesAndBlanksAroundThem) {
    const auto entry = parsed("# Name=Comment\n"
                              "\n"
                              "  [Desktop Entry]\t\r\n"
                              "\r\n"
                              " Type = Application \r\n"
                              "#Name=Comment\n"
                              "\tName =  Text Editor\t\r\n");

    EXPECT_EQ(entry, (DesktopEntry{"org.example.Editor", "Text Editor", std::nullopt, std::nullopt}));
}

TEST(DesktopEntryTest, ReadsOnlyTheMainGroup) {
    const auto entry = parsed("Name=Before\n"
                              "[Desktop Action new]\n"
                              "Name=Earlier Action\n"
                              "[Desktop Entry]\n"
                              "Type=Application\n"
                              "[Desktop Action other]\n"
                              "Name=Later Action\n"
                              "Exec=other\n"
                              "Hidden=true\n");

    EXPECT_EQ(entry, (DesktopEntry{"org.example.Editor", std::nullopt, std::nullopt, std::nullopt}));
}

TEST(DesktopEntryTest, KeepsTheFirstValueOfARepeatedKey) {
    EXPECT_EQ(parsedWith("Name=First\nName=Second")->name, "First");
}

TEST(DesktopEntryTest, KeepsEqualsSignsInValues) {
    EXPECT_EQ(parsedWith("Name=a=b=c")->name, "a=b=c");
}

struct NameRow {
    std::string name;
    std::string lines;
    std::string expected;

    friend void PrintTo(const NameRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEntryNameTest : public testing::TestWithParam<NameRow> {};

TEST_P(DesktopEntryNameTest, IsInTheUsersLanguage) {
    EXPECT_EQ(parsedWith(GetParam().lines)->name, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DesktopEntryNameTest,
    testing::Values(NameRow{"TheMostWanted", "Name=Files\nName[de]=Dateien\nName[de_AT]=Akten\nName[fr]=Fichiers",
                            "Akten"},
                    NameRow{"TheNextWanted", "Name=Files\nName[de]=Dateien\nName[fr]=Fichiers", "Dateien"},
                    NameRow{"NoneWanted", "Name=Files\nName[fr]=Fichiers", "Files"},
                    NameRow{"EmptyInTheMostWanted", "Name=Files\nName[de_AT]=\nName[de]=Dateien", "Dateien"},
                    NameRow{"OnlyInTheUsersLanguage", "Name[de]=Dateien", "Dateien"},
                    NameRow{"OtherLetterCase", "Name=Files\nName[DE]=Dateien", "Files"}),
    [](const auto& each) { return each.param.name; });

TEST(DesktopEntryNameTest, IsThePlainOneWithoutALanguage) {
    EXPECT_EQ(parseDesktopEntry("id", "[Desktop Entry]\nType=Application\nName=Files\nName[de]=Dateien", {})->name,
              "Files");
}

struct ExecutableRow {
    std::string name;
    std::string command;
    std::optional<std::string> expected;

    friend void PrintTo(const ExecutableRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEntryExecutableTest : public testing::TestWithParam<ExecutableRow> {};

TEST_P(DesktopEntryExecutableTest, IsTheLastPartOfTheProgramsPath) {
    EXPECT_EQ(parsedWith("Exec=" + GetParam().command)->executable, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DesktopEntryExecutableTest,
    testing::Values(ExecutableRow{"Bare", "editor", "editor"}, ExecutableRow{"WithArguments", "editor %U -x", "editor"},
                    ExecutableRow{"Path", "/opt/editor/bin/editor %U", "editor"},
                    ExecutableRow{"Quoted", "\"/opt/The Editor/the editor\" %U", "the editor"},
                    ExecutableRow{"QuotedWithEscapes", R"("/opt/a\\"b/the \\$editor%%" %U)", "the $editor%"},
                    ExecutableRow{"QuotedBareName", "\"editor\"", "editor"},
                    ExecutableRow{"QuoteWithoutEnd", "\"/opt/The Editor/editor", "editor"},
                    ExecutableRow{"PathWithSlashInItsArgument", "editor --folder=/usr/share", "editor"},
                    ExecutableRow{"Empty", "", std::nullopt}, ExecutableRow{"Folder", "/usr/bin/", std::nullopt},
                    ExecutableRow{"EmptyQuotes", "\"\" %U", std::nullopt},
                    ExecutableRow{"QuoteAlone", "\"", std::nullopt}),
    [](const auto& each) { return each.param.name; });

class NoApplicationTest : public testing::TestWithParam<std::pair<const char*, std::string>> {};

TEST_P(NoApplicationTest, HasNoEntry) {
    EXPECT_EQ(parsed(GetParam().second), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NoApplicationTest,
    testing::Values(std::pair("Empty", ""), std::pair("OnlyLineEnds", "\n\n\r\n"), std::pair("OnlyNuls", "\0\0\0"s),
                    std::pair("NoGroup", "Type=Application\nName=Editor\n"),
                    std::pair("OtherGroup", "[Desktop Action new]\nType=Application\n"),
                    std::pair("BrokenGroup", "[Desktop Entry\nType=Application\n"),
                    std::pair("OtherLetterCase", "[desktop entry]\nType=Application\n"),
                    std::pair("NoType", "[Desktop Entry]\nName=Editor\n"),
                    std::pair("EmptyType", "[Desktop Entry]\nType=\n"),
                    std::pair("Link", "[Desktop Entry]\nType=Link\nURL=https://example.org\n"),
                    std::pair("Folder", "[Desktop Entry]\nType=Directory\n"),
                    std::pair("NoEqualsSign", "[Desktop Entry]\nType Application\n"),
                    std::pair("Hidden", "[Desktop Entry]\nType=Application\nHidden=true\n"),
                    std::pair("HiddenWithBlanks", "[Desktop Entry]\nType=Application\nHidden = true \n"),
                    std::pair("OtherFile", "\x7F"
                                           "ELF\2\1\1\0\0\0"s)),
    [](const auto& each) { return each.param.first; });

TEST(DesktopEntryTest, IsThereWhenItSaysThatItIsNotHidden) {
    EXPECT_TRUE(parsedWith("Hidden=false").has_value());
    EXPECT_TRUE(parsedWith("NoDisplay=true").has_value());
}

struct LineRow {
    std::string name;
    std::string value;
    std::optional<std::string> expected;

    friend void PrintTo(const LineRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEntryLineTest : public testing::TestWithParam<LineRow> {};

TEST_P(DesktopEntryLineTest, IsWhatANameShows) {
    EXPECT_EQ(parsedWith("Name=" + GetParam().value)->name, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, DesktopEntryLineTest,
                         testing::Values(LineRow{"Escapes", R"(Fish\sand\\Chips)", "Fish and\\Chips"},
                                         LineRow{"LineEndsAsSpaces", R"(Fish\nChips\r\t!)", "Fish Chips  !"},
                                         LineRow{"BlanksAroundAnEscape", R"(\sFish\n)", "Fish"},
                                         LineRow{"NothingButBlanks", R"(\s\t)", std::nullopt},
                                         LineRow{"ControlCharacters", "Fish\x1B[1m\x7F", "Fish [1m"},
                                         LineRow{"LateControlCharacters", "Fish\u0085\u009B\u00A0é", "Fish  \u00A0é"},
                                         LineRow{"BrokenBytes", "Caf\xE9\xC2", "Caf\uFFFD\uFFFD"},
                                         LineRow{"RightToLeft", "עורך טקסט", "עורך טקסט"}),
                         [](const auto& each) { return each.param.name; });

struct IconRow {
    std::string name;
    std::string value;
    std::optional<std::string> expected;

    friend void PrintTo(const IconRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEntryIconTest : public testing::TestWithParam<IconRow> {};

TEST_P(DesktopEntryIconTest, IsANameOrAnAbsolutePath) {
    EXPECT_EQ(parsedWith("Icon=" + GetParam().value)->icon, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, DesktopEntryIconTest,
                         testing::Values(IconRow{"Name", "org.example.Editor", "org.example.Editor"},
                                         IconRow{"NameWithEnding", "editor.png", "editor"},
                                         IconRow{"NameWithTwoEndings", "editor.svg.png", "editor.svg"},
                                         IconRow{"OnlyAnEnding", ".png", std::nullopt},
                                         IconRow{"Path", "/opt/The\\sEditor/icon.png", "/opt/The Editor/icon.png"},
                                         IconRow{"RelativePath", "icons/editor.png", std::nullopt},
                                         IconRow{"ControlCharacter", R"(edi\ntor)", std::nullopt},
                                         IconRow{"Empty", "", std::nullopt}),
                         [](const auto& each) { return each.param.name; });

struct ListingRow {
    std::string name;
    std::string lines;
    std::vector<std::string> desktops;
    bool expected = false;

    friend void PrintTo(const ListingRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEntryListingTest : public testing::TestWithParam<ListingRow> {};

TEST_P(DesktopEntryListingTest, TellsWhetherMenusListIt) {
    EXPECT_EQ(isListedIn(parsedWith(GetParam().lines)->listing, GetParam().desktops), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DesktopEntryListingTest,
    testing::Values(ListingRow{"Plain", "Name=A", {"XFCE"}, true}, ListingRow{"WithoutADesktop", "Name=A", {}, true},
                    ListingRow{"NoDisplay", "NoDisplay=true", {"XFCE"}, false},
                    ListingRow{"NoDisplayDenied", "NoDisplay=false", {"XFCE"}, true},
                    ListingRow{"OnlyHere", "OnlyShowIn=KDE;XFCE;", {"XFCE"}, true},
                    ListingRow{"OnlyHereWithoutASemicolon", "OnlyShowIn=XFCE", {"XFCE"}, true},
                    ListingRow{"OnlyElsewhere", "OnlyShowIn=KDE;", {"XFCE"}, false},
                    ListingRow{"OnlyElsewhereWithoutADesktop", "OnlyShowIn=KDE;", {}, false},
                    ListingRow{"OnlyNowhere", "OnlyShowIn=", {"XFCE"}, true},
                    ListingRow{"OtherLetterCase", "OnlyShowIn=xfce;", {"XFCE"}, false},
                    ListingRow{"NotHere", "NotShowIn=XFCE;KDE;", {"XFCE"}, false},
                    ListingRow{"NotElsewhere", "NotShowIn=KDE;", {"XFCE"}, true},
                    ListingRow{"OnlyInTheMoreImportant", "OnlyShowIn=A;\nNotShowIn=B;", {"A", "B"}, true},
                    ListingRow{"NotInTheMoreImportant", "OnlyShowIn=B;\nNotShowIn=A;", {"A", "B"}, false},
                    ListingRow{"OnlyButNoDisplay", "OnlyShowIn=XFCE;\nNoDisplay=true", {"XFCE"}, false}),
    [](const auto& each) { return each.param.name; });

TEST(DesktopEntryTest, NamesTheProgramWithoutWhichItIsNotThere) {
    EXPECT_EQ(parsedWith("TryExec=/opt/The\\sEditor/editor")->listing.neededProgram, "/opt/The Editor/editor");
    EXPECT_EQ(parsedWith("TryExec=")->listing.neededProgram, std::nullopt);
}

TEST(DesktopEntryTest, SurvivesAnyBytes) {
    constexpr std::string_view pieces = "[Desktop Entry]\nType=Application\nName[de]=\"Exec=\r\t #\\\xFF\xC3";
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        std::string text = "[Desktop Entry]\nType=Application\n";
        for (int i = 0; i < 40; ++i) text += pieces.substr(random() % pieces.size(), random() % 12);

        const auto entry = parsed(text);

        EXPECT_NE(entry.value_or(DesktopEntry{}).name, "") << text;
        EXPECT_NE(entry.value_or(DesktopEntry{}).startupWMClass, "") << text;
    }
}

}  // namespace
}  // namespace velmorand

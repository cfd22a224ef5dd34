#include "platform/linux/MenuText.h"

#include "platform/StatusBar.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace velmorand {
namespace {

struct TextCase {
    std::string_view name;
    std::string utf8;
    QString expected;
};

TEST(MenuTextTest, IsOneLineThatSaysNothingElse) {
    const std::array cases{
        TextCase{"empty", "", QString()},
        TextCase{"plain", "Größe 窗口 🪟", QStringLiteral(u"Größe 窗口 🪟")},
        TextCase{"line feeds", "a\r\n\nb\u2028c", QStringLiteral("a b c")},
        TextCase{"only controls", "\n\x1b\x7f", QString()},
        TextCase{"NUL", std::string("a\0b", 3), QStringLiteral("a b")},
        TextCase{"not UTF-8", "a\xe2", QStringLiteral(u"a\uFFFD")},
        TextCase{"overrides", "a\u202Egpj.\u202C\u2066x\u2069y", QStringLiteral("agpj.xy")},
        TextCase{"right to left", "שלום", QStringLiteral(u"שלום")},
    };
    for (const TextCase& row : cases) EXPECT_EQ(menuText(row.utf8, longestName), row.expected) << row.name;
}

TEST(MenuTextTest, IsCutBetweenCharactersWithAnEllipsis) {
    EXPECT_EQ(menuText(std::string(100, 'a'), longestName), QString(100, u'a'));
    EXPECT_EQ(menuText(std::string(101, 'a'), longestName), QString(99, u'a') + QChar(0x2026));
    EXPECT_EQ(menuText(std::string(1000, 'a'), longestName), QString(99, u'a') + QChar(0x2026));

    std::string families;
    QString wanted;
    for (int count = 0; count < 60; ++count) families += "👨‍👩‍👧‍👦";
    const QString cut = menuText(families, longestName);
    EXPECT_LE(cut.size(), 4 * longestName + 1);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_FALSE(cut.contains(QChar::ReplacementCharacter));

    std::string marks = "a";
    for (int count = 0; count < 10000; ++count) marks += "\u0301";
    EXPECT_LE(menuText(marks, longestName).size(), 4 * longestName + 1);
}

TEST(MenuTextTest, ALabelHasItsUnderscoresTwice) {
    EXPECT_EQ(menuLabel({.title = "snake_case & co_"}), QStringLiteral("snake__case & co__"));
}

TEST(MenuTextTest, SentencesOfTheProgramAreToldWhole) {
    const std::string longest =
        "Could not register Restore Previous Frame (Control + Option + Shift + Command + Right Arrow). Another app may "
        "already be using it.";
    EXPECT_EQ(menuLabel({.title = longest}).toStdString(), longest);
    EXPECT_EQ(toolTipText(longest).toStdString(), longest);
    const std::string name(150, 'a');
    EXPECT_EQ(menuLabel({.title = name}).size(), 150);
    EXPECT_EQ(menuLabel({.title = name, .action = "ignore"}).size(), 100);
}

TEST(MenuTextTest, AToolTipDoesNotLookLikeMarkup) {
    EXPECT_EQ(toolTipText("plain"), QStringLiteral("plain"));
    EXPECT_EQ(toolTipText("<b>&lt;"), QStringLiteral(u"<\u2060b>&\u2060lt;"));
}

struct ShortcutCase {
    std::string keyEquivalent;
    KeyEquivalentModifiers modifiers;
    QString expected;
};

TEST(MenuTextTest, KeyEquivalentsAreNamedAsPanelsKnowThem) {
    const KeyEquivalentModifiers none;
    const KeyEquivalentModifiers all{.control = true, .option = true, .shift = true, .command = true};
    const KeyEquivalentModifiers command{.command = true};
    const std::array cases{
        ShortcutCase{"", all, QString()},
        ShortcutCase{"\uF700", none, QStringLiteral("Up")},
        ShortcutCase{"\uF701", command, QStringLiteral("Super+Down")},
        ShortcutCase{"\uF702", all, QStringLiteral("Control+Alt+Shift+Super+Left")},
        ShortcutCase{"\uF703", command, QStringLiteral("Super+Right")},
        ShortcutCase{"\r", command, QStringLiteral("Super+Return")},
        ShortcutCase{"\t", command, QStringLiteral("Super+Tab")},
        ShortcutCase{" ", command, QStringLiteral("Super+space")},
        ShortcutCase{"\b", command, QStringLiteral("Super+BackSpace")},
        ShortcutCase{"\x7f", command, QStringLiteral("Super+BackSpace")},
        ShortcutCase{"\x1b", command, QStringLiteral("Super+Escape")},
        ShortcutCase{",", command, QStringLiteral("Super+comma")},
        ShortcutCase{"[", command, QStringLiteral("Super+bracketleft")},
        ShortcutCase{"q", command, QStringLiteral("Super+q")},
        ShortcutCase{"Q", command, QStringLiteral("Shift+Super+q")},
        ShortcutCase{"7", none, QStringLiteral("7")},
        ShortcutCase{"é", none, QStringLiteral("eacute")},
        ShortcutCase{"ab", command, QString()},
        ShortcutCase{"\uFFFF", command, QString()},
    };
    for (const ShortcutCase& row : cases) {
        const MenuItem item{.keyEquivalent = row.keyEquivalent, .keyEquivalentModifiers = row.modifiers};
        EXPECT_EQ(menuShortcut(item).join(u'+'), row.expected) << row.keyEquivalent;
    }
}

}  // namespace
}  // namespace velmorand

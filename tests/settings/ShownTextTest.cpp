#include "settings/ShownText.h"

#include "settings/support/QtPrinting.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

TEST(ShownTextTest, LeavesWhatCanBeReadAsItIs) {
    for (const char* text : {"", "Editor", "org.example.Editor", "Zwölf Boxkämpfer", "עורך טקסט", "الف\u200Fب",
                             "👩\u200D💻", "two  spaces "})
        EXPECT_EQ(shownText(QString::fromUtf8(text)), text);
}

TEST(ShownTextTest, IsOneLineWithoutControlCharacters) {
    EXPECT_EQ(shownText(QStringLiteral("a\nb\r\tc\u0085d\u2028e\u2029f\u001Bg")), QString::fromUtf8("a�b��c�d�e�f�g"));
}

TEST(ShownTextTest, ReadsInTheDirectionOfItsCharacters) {
    EXPECT_EQ(shownText(QStringLiteral("app.\u202Emoc\u202C")), QString::fromUtf8("app.�moc�"));
    for (const char16_t code :
         {u'\u202A', u'\u202B', u'\u202C', u'\u202D', u'\u202E', u'\u2066', u'\u2067', u'\u2068', u'\u2069'})
        EXPECT_EQ(shownText(QString(QChar(code))), QString(QChar(QChar::ReplacementCharacter)));
}

TEST(ShownTextTest, WhatCannotBeSeenIsSaid) {
    for (const char16_t* text : {u"", u"  ", u"\u00A0", u"\u200B\uFEFF", u"\u202E", u" \n"}) {
        EXPECT_EQ(shownName(QString::fromUtf16(text)), "Unnamed app");
        EXPECT_EQ(shownIdentifier(QString::fromUtf16(text)), "Blank identifier");
    }
}

TEST(ShownTextTest, NamesAndIdentifiersAreShownLikeAnyText) {
    EXPECT_EQ(shownName(QStringLiteral("a\nb")), QString::fromUtf8("a�b"));
    EXPECT_EQ(shownIdentifier(QStringLiteral("a\nb")), QString::fromUtf8("a�b"));
}

}  // namespace
}  // namespace velmorand

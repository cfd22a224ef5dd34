#include "platform/linux/NotificationText.h"

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

TEST(NotificationTextTest, IsValidAndWithoutControlCharacters) {
    const std::array cases{
        TextCase{"empty", "", QString()},
        TextCase{"plain", "Left half", QStringLiteral("Left half")},
        TextCase{"other scripts", "Größe 窗口 🪟", QStringLiteral(u"Größe 窗口 🪟")},
        TextCase{"markup", "<b>&amp;</b>", QStringLiteral("<b>&amp;</b>")},
        TextCase{"line feed and tab", "a\n\tb", QStringLiteral("a\n\tb")},
        TextCase{"NUL", std::string("a\0b", 3), QStringLiteral("ab")},
        TextCase{"carriage return, escape, delete",
                 "a\r\x1b\x7f"
                 "b",
                 QStringLiteral("ab")},
        TextCase{"controls of two bytes",
                 "a\xc2\x80\xc2\x9f"
                 "b",
                 QStringLiteral("ab")},
        TextCase{"a byte that begins nothing",
                 "a\xff"
                 "b",
                 QStringLiteral(u"a\uFFFDb")},
        TextCase{"cut off", "a\xe2", QStringLiteral(u"a\uFFFD")},
    };

    for (const TextCase& row : cases) EXPECT_EQ(notificationText(row.utf8, 100), row.expected) << row.name;
}

TEST(NotificationTextTest, EndsWithAnEllipsisWhenItIsTooLong) {
    EXPECT_EQ(notificationText("abcd", 4), QStringLiteral("abcd"));
    EXPECT_EQ(notificationText("abcde", 4), QStringLiteral(u"abc…"));
    EXPECT_EQ(notificationText("abcde", 1), QStringLiteral(u"…"));
    EXPECT_EQ(notificationText(std::string("a\0bcd", 5), 4), QStringLiteral("abcd"));
}

TEST(NotificationTextTest, IsNotCutInsideACharacterOfTwoCodeUnits) {
    EXPECT_EQ(notificationText("ab🪟cd", 4), QStringLiteral(u"ab…"));
    EXPECT_EQ(notificationText("ab🪟cd", 5), QStringLiteral(u"ab🪟…"));
}

TEST(NotificationTextTest, MarkupIsEscapedAndNothingElse) {
    EXPECT_EQ(escapedForMarkup(u"<a href=\"x\">'1 & 2'</a> &lt;"),
              QStringLiteral("&lt;a href=\"x\"&gt;'1 &amp; 2'&lt;/a&gt; &amp;lt;"));
    EXPECT_EQ(escapedForMarkup(u""), QString());
}

}  // namespace
}  // namespace velmorand

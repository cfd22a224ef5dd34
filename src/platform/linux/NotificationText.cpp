#include "platform/linux/NotificationText.h"

#include <QChar>
#include <QLatin1StringView>

namespace velmorand {
namespace {

constexpr QChar ellipsis(0x2026);

bool isUnwanted(QChar character) {
    return character.category() == QChar::Other_Control && character != u'\n' && character != u'\t';
}

}  // namespace

QString notificationText(std::string_view utf8, qsizetype longest) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    text.removeIf(isUnwanted);
    if (text.size() <= longest) return text;
    text.truncate(longest - 1);
    if (text.size() > 0 && text.back().isHighSurrogate()) text.chop(1);
    return text + ellipsis;
}

QString escapedForMarkup(QStringView text) {
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar character : text) {
        if (character == u'&')
            escaped += QLatin1StringView("&amp;");
        else if (character == u'<')
            escaped += QLatin1StringView("&lt;");
        else if (character == u'>')
            escaped += QLatin1StringView("&gt;");
        else
            escaped += character;
    }
    return escaped;
}

}  // namespace velmorand

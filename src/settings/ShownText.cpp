#include "settings/ShownText.h"

#include <QChar>
#include <QCoreApplication>
#include <algorithm>

namespace velmorand {
namespace {

/// Embeddings, overrides and isolates; the marks of a direction turn nothing and belong to some names.
bool turnsDirection(QChar character) {
    const char16_t code = character.unicode();
    return (code >= u'\u202A' && code <= u'\u202E') || (code >= u'\u2066' && code <= u'\u2069');
}

bool isMisleading(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph || turnsDirection(character);
}

/// Whether nothing of it can be seen.
bool isBlank(const QString& text) {
    return std::ranges::all_of(
        text, [](QChar character) { return character.isSpace() || character.category() == QChar::Other_Format; });
}

}  // namespace

QString shownText(const QString& text) {
    QString shown = text;
    std::ranges::replace_if(shown, isMisleading, QChar(QChar::ReplacementCharacter));
    return shown;
}

QString shownName(const QString& name) {
    return isBlank(name) ? QCoreApplication::translate("ShownText", "Unnamed app") : shownText(name);
}

QString shownIdentifier(const QString& identifier) {
    return isBlank(identifier) ? QCoreApplication::translate("ShownText", "Blank identifier") : shownText(identifier);
}

}  // namespace velmorand

#include "platform/linux/MenuText.h"

#include "platform/StatusBar.h"

#include <xkbcommon/xkbcommon.h>

#include <QChar>
#include <QTextBoundaryFinder>
#include <array>
#include <optional>

namespace velmorand {
namespace {

constexpr QChar ellipsis(0x2026);
/// A character may carry any number of marks; more than this many UTF-16 code units for each are not looked at.
constexpr qsizetype longestCharacter = 4;

/// Embeddings, overrides and isolates reach beyond the text that they stand in.
bool turnsDirection(QChar character) {
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool endsLine(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

/// Where the text has to be cut so that with an ellipsis it is no longer than allowed; absent when it is short enough.
std::optional<qsizetype> cutIn(const QString& text, qsizetype longest) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype cut = 0;
    for (qsizetype characters = 1; characters <= longest; ++characters) {
        const qsizetype end = finder.toNextBoundary();
        if (end < 0 || end == text.size()) return std::nullopt;
        if (characters == longest - 1) cut = end;
    }
    return cut;
}

QString shortened(const QString& text, qsizetype longest) {
    QString part = text.left(longestCharacter * longest);
    const bool isPart = part.size() < text.size();
    if (isPart && part.back().isHighSurrogate()) part.chop(1);
    if (const auto cut = cutIn(part, longest)) return part.left(*cut) + ellipsis;
    return isPart ? part + ellipsis : part;
}

struct NamedKey {
    char32_t character;
    const char* name;
};
/// Characters of keys that write none.
constexpr std::array namedKeys{NamedKey{0xF700, "Up"},    NamedKey{0xF701, "Down"},    NamedKey{0xF702, "Left"},
                               NamedKey{0xF703, "Right"}, NamedKey{'\r', "Return"},    NamedKey{'\t', "Tab"},
                               NamedKey{0x1B, "Escape"},  NamedKey{'\b', "BackSpace"}, NamedKey{0x7F, "BackSpace"}};

QString nameOfKey(char32_t character) {
    for (const NamedKey& key : namedKeys) {
        if (key.character == character) return QString::fromLatin1(key.name);
    }
    const xkb_keysym_t symbol = xkb_utf32_to_keysym(character);
    std::array<char, 64> name{};
    if (symbol == XKB_KEY_NoSymbol || xkb_keysym_get_name(symbol, name.data(), name.size()) <= 0) return {};
    return QString::fromLatin1(name.data());
}

}  // namespace

QString menuText(std::string_view utf8, qsizetype longest) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    text.removeIf(turnsDirection);
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        if (!endsLine(character))
            line += character;
        else if (!line.isEmpty() && line.back() != u' ')
            line += u' ';
    }
    return shortened(line, longest);
}

QString toolTipText(std::string_view utf8) {
    constexpr QChar wordJoiner(0x2060);
    QString text;
    for (const QChar character : menuText(utf8, longestSentence)) {
        text += character;
        if (character == u'<' || character == u'&') text += wordJoiner;
    }
    return text;
}

QString menuLabel(const MenuItem& item) {
    const bool tells = item.kind == MenuItemKind::item && item.action.empty();
    return menuText(item.title, tells ? longestSentence : longestName).replace(u'_', QLatin1StringView("__"));
}

QStringList menuShortcut(const MenuItem& item) {
    // A letter with a mark may be written as two characters, and is one on the keyboard.
    const QString text = QString::fromStdString(item.keyEquivalent).normalized(QString::NormalizationForm_C);
    const QList<uint> characters = text.toUcs4();
    if (characters.size() != 1) return {};
    // A capital letter stands for its key with Shift.
    const char32_t lower = QChar::toLower(static_cast<char32_t>(characters.first()));
    const QString key = nameOfKey(lower);
    if (key.isEmpty()) return {};
    const KeyEquivalentModifiers& modifiers = item.keyEquivalentModifiers;
    QStringList names;
    if (modifiers.control) names.append(QStringLiteral("Control"));
    if (modifiers.option) names.append(QStringLiteral("Alt"));
    if (modifiers.shift || lower != characters.first()) names.append(QStringLiteral("Shift"));
    if (modifiers.command) names.append(QStringLiteral("Super"));
    names.append(key);
    return names;
}

}  // namespace velmorand

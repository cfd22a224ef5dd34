#pragma once

#include <QString>
#include <QStringList>
#include <string_view>

namespace velmorand {

struct MenuItem;

/// How much of a text is shown, in user-perceived characters: of what names something, such as an application, and of
/// what is told in a sentence.
inline constexpr qsizetype longestName = 100;
inline constexpr qsizetype longestSentence = 200;

/// The text as one line that says nothing else than it says: valid throughout (U+FFFD in place of what is not UTF-8), a
/// space for line ends and control characters, without the characters that turn the direction of what follows them, and
/// no longer than `longest`, with an ellipsis for the rest.
[[nodiscard]] QString menuText(std::string_view utf8, qsizetype longest);

/// A sentence as a tool tip, which panels take for markup when it looks like it, and do not read as markup when it is.
/// Invisible characters keep it from looking so.
[[nodiscard]] QString toolTipText(std::string_view utf8);

/// What the item says as the label of a menu over the bus, where one underscore marks the letter to press. An item that
/// does nothing is there for its sentence.
[[nodiscard]] QString menuLabel(const MenuItem& item);

/// The key equivalent of the item as menus over the bus name it: modifiers, then the key by the name of its X key symbol,
/// as in "Super", "Alt", "Left". Empty for none, and for a character that no key writes.
[[nodiscard]] QStringList menuShortcut(const MenuItem& item);

}  // namespace velmorand

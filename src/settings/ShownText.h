#pragma once

#include <QString>

namespace velmorand {

/// What others have named, as a row of a list shows it: in one line, and so that nobody takes it for something else. In
/// place of every control character, line end, and character that turns the direction of what follows stands U+FFFD.
[[nodiscard]] QString shownText(const QString& text);

/// The same of an application's name, and a text in its place where there is nothing to be seen of it.
[[nodiscard]] QString shownName(const QString& name);

/// The same of an application's identifier.
[[nodiscard]] QString shownIdentifier(const QString& identifier);

}  // namespace velmorand

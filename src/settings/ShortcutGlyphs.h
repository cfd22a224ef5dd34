#pragma once

#include <QStringList>

namespace velmorand {

struct KeyboardShortcut;

/// What stands on the key caps of a shortcut, one text for each: the symbols of the modifiers in the order ⌃ ⌥ ⇧ ⌘, then
/// the key's glyph or label.
[[nodiscard]] QStringList shortcutGlyphs(const KeyboardShortcut& shortcut);

}  // namespace velmorand

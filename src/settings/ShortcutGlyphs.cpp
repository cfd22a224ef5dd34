#include "settings/ShortcutGlyphs.h"

#include "settings/QtText.h"
#include "settings/ShownText.h"
#include "shortcuts/KeyLabels.h"
#include "shortcuts/KeyboardShortcut.h"

namespace velmorand {

QStringList shortcutGlyphs(const KeyboardShortcut& shortcut) {
    QStringList glyphs;
    for (const std::string_view symbol : displaySymbols(shortcut.hotKey.modifiers)) glyphs.append(toQString(symbol));
    glyphs.append(shownText(toQString(keyGlyph(shortcut.hotKey.keyCode, shortcut.keyLabel))));
    return glyphs;
}

}  // namespace velmorand

pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// A shortcut as a row of key caps, which is read as one sentence. What does not fit into the width that it is given goes
/// on in another line, and a cap that is wider than a line is cut.
Flow {
    id: root

    /// The modifiers' symbols in their order, then the key's glyph.
    required property list<string> glyphs
    /// The shortcut as it is read aloud.
    required property string spoken
    /// As the recorder shows them.
    property bool areLarge: false

    spacing: root.areLarge ? 6 : BrandTheme.capSpacing
    Accessible.role: Accessible.StaticText
    Accessible.name: root.spoken

    Repeater {
        model: root.glyphs

        ShortcutKeyCap {
            required property string modelData

            glyph: modelData
            isLarge: root.areLarge
            largestWidth: root.width
        }
    }
}

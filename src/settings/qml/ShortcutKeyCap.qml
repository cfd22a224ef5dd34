import QtQuick
import Velmorand.Settings

/// One key or modifier as it is on a keyboard.
Rectangle {
    id: root

    required property string glyph

    implicitWidth: Math.max(BrandTheme.scaled(20), Math.ceil(label.implicitWidth) + 8)
    implicitHeight: Math.max(20, label.implicitHeight + 4)
    radius: BrandTheme.capRadius
    color: BrandTheme.line
    Accessible.ignored: true

    Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - 3
        radius: BrandTheme.capRadius - 1
        color: BrandTheme.card
        Accessible.ignored: true

        Txt {
            id: label

            // The caret of Control hangs at the top edge of its line, and all of them stand a little low in theirs.
            readonly property real drop: (root.glyph === "⌃" ? 0.2 * label.font.pixelSize : 0) - 1

            anchors.centerIn: parent
            anchors.verticalCenterOffset: label.drop
            role: BrandTheme.keyCap
            text: root.glyph
            Accessible.ignored: true
        }
    }
}

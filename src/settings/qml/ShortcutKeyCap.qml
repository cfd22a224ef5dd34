import QtQuick
import Velmorand.Settings

/// One key or modifier as it is on a keyboard.
Rectangle {
    id: root

    required property string glyph
    /// As the recorder shows it.
    property bool isLarge: false
    /// What is longer is cut.
    property real largestWidth: Infinity

    readonly property int sidePadding: root.isLarge ? 9 : 4
    readonly property real natural: Math.ceil(label.implicitWidth) + 2 * root.sidePadding
    readonly property int smallest: root.isLarge ? 40 : 20
    readonly property int lip: root.isLarge ? 3 : 2

    implicitWidth: Math.min(Math.max(BrandTheme.scaled(root.smallest), root.natural), root.largestWidth)
    implicitHeight: Math.max(BrandTheme.scaled(root.smallest), label.implicitHeight + 4)
    radius: root.isLarge ? BrandTheme.controlRadius : BrandTheme.capRadius
    color: BrandTheme.line
    Accessible.ignored: true

    Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - root.lip - 1
        radius: root.radius - 1
        color: BrandTheme.card
        Accessible.ignored: true

        Txt {
            id: label

            // The caret of Control hangs at the top edge of its line, and all of them stand a little low in theirs.
            readonly property real drop: (root.glyph === "⌃" ? 0.2 * label.font.pixelSize : 0) - 1

            anchors.centerIn: parent
            anchors.verticalCenterOffset: label.drop
            width: Math.min(label.implicitWidth, root.largestWidth - 2 * root.sidePadding)
            role: root.isLarge ? BrandTheme.largeKeyCap : BrandTheme.keyCap
            text: root.glyph
            elide: Text.ElideRight
            maximumLineCount: 1
            Accessible.ignored: true
        }
    }
}

import QtQuick
import Velmorand.Settings

/// A text that opens something, underlined under the pointer.
Pressable {
    id: root

    /// The name of a drawing before the text; none when empty.
    property string symbol
    /// Whether it stands at the right end of its line.
    property bool isAtTheEnd: false

    readonly property int textStart: root.symbol.length > 0 ? BrandTheme.symbolSize + BrandTheme.symbolSpacing : 0

    implicitWidth: Math.ceil(label.implicitWidth) + root.textStart
    implicitHeight: label.implicitHeight
    opacity: root.enabled ? 1 : BrandTheme.disabledOpacity
    Accessible.role: Accessible.Link

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol.length > 0
        name: root.symbol
        color: BrandTheme.bronze
    }

    Txt {
        id: label

        x: root.textStart
        width: parent.width - x
        wrapMode: Text.Wrap
        horizontalAlignment: root.isAtTheEnd ? Text.AlignRight : Text.AlignLeft
        role: BrandTheme.strong
        color: BrandTheme.bronze
        font.underline: root.hovered
        text: root.text
        Accessible.ignored: true
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    FocusRing {
        around: 4
        visible: root.visualFocus
    }
}

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A text that opens something, underlined under the pointer.
T.AbstractButton {
    id: root

    /// The name of a drawing before the text; none when empty.
    property string symbol
    /// Whether it stands at the right end of its line.
    property bool isAtTheEnd: false

    readonly property int textStart: root.symbol.length > 0 ? BrandTheme.symbolSize + BrandTheme.symbolSpacing : 0

    implicitWidth: Math.ceil(label.implicitWidth) + root.textStart
    implicitHeight: label.implicitHeight
    hoverEnabled: true
    opacity: root.enabled ? 1 : BrandTheme.disabledOpacity
    // The template makes a push button of it again when the accessibility interface comes into use.
    Accessible.role: Accessible.Link
    Accessible.onRoleChanged: {
        if (root.Accessible.role !== Accessible.Link)
            root.Accessible.role = Accessible.Link;
    }
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

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

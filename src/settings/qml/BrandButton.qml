import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A button: plain, prominent, or quiet.
T.AbstractButton {
    id: root

    enum Kind {
        Plain,
        Prominent,
        Quiet
    }

    property int kind: BrandButton.Plain
    /// A quiet button that takes something away.
    property bool removes: false
    /// The name of a drawing before the label; none when empty.
    property string symbol

    readonly property bool isProminent: root.kind === BrandButton.Prominent
    readonly property bool isQuiet: root.kind === BrandButton.Quiet
    readonly property int sidePadding: root.isQuiet ? 12 : 16
    readonly property int symbolStart: 13
    readonly property int labelStart: root.symbolStart + BrandTheme.symbolSize + BrandTheme.symbolSpacing
    readonly property color labelColor: {
        if (root.isProminent)
            return BrandTheme.card;
        if (root.isQuiet)
            return root.removes ? BrandTheme.brick : BrandTheme.bronze;
        return BrandTheme.ink;
    }
    readonly property color fill: {
        if (root.isProminent)
            return root.down ? BrandTheme.bronzeDown : root.hovered ? BrandTheme.bronzeHover : BrandTheme.bronze;
        if (root.down)
            return BrandTheme.down;
        if (root.hovered)
            return BrandTheme.hover;
        return root.isQuiet ? Qt.alpha(BrandTheme.hover, 0) : BrandTheme.card;
    }

    implicitWidth: Math.ceil(label.implicitWidth) + (root.symbol.length > 0 ? root.labelStart - 1 : root.sidePadding) + root.sidePadding
    implicitHeight: Math.max(32, label.implicitHeight + 12)
    hoverEnabled: true
    opacity: root.enabled ? 1 : BrandTheme.disabledOpacity
    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }

    background: Rectangle {
        radius: BrandTheme.controlRadius
        color: root.fill
        border.width: root.kind === BrandButton.Plain ? 1 : 0
        border.color: root.hovered && !root.down ? BrandTheme.sand : BrandTheme.line
        Accessible.ignored: true

        Behavior on color {
            ColorAnimation {
                duration: BrandTheme.tintDuration
            }
        }
    }

    Symbol {
        x: root.symbolStart
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol.length > 0
        name: root.symbol
        color: root.labelColor
    }

    Txt {
        id: label

        x: root.symbol.length > 0 ? root.labelStart : Math.floor((root.width - implicitWidth) / 2)
        anchors.verticalCenter: parent.verticalCenter
        role: root.isProminent ? BrandTheme.strongest : BrandTheme.strong
        color: root.labelColor
        text: root.text
        Accessible.ignored: true
    }

    FocusRing {
        visible: root.visualFocus
    }
}

import QtQuick
import Velmorand.Settings

/// A row of a list in which something is chosen: an icon, a name, and what it is called otherwise.
Pressable {
    id: root

    required property string name
    /// Below the name; none when empty.
    required property string caption
    /// Where the icon is; empty without one.
    required property string icon
    /// The name of a drawing in place of the icon; none when empty.
    property string symbol
    /// What is free for something else at its right end.
    property int reserved: 0

    readonly property color fill: {
        if (root.down)
            return BrandTheme.down;
        return root.hovered ? BrandTheme.hover : BrandTheme.card;
    }

    implicitHeight: Math.max(56, texts.height + 16)
    activeFocusOnTab: false
    takesReturn: false
    text: root.name
    Accessible.description: root.caption

    Rectangle {
        anchors.fill: parent
        radius: BrandTheme.controlRadius
        color: root.fill
        Accessible.ignored: true

        Behavior on color {
            ColorAnimation {
                duration: BrandTheme.tintDuration
            }
        }
    }

    ApplicationIcon {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol.length === 0
        source: root.icon
    }

    Symbol {
        x: 12 + Math.round((BrandTheme.placeholderSize - width) / 2)
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol.length > 0
        size: 24
        name: root.symbol
        color: BrandTheme.bronze
    }

    NameAndCaption {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: 60
        width: root.width - root.reserved - x - 16
        name: root.name
        caption: root.caption
        captionColor: root.hovered || root.down ? BrandTheme.ink : BrandTheme.slate
        areRead: false
    }

    FocusRing {
        reach: 0
        visible: root.visualFocus
    }
}

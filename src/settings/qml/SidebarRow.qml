import QtQuick
import Velmorand.Settings

/// The entry of one pane in the sidebar.
Pressable {
    id: root

    required property string symbol
    required property bool isSelected

    readonly property color fill: {
        if (root.isSelected)
            return BrandTheme.selected;
        if (root.down)
            return BrandTheme.down;
        return root.hovered ? BrandTheme.hover : Qt.alpha(BrandTheme.hover, 0);
    }

    implicitHeight: Math.max(36, label.implicitHeight + 16)
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: root.isSelected

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

    Symbol {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: root.isSelected ? BrandTheme.bronze : BrandTheme.slate
    }

    Txt {
        id: label

        x: 38
        width: root.width - x - 8
        elide: Text.ElideRight
        anchors.verticalCenter: parent.verticalCenter
        role: root.isSelected ? BrandTheme.strongest : BrandTheme.strong
        text: root.text
        Accessible.ignored: true
    }

    FocusRing {
        reach: BrandTheme.focusLine
        visible: root.visualFocus
    }
}

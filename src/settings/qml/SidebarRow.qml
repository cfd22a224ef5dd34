import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// The entry of one pane in the sidebar.
T.AbstractButton {
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
    hoverEnabled: true
    // The template makes a push button of it again when the accessibility interface comes into use.
    Accessible.role: Accessible.PageTab
    Accessible.onRoleChanged: {
        if (root.Accessible.role !== Accessible.PageTab)
            root.Accessible.role = Accessible.PageTab;
    }
    Accessible.name: root.text
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
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
        anchors.verticalCenter: parent.verticalCenter
        role: root.isSelected ? BrandTheme.strongest : BrandTheme.strong
        text: root.text
        Accessible.ignored: true
    }

    FocusRing {
        visible: root.visualFocus
    }
}

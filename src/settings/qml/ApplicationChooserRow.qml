import QtQuick
import Velmorand.Settings

/// An application that can be chosen: a check box.
Pressable {
    id: root

    required property string name
    required property string identifier
    required property string icon
    required property bool chosen

    /// The user wants it chosen, or no longer.
    signal requested(bool chosen)

    readonly property color fill: {
        if (root.down)
            return BrandTheme.down;
        return root.hovered ? BrandTheme.hover : BrandTheme.card;
    }

    implicitHeight: Math.max(56, texts.height + 16)
    text: root.name
    Accessible.role: Accessible.CheckBox
    Accessible.description: root.identifier
    Accessible.checkable: true
    Accessible.checked: root.chosen
    Accessible.onToggleAction: root.clicked()
    onClicked: root.requested(!root.chosen)

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
        source: root.icon
    }

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: 60
        width: mark.x - x - 16

        Txt {
            width: parent.width
            role: BrandTheme.strong
            text: root.name
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        Txt {
            width: parent.width
            role: BrandTheme.caption
            color: root.hovered || root.down ? BrandTheme.ink : BrandTheme.slate
            text: root.identifier
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
    }

    Item {
        id: mark

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20

        Rectangle {
            anchors.centerIn: parent
            width: 16
            height: 16
            radius: 8
            visible: !root.chosen
            color: BrandTheme.card
            border.width: 1
            border.color: BrandTheme.lineStrong
            Accessible.ignored: true
        }

        Symbol {
            visible: root.chosen
            size: 20
            name: "checkmark.circle.fill"
            color: BrandTheme.sageDeep
        }
    }

    FocusRing {
        reach: 0
        visible: root.visualFocus
    }
}

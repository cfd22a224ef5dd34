import QtQuick
import Velmorand.Settings

/// An application that can be chosen: a check box.
ChooserRow {
    id: root

    required property bool chosen

    /// The user wants it chosen, or no longer.
    signal requested(bool chosen)

    reserved: 36
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: root.chosen
    Accessible.onToggleAction: root.clicked()
    onClicked: root.requested(!root.chosen)

    Item {
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
}

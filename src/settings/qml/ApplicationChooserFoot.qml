import QtQuick
import Velmorand.Settings

/// The buttons of the panel, and how much is chosen.
Item {
    id: root

    required property ApplicationChooserModel model

    readonly property InstalledApplicationsModel applications: root.model.applications

    implicitHeight: confirmButton.height

    BrandButton {
        id: elsewhereButton

        visible: !root.model.isElsewhere
        text: qsTr("Other...")
        Accessible.description: qsTr("Looks for an application that is not in the list")
        onClicked: root.model.lookElsewhere()
    }

    BrandButton {
        id: backButton

        visible: root.model.isElsewhere
        text: qsTr("Back")
        Accessible.description: qsTr("Shows the list of applications again")
        onClicked: root.model.back()
    }

    Txt {
        anchors.verticalCenter: parent.verticalCenter
        x: Math.max(elsewhereButton.width, backButton.width) + BrandTheme.blockSpacing
        width: cancelButton.x - x - 16
        visible: root.applications.chosenCount > 0
        role: BrandTheme.caption
        text: qsTr("Chosen: %1").arg(root.applications.chosenCount)
        wrapMode: Text.Wrap
    }

    BrandButton {
        id: cancelButton

        anchors.right: confirmButton.left
        anchors.rightMargin: BrandTheme.symbolSpacing
        text: qsTr("Cancel")
        onClicked: root.model.cancel()
    }

    BrandButton {
        id: confirmButton

        anchors.right: parent.right
        kind: BrandButton.Prominent
        enabled: root.applications.chosenCount > 0
        text: root.model.confirmText
        onClicked: root.model.confirm()
    }
}

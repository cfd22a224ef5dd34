import QtQuick
import Velmorand.Settings

/// What is to be said under the row of launch at login, if anything.
Column {
    id: root

    required property GeneralSettingsModel model

    bottomPadding: note.visible || error.visible ? BrandTheme.blockSpacing : 0
    spacing: BrandTheme.symbolSpacing

    Item {
        id: note

        width: parent.width
        height: Math.max(noteText.height, openButton.visible ? openButton.height : 0)
        visible: root.model.launchAtLoginNote.length > 0

        Txt {
            id: noteText

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - (openButton.visible ? openButton.width + 16 : 0)
            role: BrandTheme.caption
            text: root.model.launchAtLoginNote
            wrapMode: Text.Wrap
        }

        BrandButton {
            id: openButton

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: root.model.offersLoginItems
            text: qsTr("Open Login Items")
            onClicked: root.model.openLoginItems()
        }
    }

    Txt {
        id: error

        width: parent.width
        visible: root.model.launchAtLoginError.length > 0
        role: BrandTheme.caption
        color: BrandTheme.brick
        text: root.model.launchAtLoginError
        wrapMode: Text.Wrap
    }
}

import QtQuick
import Velmorand.Settings

/// The ways out of the recorder. No key reaches them, so they take no focus.
Item {
    id: root

    required property ShortcutRecorderViewModel model

    implicitWidth: (removeButton.visible ? removeButton.width : 0) + answers.width
    implicitHeight: answers.height

    BrandButton {
        id: removeButton

        // Its label begins on the panel's margin.
        x: -removeButton.sidePadding
        visible: root.model.removeTitle.length > 0
        kind: BrandButton.Quiet
        removes: true
        focusPolicy: Qt.NoFocus
        text: root.model.removeTitle
        onClicked: root.model.remove()
    }

    Row {
        id: answers

        anchors.right: parent.right
        spacing: BrandTheme.symbolSpacing

        BrandButton {
            focusPolicy: Qt.NoFocus
            text: root.model.cancelTitle
            onClicked: root.model.cancel()
        }

        BrandButton {
            visible: root.model.confirmTitle.length > 0
            kind: BrandButton.Prominent
            focusPolicy: Qt.NoFocus
            text: root.model.confirmTitle
            onClicked: root.model.confirm()
        }
    }
}

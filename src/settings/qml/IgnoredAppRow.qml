import QtQuick
import Velmorand.Settings

/// One application whose windows are left alone.
Item {
    id: root

    required property string name
    required property string bundleIdentifier
    required property string icon
    property bool isFirst: false

    /// The user no longer wants it ignored.
    signal removed

    readonly property bool hasKeyboard: removeButton.activeFocus

    /// Gives its button the keyboard.
    function takeKeyboard() {
        removeButton.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Math.max(64, texts.height + 24)
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name

    Rectangle {
        width: parent.width
        height: 1
        visible: !root.isFirst
        color: BrandTheme.rule
        Accessible.ignored: true
    }

    ApplicationIcon {
        anchors.verticalCenter: parent.verticalCenter
        source: root.icon
    }

    NameAndCaption {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: 52
        width: removeButton.x - x - 16
        name: root.name
        caption: root.bundleIdentifier
    }

    BrandButton {
        id: removeButton

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Remove")
        // One of a list of buttons that a screen reader makes.
        Accessible.name: qsTr("Remove %1").arg(root.name)
        Accessible.description: root.bundleIdentifier
        onClicked: root.removed()
    }
}

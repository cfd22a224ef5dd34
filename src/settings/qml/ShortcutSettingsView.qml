pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The Shortcuts pane. What is at first out of sight is built when the rest stands.
Column {
    id: root

    required property SettingsModel model

    spacing: 24

    PaneHeader {
        width: parent.width
        title: qsTr("Shortcuts")
        caption: qsTr("Customize keyboard shortcuts to arrange and manage windows exactly how you like. Click a row to record.")

        BrandButton {
            symbol: "arrow.counterclockwise"
            text: qsTr("Reset Defaults")
            onClicked: root.model.shortcuts.resetDefaults()
        }
    }

    Repeater {
        model: root.model.shortcuts.sections

        Loader {
            id: place

            required property int index
            required property ShortcutSection modelData

            width: root.width
            asynchronous: place.index > 1
            Component.onCompleted: place.setSource("ShortcutGrid.qml", {
                section: place.modelData
            })
        }
    }
}

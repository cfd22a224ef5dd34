pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The program's name, the panes to choose from, its version and the way to help.
Rectangle {
    id: root

    required property SettingsModel model

    implicitWidth: BrandTheme.sidebarWidth
    color: BrandTheme.cream
    Accessible.ignored: true

    AppIcon {
        x: 20
        y: 24
        size: 64
    }

    Txt {
        id: name

        x: 24
        y: 96
        role: BrandTheme.sidebarName
        text: "Velmorand"
        isHeading: true
    }

    Txt {
        id: tagLine

        anchors.top: name.bottom
        x: 24
        width: root.width - 32
        role: BrandTheme.tagLine
        text: qsTr("Arrange • Snap • Focus")
        wrapMode: Text.Wrap
    }

    Column {
        anchors.top: tagLine.bottom
        anchors.topMargin: 24
        x: 12
        width: 176
        spacing: 4
        Accessible.role: Accessible.PageTabList
        Accessible.name: qsTr("Panes")

        Repeater {
            model: root.model.panes

            SidebarRow {
                required property var modelData

                width: parent.width
                text: modelData.title
                symbol: modelData.symbol
                isSelected: root.model.selectedPane === modelData.rawValue
                onClicked: root.model.selectedPane = modelData.rawValue
            }
        }
    }

    Column {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        x: 24
        spacing: 4

        Txt {
            role: BrandTheme.caption
            text: qsTr("Version %1").arg(root.model.information.versionText)
        }

        LinkText {
            symbol: "questionmark.circle"
            text: qsTr("Help & Support")
            onClicked: root.model.writeToSupport()
        }
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: BrandTheme.edge
        Accessible.ignored: true
    }
}

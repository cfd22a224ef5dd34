pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The program's name, the panes to choose from, its version and the way to help.
Rectangle {
    id: root

    required property SettingsModel model

    readonly property int textStart: 24
    readonly property int textWidth: root.width - root.textStart - 8
    readonly property real textHeight: name.height + tagLine.height + panes.anchors.topMargin + panes.height + foot.height

    implicitWidth: BrandTheme.sidebarWidth
    color: BrandTheme.cream
    Accessible.ignored: true

    // Where the texts are so large that there is no room for everything, it goes first: it says nothing.
    AppIcon {
        id: icon

        visible: name.restingY + root.textHeight + 2 * foot.anchors.bottomMargin <= root.height
        x: 20
        y: 24
        size: 64
    }

    Txt {
        id: name

        readonly property int restingY: 96

        x: root.textStart
        y: icon.visible ? name.restingY : icon.y
        width: root.textWidth
        elide: Text.ElideRight
        role: BrandTheme.sidebarName
        text: "Velmorand"
        isHeading: true
    }

    Txt {
        id: tagLine

        anchors.top: name.bottom
        x: root.textStart
        width: root.textWidth
        role: BrandTheme.tagLine
        text: qsTr("Arrange • Snap • Focus")
        wrapMode: Text.Wrap
    }

    Column {
        id: panes

        anchors.top: tagLine.bottom
        anchors.topMargin: 24
        x: 12
        width: root.width - 2 * panes.x
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
        id: foot

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        x: root.textStart
        width: root.textWidth
        spacing: 4

        Txt {
            width: parent.width
            elide: Text.ElideRight
            role: BrandTheme.caption
            text: qsTr("Version %1").arg(root.model.information.versionText)
        }

        LinkText {
            width: Math.min(implicitWidth, parent.width)
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

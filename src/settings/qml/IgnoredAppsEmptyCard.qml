import QtQuick
import Velmorand.Settings

/// What stands in place of the list while no application is ignored.
SettingsCard {
    id: root

    /// The user wants to choose applications.
    signal addRequested

    readonly property bool hasKeyboard: addButton.activeFocus

    Item {
        width: parent.width
        height: Math.max(240, column.height)

        Column {
            id: column

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 72
                height: 72
                radius: 20
                color: BrandTheme.cream
                border.width: 1
                border.color: BrandTheme.edge
                Accessible.ignored: true

                Symbol {
                    anchors.centerIn: parent
                    size: 32
                    name: "tray"
                    color: BrandTheme.bronze
                }
            }

            Txt {
                topPadding: 16 + lead
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                role: BrandTheme.cardTitle
                isHeading: true
                text: qsTr("No ignored apps yet")
                wrapMode: Text.Wrap
            }

            Txt {
                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: BrandTheme.headingSpacing + lead
                bottomPadding: 20 - lead
                width: Math.min(parent.width, BrandTheme.scaled(320))
                horizontalAlignment: Text.AlignHCenter
                role: BrandTheme.quiet
                text: qsTr("Apps you add here will be excluded from all Velmorand window management.")
                wrapMode: Text.Wrap
            }

            BrandButton {
                id: addButton

                anchors.horizontalCenter: parent.horizontalCenter
                kind: BrandButton.Prominent
                text: qsTr("Add Your First App...")
                onClicked: root.addRequested()
            }
        }
    }
}

import QtQuick
import Velmorand.Settings

/// The About pane.
Column {
    id: root

    required property SettingsModel model

    spacing: BrandTheme.cardSpacing

    SettingsCard {
        width: parent.width
        isGreeting: true

        Item {
            width: parent.width
            height: Math.max(80, texts.height)

            AppIcon {
                x: -4
                anchors.verticalCenter: parent.verticalCenter
                size: 72
            }

            Column {
                id: texts

                anchors.verticalCenter: parent.verticalCenter
                x: 84
                width: parent.width - x

                Txt {
                    width: parent.width
                    role: BrandTheme.aboutName
                    isHeading: true
                    text: "Velmorand"
                    wrapMode: Text.Wrap
                }

                Txt {
                    width: parent.width
                    role: BrandTheme.tagLine
                    text: qsTr("Arrange • Snap • Focus")
                    wrapMode: Text.Wrap
                }

                Txt {
                    topPadding: 8 + lead
                    width: parent.width
                    role: BrandTheme.caption
                    text: qsTr("Version %1").arg(root.model.information.versionText)
                    wrapMode: Text.Wrap
                }
            }
        }
    }

    SettingsCard {
        width: parent.width
        topPadding: 4
        bottomPadding: 4

        AboutRow {
            id: support

            width: parent.width
            isFirst: true
            title: qsTr("Support")

            LinkText {
                width: Math.min(implicitWidth, support.room)
                isAtTheEnd: true
                text: root.model.information.contactAddress
                onClicked: root.model.writeToSupport()
            }
        }

        AboutRow {
            width: parent.width
            title: qsTr("Privacy")
            value: qsTr("Velmorand collects no data.")
        }

        AboutRow {
            width: parent.width
            title: qsTr("Bundle ID")
            value: root.model.information.bundleIdentifier
        }
    }

    Item {
        width: parent.width
        height: Math.max(36, closing.height)

        Row {
            id: closing

            anchors.centerIn: parent
            spacing: BrandTheme.symbolSpacing

            Symbol {
                id: heart

                anchors.verticalCenter: parent.verticalCenter
                name: "heart.fill"
                color: BrandTheme.sand
            }

            Txt {
                width: Math.min(implicitWidth, root.width - heart.width - closing.spacing)
                wrapMode: Text.Wrap
                role: BrandTheme.quiet
                text: qsTr("Thank you for using Velmorand. Happy arranging!")
            }
        }
    }
}

import QtQuick
import Velmorand.Settings

/// What the program is for.
SettingsCard {
    id: root

    isGreeting: true

    Item {
        width: parent.width
        height: Math.max(80, texts.height)

        Column {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - tiles.width - 16
            spacing: BrandTheme.headingSpacing

            Txt {
                width: parent.width
                role: BrandTheme.welcome
                isHeading: true
                text: qsTr("Effortless window arrangement.")
                wrapMode: Text.Wrap
            }

            Txt {
                width: Math.min(parent.width, BrandTheme.scaled(272))
                role: BrandTheme.quiet
                text: qsTr("Arrange, snap, and focus with a calm, distraction-free workflow.")
                wrapMode: Text.Wrap
            }
        }

        BrandTiles {
            id: tiles

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            isSmall: root.innerWidth < 472
        }
    }
}

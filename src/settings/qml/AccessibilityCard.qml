import QtQuick
import Velmorand.Settings

/// Whether the program may move windows, and how to let it.
SettingsCard {
    id: root

    required property GeneralSettingsModel model

    CardSectionTitle {
        text: qsTr("Accessibility")
    }

    Item {
        width: parent.width
        height: BrandTheme.blockSpacing + status.height

        Symbol {
            anchors.verticalCenter: status.verticalCenter
            name: root.model.accessibilitySymbol
            size: BrandTheme.statusSymbolSize
            color: root.model.isTrusted ? BrandTheme.sageDeep : BrandTheme.brick
        }

        Txt {
            id: status

            x: BrandTheme.statusSymbolSize + BrandTheme.symbolSpacing
            y: BrandTheme.blockSpacing
            width: parent.width - x
            role: root.model.isTrusted ? BrandTheme.body : BrandTheme.strong
            text: root.model.accessibilityStatus
            wrapMode: Text.Wrap
        }
    }

    Flow {
        topPadding: 16
        width: parent.width
        spacing: BrandTheme.symbolSpacing

        BrandButton {
            text: qsTr("Check Status")
            onClicked: root.model.checkStatus()
        }

        BrandButton {
            kind: BrandButton.Prominent
            text: qsTr("Open Settings...")
            onClicked: root.model.openAccessibilitySettings()
        }
    }

    Reveal {
        width: parent.width
        isShown: !root.model.isTrusted

        Txt {
            topPadding: BrandTheme.blockSpacing + lead
            width: root.innerWidth
            role: BrandTheme.caption
            text: qsTr("If no system prompt appears, enable Velmorand manually in System Settings → Privacy & Security → Accessibility.")
            wrapMode: Text.Wrap
        }
    }
}

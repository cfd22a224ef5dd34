import QtQuick
import Velmorand.Settings

/// A control row with a slider and its value, which is named by the row.
SettingsControlRow {
    id: root

    required property PreferenceSlider source

    Item {
        implicitWidth: width
        width: slider.width + BrandTheme.symbolSpacing + value.width
        height: slider.height

        BrandSlider {
            id: slider

            width: Math.max(104, Math.min(root.width - 332, 160))
            source: root.source
            title: root.title
            explanation: root.caption
        }

        Txt {
            id: value

            anchors.verticalCenter: slider.verticalCenter
            x: slider.width + BrandTheme.symbolSpacing
            width: BrandTheme.scaled(44)
            horizontalAlignment: Text.AlignRight
            text: root.source.text
        }
    }
}

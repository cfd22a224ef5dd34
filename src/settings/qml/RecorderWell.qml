import QtQuick
import Velmorand.Settings

/// Where the combination appears: the modifiers while they are held, and the whole of it once a key has come.
Rectangle {
    id: root

    required property ShortcutRecorderViewModel model

    implicitHeight: caps.height + 48
    radius: BrandTheme.cardRadius
    color: BrandTheme.card
    border.width: 2
    border.color: BrandTheme.bronze
    Accessible.ignored: true

    Row {
        id: caps

        anchors.centerIn: parent
        spacing: 6

        ShortcutChips {
            visible: root.model.glyphs.length > 0
            areLarge: true
            glyphs: root.model.glyphs
            spoken: root.model.spoken
            Accessible.ignored: !root.model.isCaptured
        }

        Rectangle {
            visible: !root.model.isCaptured
            width: BrandTheme.scaled(40)
            height: width
            radius: BrandTheme.controlRadius
            color: BrandTheme.cream
            border.width: 1
            border.color: BrandTheme.line
            Accessible.ignored: true

            Rectangle {
                anchors.centerIn: parent
                width: 2
                height: BrandTheme.scaled(18)
                color: BrandTheme.bronze
                Accessible.ignored: true
            }
        }
    }
}

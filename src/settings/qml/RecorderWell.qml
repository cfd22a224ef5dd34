import QtQuick
import Velmorand.Settings

/// Where the combination appears: the modifiers while they are held, and the whole of it once a key has come.
Rectangle {
    id: root

    required property ShortcutRecorderViewModel model

    readonly property int padding: 24
    /// How far the place for the key stands behind the modifiers that are held.
    readonly property real placeStart: root.model.glyphs.length > 0 ? chips.implicitWidth + chips.spacing : 0
    readonly property real capsWidth: root.model.isCaptured ? chips.implicitWidth : root.placeStart + place.width

    implicitHeight: Math.max(chips.height, place.height) + 2 * root.padding
    radius: BrandTheme.cardRadius
    color: BrandTheme.card
    border.width: 2
    border.color: BrandTheme.bronze
    Accessible.ignored: true

    Item {
        id: caps

        x: Math.round((root.width - root.capsWidth) / 2)
        y: root.padding
        width: root.capsWidth
        height: root.height - 2 * root.padding
        Accessible.role: Accessible.StaticText
        Accessible.name: root.model.spoken
        Accessible.ignored: !root.model.isCaptured

        ShortcutChips {
            id: chips

            width: root.width - 2 * root.padding
            visible: root.model.glyphs.length > 0
            areLarge: true
            glyphs: root.model.glyphs
            spoken: root.model.spoken
            Accessible.ignored: true
        }

        Rectangle {
            id: place

            x: root.placeStart
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

import QtQuick
import Velmorand.Settings

/// Four tiles in the brand's colours, for decoration only.
Item {
    id: root

    property bool isSmall: false
    readonly property real part: root.isSmall ? 0.75 : 1

    implicitWidth: 128 * root.part
    implicitHeight: 80 * root.part
    Accessible.ignored: true

    component Tile: Rectangle {
        id: tile

        required property real part

        radius: 8 * tile.part
        Accessible.ignored: true
    }

    Tile {
        part: root.part
        width: 48 * root.part
        height: 80 * root.part
        color: BrandTheme.sage
    }

    Tile {
        part: root.part
        x: 56 * root.part
        width: 72 * root.part
        height: 48 * root.part
        color: BrandTheme.sand
    }

    Tile {
        part: root.part
        x: 56 * root.part
        y: 56 * root.part
        width: 32 * root.part
        height: 24 * root.part
        color: BrandTheme.ink
    }

    Tile {
        part: root.part
        x: 96 * root.part
        y: 56 * root.part
        width: 32 * root.part
        height: 24 * root.part
        color: BrandTheme.stone
    }
}

import QtQuick
import Velmorand.Settings

/// The ring around what has the keyboard, drawn outside of the item it fills.
Rectangle {
    id: root

    /// The radius of what it goes around.
    property real around: BrandTheme.controlRadius
    /// How far outside its outer edge is.
    property int reach: BrandTheme.focusAir + BrandTheme.focusLine

    anchors.fill: parent
    anchors.margins: -root.reach
    radius: root.around + root.reach
    color: "transparent"
    border.width: BrandTheme.focusLine
    border.color: BrandTheme.bronze
    Accessible.ignored: true
}

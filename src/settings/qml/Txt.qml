import QtQuick
import Velmorand.Settings

/// A text of one of the look's roles, with the extra of its line height above and below the glyphs alike.
Text {
    id: root

    property TypeRole role: BrandTheme.body
    /// Whether the text is the heading of what follows.
    property bool isHeading: false

    readonly property int lead: Math.round((root.lineHeight - metrics.height) / 2)

    topPadding: root.lead
    bottomPadding: -root.lead
    color: root.role.color
    font.family: BrandTheme.fontFamily
    font.pixelSize: BrandTheme.scaled(root.role.size)
    font.weight: root.role.weight
    font.letterSpacing: root.role.spacing
    lineHeight: BrandTheme.scaled(root.role.line)
    lineHeightMode: Text.FixedHeight
    textFormat: Text.PlainText
    Accessible.role: root.isHeading ? Accessible.Heading : Accessible.StaticText
    Accessible.name: root.text
    Accessible.ignored: !root.visible || root.text.length === 0

    FontMetrics {
        id: metrics

        font: root.font
    }
}

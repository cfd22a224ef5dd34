import QtQuick
import Velmorand.Settings

/// Content on a card: as wide as its parent, as high as what is in it.
Rectangle {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    property bool isGreeting: false
    property int topPadding: BrandTheme.cardPadding
    property int bottomPadding: BrandTheme.cardPadding
    readonly property real innerWidth: root.width - 2 * BrandTheme.cardPadding

    implicitHeight: Math.max(root.isGreeting ? BrandTheme.greetingHeight : 0, root.topPadding + column.implicitHeight + root.bottomPadding)
    radius: BrandTheme.cardRadius
    color: root.isGreeting ? BrandTheme.cream : BrandTheme.card
    border.width: 1
    border.color: BrandTheme.edge

    Column {
        id: column

        x: BrandTheme.cardPadding
        y: root.topPadding
        width: root.innerWidth
    }
}

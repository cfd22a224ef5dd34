import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A thin bar in the padding of what it scrolls.
T.ScrollBar {
    id: root

    implicitWidth: 14
    padding: 4
    minimumSize: 0.1
    policy: T.ScrollBar.AsNeeded
    visible: root.size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: root.hovered || root.pressed ? BrandTheme.lineStrong : BrandTheme.stone
        Accessible.ignored: true
    }
}

import QtQuick
import Velmorand.Settings

/// The icon of an application, or what stands for one that has none.
Item {
    id: root

    /// Where the icon is; empty without one. There may be no picture behind it.
    required property string source

    implicitWidth: BrandTheme.placeholderSize
    implicitHeight: BrandTheme.placeholderSize
    Accessible.ignored: true

    Image {
        id: image

        anchors.fill: parent
        sourceSize.width: root.width
        sourceSize.height: root.height
        fillMode: Image.PreserveAspectFit
        source: DesktopLook.hasPicture(root.source) ? root.source : ""
        Accessible.ignored: true
    }

    Symbol {
        visible: image.status !== Image.Ready
        size: root.width
        name: "app.dashed"
        color: BrandTheme.stone
    }
}

import QtQuick
import QtQuick.Controls.impl
import Velmorand.Settings

/// One of the drawings of this module in one colour.
ColorImage {
    id: root

    /// Its name without the ending.
    required property string name
    property int size: BrandTheme.symbolSize

    width: root.size
    height: root.size
    sourceSize.width: root.size
    sourceSize.height: root.size
    source: root.name.length > 0 ? "qrc:/qt/qml/Velmorand/Settings/symbols/" + root.name + ".svg" : ""
    Accessible.ignored: true
}

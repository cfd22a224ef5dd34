import QtQuick
import Velmorand.Settings

/// The application's icon, never recoloured.
Image {
    id: root

    required property int size

    width: root.size
    height: root.size
    sourceSize: Qt.size(root.size, root.size)
    source: "qrc:/qt/qml/Velmorand/Settings/app.velmorand.Velmorand.svg"
    Accessible.ignored: true
}

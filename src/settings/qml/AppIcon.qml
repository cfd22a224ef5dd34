import QtQuick

/// The application's icon, never recoloured.
Image {
    id: root

    required property int size

    width: root.size
    height: root.size
    sourceSize.width: root.size
    sourceSize.height: root.size
    source: "qrc:/qt/qml/Velmorand/Settings/app.velmorand.Velmorand.svg"
    Accessible.ignored: true
}

import QtQuick

/// How one kind of text is set. Sizes are as the look gives them, before the desktop's own text scale.
QtObject {
    required property int size
    required property int line
    required property int weight
    required property color color
    property real spacing: 0
}

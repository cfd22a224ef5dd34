import QtQuick
import Velmorand.Settings

/// Content that comes and goes by height and opacity.
Item {
    id: root

    required property bool isShown
    default property alias content: holder.data

    readonly property real wanted: root.isShown ? 1 : 0
    property real part: root.wanted

    implicitHeight: Math.round(holder.childrenRect.height * root.part)
    opacity: root.part
    visible: root.part > 0
    enabled: root.isShown
    clip: root.part < 1

    Behavior on part {
        NumberAnimation {
            duration: BrandTheme.revealDuration
            easing.type: Easing.OutCubic
        }
    }

    Item {
        id: holder

        width: parent.width
        height: childrenRect.height
    }
}

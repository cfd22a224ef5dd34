import QtQuick
import Velmorand.Settings

/// What something is called and what it is.
Item {
    id: root

    required property string title
    property string value
    property bool isFirst: false
    default property alias content: holder.data

    /// For what stands at the right.
    readonly property real room: root.width - titleText.width - 16

    implicitHeight: Math.max(52, titleText.height + 32, valueText.height + 32, holder.height + 32)

    Rectangle {
        width: parent.width
        height: 1
        visible: !root.isFirst
        color: BrandTheme.rule
        Accessible.ignored: true
    }

    Txt {
        id: titleText

        anchors.verticalCenter: parent.verticalCenter
        role: BrandTheme.strong
        text: root.title
    }

    Txt {
        id: valueText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: root.value.length > 0
        role: BrandTheme.quiet
        width: Math.min(implicitWidth, root.room)
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.Wrap
        text: root.value
    }

    Item {
        id: holder

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}

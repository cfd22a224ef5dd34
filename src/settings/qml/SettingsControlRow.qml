import QtQuick
import Velmorand.Settings

/// A title over its caption, and a control: beside them, or below where the width does not do.
Item {
    id: root

    required property string title
    required property string caption
    property bool isFirst: false
    default property alias control: holder.data

    readonly property real textWidth: Math.max(titleText.implicitWidth, captionText.implicitWidth)
    readonly property bool fits: root.textWidth + 16 + holder.childrenRect.width <= root.width
    readonly property real textBottom: 12 + titleText.height + captionText.height

    implicitHeight: root.fits ? root.textBottom + 12 : root.textBottom + 10 + holder.childrenRect.height + 10

    Rectangle {
        width: parent.width
        height: 1
        visible: !root.isFirst
        color: BrandTheme.rule
        Accessible.ignored: true
    }

    Txt {
        id: titleText

        y: 12
        width: root.width
        role: BrandTheme.strong
        text: root.title
        wrapMode: Text.Wrap
    }

    Txt {
        id: captionText

        y: 12 + titleText.height
        width: root.width
        role: BrandTheme.caption
        text: root.caption
        wrapMode: Text.Wrap
    }

    Item {
        id: holder

        x: root.fits ? root.width - childrenRect.width : 0
        y: root.fits ? (root.height - childrenRect.height) / 2 : root.textBottom + 10
        width: childrenRect.width
        height: childrenRect.height
    }
}

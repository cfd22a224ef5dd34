import QtQuick
import Velmorand.Settings

/// The title line of a pane, with room for a button at its right, and the caption below.
Item {
    id: root

    required property string title
    property string caption
    property int bottomPadding: 0
    default property alias button: holder.data

    implicitHeight: (captionText.visible ? captionText.y + captionText.height : titleText.height) + root.bottomPadding

    Txt {
        id: titleText

        width: root.width - holder.width
        role: BrandTheme.paneTitle
        isHeading: true
        text: root.title
        wrapMode: Text.Wrap
    }

    Item {
        id: holder

        anchors.right: parent.right
        width: childrenRect.width
        height: childrenRect.height
    }

    Txt {
        id: captionText

        y: titleText.height + BrandTheme.headingSpacing
        width: root.width
        visible: root.caption.length > 0
        role: BrandTheme.quiet
        text: root.caption
        wrapMode: Text.Wrap
    }
}

import QtQuick
import Velmorand.Settings

/// The title line of a pane, with room for a button at its right, and the caption below. Where both do not fit into a
/// line, the button is below everything.
Item {
    id: root

    required property string title
    property string caption
    property int bottomPadding: 0
    default property alias button: holder.data

    readonly property bool fits: titleText.implicitWidth + holder.width <= root.width
    readonly property real textHeight: captionText.visible ? captionText.y + captionText.height : titleText.height

    implicitHeight: (root.fits ? root.textHeight : holder.y + holder.height) + root.bottomPadding

    Txt {
        id: titleText

        width: root.fits ? root.width - holder.width : root.width
        role: BrandTheme.paneTitle
        isHeading: true
        text: root.title
        wrapMode: Text.Wrap
    }

    Item {
        id: holder

        x: root.fits ? root.width - holder.width : 0
        y: root.fits ? 0 : root.textHeight + BrandTheme.blockSpacing
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

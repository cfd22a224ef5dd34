import QtQuick
import Velmorand.Settings

/// What something is called over what it is called otherwise, a line of each. Where one is cut, a tool tip has both whole.
Column {
    id: root

    required property string name
    /// None when empty.
    required property string caption
    property color captionColor: BrandTheme.slate
    /// Whether they are read one by one, and not as a part of what they are in.
    property bool areRead: true

    readonly property bool isCut: nameText.truncated || captionText.truncated

    Txt {
        id: nameText

        width: parent.width
        horizontalAlignment: Text.AlignLeft
        role: BrandTheme.strong
        text: root.name
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: !root.areRead
    }

    Txt {
        id: captionText

        width: parent.width
        horizontalAlignment: Text.AlignLeft
        visible: root.caption.length > 0
        role: BrandTheme.caption
        color: root.captionColor
        text: root.caption
        elide: Text.ElideMiddle
        maximumLineCount: 1
        Accessible.ignored: !root.areRead || root.caption.length === 0
    }

    HoverHandler {
        id: hover
    }

    BrandToolTip {
        visible: hover.hovered && root.isCut
        text: root.caption.length > 0 ? root.name + "\n" + root.caption : root.name
    }
}

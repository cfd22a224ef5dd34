import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// What something does, below it, for those who rest the pointer there.
T.ToolTip {
    id: root

    x: 0
    y: root.parent ? root.parent.height + 4 : 0
    implicitWidth: Math.min(Math.ceil(root.implicitContentWidth) + root.leftPadding + root.rightPadding, BrandTheme.toolTipWidth)
    implicitHeight: root.implicitContentHeight + root.topPadding + root.bottomPadding
    margins: 8
    verticalPadding: 6
    horizontalPadding: 10
    delay: BrandTheme.toolTipDelay
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Txt {
        role: BrandTheme.caption
        color: BrandTheme.ink
        text: root.text
        wrapMode: Text.Wrap
        maximumLineCount: 12
        elide: Text.ElideRight
    }

    background: Rectangle {
        radius: BrandTheme.controlRadius
        color: BrandTheme.card
        border.width: 1
        border.color: BrandTheme.line
        Accessible.ignored: true
    }
}

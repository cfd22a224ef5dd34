import QtQuick
import Velmorand.Settings

/// What went wrong, with a triangle before it; no height when empty.
Item {
    id: root

    required property string text

    height: root.visible ? label.height : 0
    visible: root.text.length > 0

    Symbol {
        y: Math.round((BrandTheme.scaled(BrandTheme.caption.line) - height) / 2)
        name: "exclamationmark.triangle"
        color: BrandTheme.brick
    }

    Txt {
        id: label

        x: BrandTheme.symbolSize + BrandTheme.symbolSpacing
        width: root.width - x
        role: BrandTheme.caption
        color: BrandTheme.brick
        text: root.text
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
    }
}

import QtQuick
import Velmorand.Settings

/// What is wrong with a shortcut, with a triangle before it; nothing when empty.
Item {
    id: root

    required property string text

    implicitHeight: label.height
    visible: root.text.length > 0

    Symbol {
        x: -30
        y: Math.round((BrandTheme.scaled(BrandTheme.caption.line) - height) / 2)
        name: "exclamationmark.triangle"
        color: BrandTheme.brick
    }

    Txt {
        id: label

        width: root.width
        role: BrandTheme.caption
        color: BrandTheme.brick
        text: root.text
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}

import QtQuick
import Velmorand.Settings

/// A question about the captured combination: what is the matter, and what follows or helps.
Rectangle {
    id: root

    required property bool isShown
    /// Other actions have the combination; else it is unwise.
    required property bool isConflict
    required property string title
    required property string text

    readonly property int textStart: 40
    property string lastTitle
    /// For a moment, in which nothing is drawn, when one question follows another.
    property bool isRestated: false

    implicitHeight: texts.height + 24
    radius: BrandTheme.controlRadius
    color: root.isConflict ? BrandTheme.brickPale : BrandTheme.sandPale
    border.width: 1
    border.color: root.isConflict ? BrandTheme.brickEdge : BrandTheme.sandEdge
    opacity: root.isShown ? 1 : 0
    visible: root.isShown && !root.isRestated
    // Screen readers are told of an alert that comes up, and not of other words in it: then it comes up anew.
    onTitleChanged: {
        if (root.lastTitle.length > 0 && root.title.length > 0) {
            root.isRestated = true;
            root.isRestated = false;
        }
        root.lastTitle = root.title;
    }
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.title + " " + root.text
    Accessible.ignored: false

    Behavior on opacity {
        NumberAnimation {
            duration: BrandTheme.noticeDuration
        }
    }

    Symbol {
        x: 12
        y: 12 + Math.round((BrandTheme.scaled(BrandTheme.strong.line) - height) / 2)
        size: BrandTheme.statusSymbolSize
        name: root.isConflict ? "exclamationmark.triangle.fill" : "exclamationmark.triangle"
        color: root.isConflict ? BrandTheme.brick : BrandTheme.bronze
    }

    Column {
        id: texts

        x: root.textStart
        y: 12
        width: parent.width - root.textStart - 12
        spacing: BrandTheme.headingSpacing

        Txt {
            width: parent.width
            role: BrandTheme.strong
            text: root.title
            wrapMode: Text.Wrap
        }

        Txt {
            width: parent.width
            role: BrandTheme.caption
            color: BrandTheme.ink
            text: root.text
            wrapMode: Text.Wrap
        }
    }
}

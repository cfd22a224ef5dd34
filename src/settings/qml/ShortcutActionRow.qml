import QtQuick
import Velmorand.Settings

/// One action with its shortcut: a button that begins to record another one.
Pressable {
    id: root

    required property ShortcutRow row

    readonly property bool isMarked: root.hovered || root.row.isBeingRecorded
    readonly property int textStart: 64
    readonly property real textWidth: root.width - root.textStart - 14
    readonly property color fill: {
        if (root.down)
            return BrandTheme.hover;
        return root.isMarked ? BrandTheme.cream : BrandTheme.card;
    }

    implicitHeight: texts.y + texts.height + 12
    text: root.row.title
    Accessible.role: Accessible.Button
    Accessible.description: root.row.problem.length > 0 ? root.row.spoken + ". " + root.row.problem : root.row.spoken
    onClicked: root.row.record()

    Rectangle {
        anchors.fill: parent
        radius: BrandTheme.rowRadius
        color: root.fill
        border.width: 1
        border.color: root.isMarked || root.down ? BrandTheme.sand : BrandTheme.edge
        Accessible.ignored: true

        Behavior on color {
            ColorAnimation {
                duration: BrandTheme.tintDuration
            }
        }
    }

    ActionMiniature {
        x: 14
        y: 20
        row: root.row
    }

    Column {
        id: texts

        x: root.textStart
        y: 12
        width: root.textWidth
        spacing: 6

        Txt {
            width: parent.width
            role: BrandTheme.shortcutTitle
            text: root.row.title
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }

        Item {
            width: parent.width
            height: Math.max(20, chips.height, none.height)

            ShortcutChips {
                id: chips

                width: parent.width - pencil.width - BrandTheme.symbolSpacing
                visible: root.row.hasShortcut
                glyphs: root.row.glyphs
                spoken: root.row.spoken
                Accessible.ignored: true
            }

            Txt {
                id: none

                anchors.verticalCenter: parent.verticalCenter
                visible: !root.row.hasShortcut
                role: BrandTheme.caption
                text: root.row.spoken
                color: root.down ? BrandTheme.ink : BrandTheme.slate
                Accessible.ignored: true
            }

            Symbol {
                id: pencil

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                name: "pencil"
                color: root.isMarked || root.down || root.visualFocus ? BrandTheme.bronze : BrandTheme.stone
            }
        }

        ShortcutProblem {
            width: parent.width
            text: root.row.problem
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    BrandToolTip {
        visible: root.hovered && !root.down
        text: root.row.toolTip
    }

    FocusRing {
        around: BrandTheme.rowRadius
        visible: root.visualFocus
    }
}

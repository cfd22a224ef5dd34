import QtQuick
import Velmorand.Settings

/// The panel in which a shortcut is recorded. It has no keyboard of its own: every key is recorded, and the buttons are
/// for the pointer and for assistive programs.
Rectangle {
    id: root

    required property ShortcutRecorderViewModel model

    implicitWidth: Math.max(BrandTheme.recorderWidth, foot.implicitWidth + 2 * BrandTheme.panePadding)
    implicitHeight: foot.y + foot.height + BrandTheme.panePadding
    color: BrandTheme.paper
    Accessible.role: Accessible.Dialog
    Accessible.name: root.model.prompt

    Column {
        id: blocks

        x: BrandTheme.panePadding
        y: BrandTheme.panePadding
        width: parent.width - 2 * BrandTheme.panePadding
        spacing: 16

        Txt {
            width: parent.width
            role: BrandTheme.cardTitle
            isHeading: true
            text: root.model.prompt
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        RecorderWell {
            width: parent.width
            model: root.model
        }

        RecorderMessage {
            width: parent.width
            model: root.model
        }
    }

    RecorderButtons {
        id: foot

        x: BrandTheme.panePadding
        y: blocks.y + blocks.height + 16
        width: parent.width - 2 * BrandTheme.panePadding
        model: root.model
    }
}

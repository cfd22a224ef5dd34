import QtQuick
import Velmorand.Settings

/// What is said of the keys: how recording ends, what was wrong with the last one, or the question that waits.
Item {
    id: root

    required property ShortcutRecorderViewModel model

    readonly property bool isAsking: root.model.question !== ShortcutRecorderViewModel.NoQuestion

    readonly property real shownHeight: root.model.hintIsError ? error.height : hint.height
    readonly property int hintHeight: root.model.hint.length > 0 ? root.shownHeight : 0
    readonly property int gap: root.isAsking && root.hintHeight > 0 ? BrandTheme.symbolSpacing : 0
    readonly property real hintY: root.isAsking ? notice.height + root.gap : Math.round((root.height - root.hintHeight) / 2)

    implicitHeight: Math.max(64, notice.height + root.gap + root.hintHeight)

    RecorderNotice {
        id: notice

        width: parent.width
        height: root.isAsking ? implicitHeight : 0
        isShown: root.isAsking
        isConflict: root.model.question === ShortcutRecorderViewModel.Conflict
        title: root.model.questionTitle
        text: root.model.questionText
    }

    Txt {
        id: hint

        y: root.hintY
        width: parent.width
        role: BrandTheme.caption
        visible: !root.model.hintIsError && text.length > 0
        text: root.model.hint
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    // A text of its own: screen readers are told of an alert that comes up.
    Txt {
        id: error

        y: root.hintY
        width: parent.width
        role: BrandTheme.strongCaption
        color: BrandTheme.brick
        visible: root.model.hintIsError
        text: root.model.hint
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.ignored: false
    }
}

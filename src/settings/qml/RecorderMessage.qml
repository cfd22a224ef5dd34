import QtQuick
import Velmorand.Settings

/// What is said of the keys: how recording ends, what was wrong with the last one, or the question that waits.
Item {
    id: root

    required property ShortcutRecorderViewModel model

    readonly property bool isAsking: root.model.question !== ShortcutRecorderViewModel.NoQuestion

    readonly property int hintHeight: hint.text.length > 0 ? hint.height : 0
    readonly property int gap: root.isAsking && root.hintHeight > 0 ? BrandTheme.symbolSpacing : 0

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

        y: root.isAsking ? notice.height + root.gap : Math.round((root.height - height) / 2)
        width: parent.width
        role: root.model.hintIsError ? BrandTheme.strongCaption : BrandTheme.caption
        color: root.model.hintIsError ? BrandTheme.brick : BrandTheme.slate
        visible: text.length > 0
        text: root.model.hint
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}

import QtQuick
import Velmorand.Settings

/// What stands in the panel: what the choice is for, the applications or the folders, and the buttons.
FocusScope {
    id: root

    required property ApplicationChooserModel model

    focus: true
    Keys.onEscapePressed: event => {
        if (!event.isAutoRepeat)
            root.model.back();
    }

    Txt {
        id: message

        width: parent.width
        role: BrandTheme.cardTitle
        isHeading: true
        text: root.model.message
        wrapMode: Text.Wrap
    }

    InstalledApplicationsView {
        id: installed

        anchors.top: message.bottom
        anchors.topMargin: BrandTheme.blockSpacing
        anchors.bottom: foot.top
        anchors.bottomMargin: 16
        width: parent.width
        focus: true
        visible: !root.model.isElsewhere
        model: root.model
    }

    ApplicationFolderView {
        id: elsewhere

        anchors.fill: installed
        visible: root.model.isElsewhere
        model: root.model
    }

    ApplicationChooserFoot {
        id: foot

        anchors.bottom: parent.bottom
        width: parent.width
        model: root.model
    }

    Connections {
        target: root.model

        function onIsOpenChanged() {
            installed.reset();
        }

        function onIsElsewhereChanged() {
            if (root.model.isElsewhere)
                elsewhere.begin();
            else if (root.model.isOpen)
                installed.begin();
        }

        function onOtherAdded(row: int) {
            installed.take(row);
        }
    }
}

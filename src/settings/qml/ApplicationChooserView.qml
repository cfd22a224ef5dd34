pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// The panel over the whole window in which applications are chosen.
T.Dialog {
    id: root

    required property ApplicationChooserModel model

    /// What had the keyboard before, and gets it back in the way it had got it.
    property T.Control opener: null

    anchors.centerIn: T.Overlay.overlay
    width: Math.min(520, (root.parent?.width ?? 0) - 2 * BrandTheme.panePadding)
    height: (root.parent?.height ?? 0) - 2 * BrandTheme.panePadding
    padding: BrandTheme.panePadding
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    title: root.model.message
    onAboutToShow: root.opener = root.parent?.Window.activeFocusItem as T.Control
    onClosed: {
        root.model.cancel();
        root.opener?.forceActiveFocus(root.opener.focusReason);
    }

    T.Overlay.modal: Rectangle {
        color: BrandTheme.cream
    }

    background: Rectangle {
        radius: BrandTheme.cardRadius
        color: BrandTheme.paper
        border.width: 1
        border.color: BrandTheme.edge
        Accessible.ignored: true
    }

    contentItem: ApplicationChooserContent {
        model: root.model
    }

    Connections {
        target: root.model

        function onIsOpenChanged() {
            root.visible = root.model.isOpen;
        }
    }
}

import QtQuick
import Velmorand.Settings

/// The whole window: the sidebar, and the pane that is selected in it.
Rectangle {
    id: root

    required property SettingsModel model

    color: BrandTheme.paper
    focus: true
    Accessible.ignored: true
    Keys.onPressed: event => {
        const page = area.height - 2 * BrandTheme.panePadding;
        const positions = {
            [Qt.Key_PageUp]: area.contentY - page,
            [Qt.Key_PageDown]: area.contentY + page,
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: area.contentHeight
        };
        event.accepted = event.key in positions;
        if (event.accepted)
            area.scrollTo(positions[event.key]);
    }

    SettingsSidebar {
        id: sidebar

        height: parent.height
        model: root.model
    }

    PaneArea {
        id: area

        anchors.left: sidebar.right
        anchors.right: parent.right
        height: parent.height
        model: root.model
    }

    BrandScrollBar {
        id: scrollBar

        anchors.right: parent.right
        height: parent.height
        orientation: Qt.Vertical
        size: area.height / area.contentHeight
        position: area.contentY / area.contentHeight
        onPositionChanged: {
            if (scrollBar.pressed)
                area.scrollTo(scrollBar.position * area.contentHeight);
        }
    }

    ApplicationChooserView {
        model: root.model.applicationChooser
    }
}

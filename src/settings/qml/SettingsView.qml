import QtQuick
import Velmorand.Settings

/// The whole window: the sidebar, and the pane that is selected in it.
Rectangle {
    id: root

    required property SettingsModel model

    color: BrandTheme.paper
    Accessible.ignored: true

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
}

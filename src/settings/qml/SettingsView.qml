import QtQuick
import Velmorand.Settings

/// The whole window: the sidebar, and the pane that is selected in it.
Rectangle {
    id: root

    required property SettingsModel model

    /// One line for each pane, and its component below.
    readonly property var panes: ({
            general: generalPane,
            shortcuts: shortcutsPane,
            ignoredApps: ignoredAppsPane,
            about: aboutPane
        })

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
        pane: root.panes[root.model.selectedPane]
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

    Component {
        id: generalPane

        GeneralSettingsView {
            model: root.model.general
        }
    }

    Component {
        id: shortcutsPane

        ShortcutsSettingsView {}
    }

    Component {
        id: ignoredAppsPane

        IgnoredAppsSettingsView {}
    }

    Component {
        id: aboutPane

        AboutSettingsView {
            model: root.model
        }
    }
}

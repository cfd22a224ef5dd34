import Velmorand.Settings

/// The Shortcuts pane.
PaneHeader {
    required property SettingsModel model

    title: qsTr("Shortcuts")
}

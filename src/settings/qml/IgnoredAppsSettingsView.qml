import Velmorand.Settings

/// The Ignored Apps pane.
PaneHeader {
    required property SettingsModel model

    title: qsTr("Ignored Apps")
}

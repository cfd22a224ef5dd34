import Velmorand.Settings

/// The Shortcuts pane.
PaneHeader {
    title: qsTr("Shortcuts")
}

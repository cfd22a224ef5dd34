import Velmorand.Settings

/// The Ignored Apps pane.
PaneHeader {
    title: qsTr("Ignored Apps")
}

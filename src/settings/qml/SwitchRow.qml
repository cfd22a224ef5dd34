import QtQuick
import Velmorand.Settings

/// A control row with a switch, which is named by the row.
SettingsControlRow {
    id: root

    required property bool isOn

    /// The user wants the other state.
    signal requested(bool on)

    BrandSwitch {
        isOn: root.isOn
        title: root.title
        explanation: root.caption
        onRequested: on => root.requested(on)
    }
}

import QtQuick
import Velmorand.Settings

/// The preferences about how windows are arranged, and launch at login.
SettingsCard {
    id: root

    required property GeneralSettingsModel model

    bottomPadding: 8

    CardSectionTitle {
        text: qsTr("Behavior")
    }

    SwitchRow {
        width: parent.width
        isFirst: true
        title: qsTr("Launch at Login")
        caption: qsTr("Start Velmorand automatically when you log in.")
        isOn: root.model.launchAtLogin
        onRequested: on => root.model.launchAtLogin = on
    }

    LaunchAtLoginNotes {
        width: parent.width
        model: root.model
    }

    SwitchRow {
        width: parent.width
        title: qsTr("Keep Windows Within Visible Screen Area")
        caption: qsTr("Respect the menu bar and Dock when arranging windows.")
        isOn: root.model.clampToVisibleArea
        onRequested: on => root.model.clampToVisibleArea = on
    }

    SwitchRow {
        width: parent.width
        title: qsTr("Enable Window Transitions")
        caption: qsTr("Animate window position and size changes smoothly.")
        isOn: root.model.enableAnimations
        onRequested: on => root.model.enableAnimations = on
    }

    Reveal {
        width: parent.width
        isShown: root.model.enableAnimations

        SliderRow {
            width: root.innerWidth
            title: qsTr("Transition Duration")
            caption: qsTr("How quickly windows move into place.")
            source: root.model.animationDuration
        }
    }

    SliderRow {
        width: parent.width
        title: qsTr("Outer Margin (Padding)")
        caption: qsTr("Spacing between windows and screen edges.")
        source: root.model.outerPadding
    }

    SliderRow {
        width: parent.width
        title: qsTr("Inner Gap")
        caption: qsTr("Spacing between adjacent windows.")
        source: root.model.innerGap
    }
}

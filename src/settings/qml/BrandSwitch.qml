import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A switch that shows a state kept elsewhere: it asks for the other one and follows what becomes of it.
T.Switch {
    id: root

    required property bool isOn
    /// What it switches, for those who do not see the row.
    required property string title
    property string explanation

    /// The user wants the other state.
    signal requested(bool on)

    readonly property color tint: {
        if (root.checked)
            return root.hovered && !root.down ? BrandTheme.sageDark : BrandTheme.sageDeep;
        return root.hovered && !root.down ? BrandTheme.down : BrandTheme.selected;
    }

    function toggleByHand() {
        const wanted = root.checked;
        root.requested(wanted);
        root.checked = Qt.binding(() => root.isOn);
    }

    implicitWidth: 40
    implicitHeight: 24
    hoverEnabled: true
    checked: root.isOn
    opacity: root.enabled ? 1 : BrandTheme.disabledOpacity
    onToggled: root.toggleByHand()
    Accessible.role: Accessible.CheckBox
    Accessible.name: root.title
    Accessible.description: root.explanation
    Accessible.onPressAction: {
        root.toggle();
        root.toggleByHand();
    }
    Accessible.onToggleAction: {
        root.toggle();
        root.toggleByHand();
    }

    indicator: Rectangle {
        width: 40
        height: 24
        radius: 12
        color: root.tint
        border.width: root.checked ? 0 : 1
        border.color: BrandTheme.lineStrong
        Accessible.ignored: true

        Behavior on color {
            ColorAnimation {
                duration: BrandTheme.switchDuration
                easing.type: Easing.OutCubic
            }
        }

        Rectangle {
            x: 3 + root.visualPosition * 16
            y: 3
            width: 18
            height: 18
            radius: 9
            color: BrandTheme.card
            border.width: root.checked ? 0 : 1
            border.color: BrandTheme.lineStrong
            Accessible.ignored: true

            Behavior on x {
                enabled: !root.down

                NumberAnimation {
                    duration: BrandTheme.switchDuration
                    easing.type: Easing.OutCubic
                }
            }
        }
    }

    FocusRing {
        around: 12
        visible: root.visualFocus
    }
}

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A slider over a number kept elsewhere.
T.Slider {
    id: root

    required property PreferenceSlider source
    /// What it sets, for those who do not see the row.
    required property string title
    property string explanation

    // Under these names the accessibility interface looks for the limits.
    readonly property real minimumValue: root.from
    readonly property real maximumValue: root.to

    implicitWidth: 160
    implicitHeight: 24
    hoverEnabled: true
    padding: 0
    from: root.source.from
    to: root.source.to
    stepSize: root.source.stepSize
    snapMode: T.Slider.SnapAlways
    value: root.source.value
    opacity: root.enabled ? 1 : BrandTheme.disabledOpacity
    onValueChanged: {
        if (root.value !== root.source.value)
            root.source.value = root.value;
    }
    Accessible.role: Accessible.Slider
    Accessible.name: root.title
    Accessible.description: root.explanation
    Accessible.onIncreaseAction: root.increase()
    Accessible.onDecreaseAction: root.decrease()

    background: Rectangle {
        y: (root.height - height) / 2
        width: root.width
        height: 4
        radius: 2
        color: BrandTheme.track
        Accessible.ignored: true

        Rectangle {
            width: root.handle.x + root.handle.width / 2
            height: parent.height
            radius: 2
            color: BrandTheme.sageDeep
            Accessible.ignored: true
        }
    }

    handle: Rectangle {
        x: root.visualPosition * (root.width - width)
        y: (root.height - height) / 2
        width: 18
        height: 18
        radius: 9
        color: root.pressed ? BrandTheme.hover : BrandTheme.card
        border.width: root.pressed || root.hovered ? 2 : 1.5
        border.color: BrandTheme.sageDeep
        Accessible.ignored: true

        FocusRing {
            around: 9
            visible: root.visualFocus
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// One line to write in.
T.TextField {
    id: root

    required property string title

    implicitWidth: 160
    implicitHeight: Math.max(32, metrics.height + 12)
    leftPadding: 12
    rightPadding: 12
    verticalAlignment: TextInput.AlignVCenter
    hoverEnabled: true
    selectByMouse: true
    color: BrandTheme.ink
    selectionColor: BrandTheme.sageDeep
    selectedTextColor: BrandTheme.card
    font.family: BrandTheme.fontFamily
    font.pixelSize: BrandTheme.scaled(BrandTheme.body.size)
    placeholderText: root.title
    Accessible.role: Accessible.EditableText
    Accessible.name: root.title

    FontMetrics {
        id: metrics

        font: root.font
    }

    background: Rectangle {
        radius: BrandTheme.controlRadius
        color: BrandTheme.card
        border.width: 1
        border.color: root.hovered ? BrandTheme.sand : BrandTheme.line
        Accessible.ignored: true

        FocusRing {
            visible: root.activeFocus
        }
    }

    Txt {
        x: root.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.length === 0 && root.preeditText.length === 0
        role: BrandTheme.quiet
        text: root.title
        Accessible.ignored: true
    }
}

import QtQuick

/// Something to press that is no push button: the templates' buttons tell assistive programs that they are one, whatever
/// the role says.
Item {
    id: root

    required property string text

    readonly property bool hovered: hover.hovered
    readonly property bool down: tap.pressed || root.isHeldByKey
    /// Whether it has the keyboard, and got it from there.
    readonly property bool visualFocus: root.activeFocus && !root.isFocusedByPointer

    property bool isHeldByKey: false
    property bool isFocusedByPointer: false

    signal clicked

    activeFocusOnTab: true
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onSpacePressed: event => {
        root.isFocusedByPointer = false;
        root.isHeldByKey = true;
    }
    Keys.onReleased: event => {
        if (event.key !== Qt.Key_Space || event.isAutoRepeat || !root.isHeldByKey)
            return;
        root.isHeldByKey = false;
        root.clicked();
    }
    onActiveFocusChanged: root.isHeldByKey = false
    onFocusChanged: {
        if (!root.focus)
            root.isFocusedByPointer = false;
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        longPressThreshold: 86400  // seconds: however long it is held, it is pressed
        onPressedChanged: {
            if (!tap.pressed)
                return;
            root.isFocusedByPointer = true;
            root.forceActiveFocus(Qt.MouseFocusReason);
        }
        onTapped: root.clicked()
    }
}

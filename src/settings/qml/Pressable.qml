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

    /// Whether the return key presses it; else the key is for what it stands in.
    property bool takesReturn: true

    property bool isHeldByKey: false
    property bool isFocusedByPointer: false

    signal clicked

    function pressByReturn(event: KeyEvent) {
        event.accepted = root.takesReturn;
        if (root.takesReturn && !event.isAutoRepeat)
            root.clicked();
    }

    activeFocusOnTab: true
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: event => root.pressByReturn(event)
    Keys.onEnterPressed: event => root.pressByReturn(event)
    Keys.onSpacePressed: event => {
        root.isFocusedByPointer = false;
        if (!event.isAutoRepeat)
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

import QtQuick
import Velmorand.Settings

/// The selected pane in its padding, scrolled as far as it is higher than the window.
Flickable {
    id: root

    /// Its selected pane is shown, laid out at the width that the padding leaves.
    required property SettingsModel model

    contentWidth: root.width
    contentHeight: loader.height + 2 * BrandTheme.panePadding
    boundsBehavior: Flickable.StopAtBounds
    interactive: false
    clip: true
    Accessible.ignored: true

    function load() {
        loader.setSource(root.model.selectedView, {
            model: root.model
        });
        root.scrollTo(0);
    }

    function scrollTo(position: real) {
        root.contentY = Math.max(0, Math.min(position, root.contentHeight - root.height));
    }

    /// Brings the item into sight, with the ring around it.
    function reveal(item: Item) {
        const top = item.mapToItem(root.contentItem, 0, 0).y;
        const margin = BrandTheme.panePadding;
        if (top - margin < root.contentY)
            root.scrollTo(top - margin);
        else if (top + item.height + margin > root.contentY + root.height)
            root.scrollTo(top + item.height + margin - root.height);
    }

    /// What the keyboard or an assistive program goes to comes into sight. What the pointer goes to is in sight, and would
    /// be moved away under it.
    function revealFocused() {
        const item = root.Window.activeFocusItem;
        if (item === null || !root.isInside(item))
            return;
        if (!root.gotFocusByPointer(item))
            root.reveal(item);
    }

    /// Controls know why they have the focus, and our own items whether by the pointer.
    function gotFocusByPointer(item: var): bool {
        return item.isFocusedByPointer === true || item.focusReason === Qt.MouseFocusReason;
    }

    function isInside(item: Item): bool {
        for (let ancestor = item; ancestor !== null; ancestor = ancestor.parent) {
            if (ancestor === root.contentItem)
                return true;
        }
        return false;
    }

    onHeightChanged: root.scrollTo(root.contentY)
    onContentHeightChanged: root.scrollTo(root.contentY)
    Component.onCompleted: root.load()

    Connections {
        target: root.model

        function onSelectedPaneChanged() {
            root.load();
        }
    }

    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged() {
            focusSettling.restart();
        }
    }

    /// An item learns why it has the focus after everybody else has learnt that it has.
    Timer {
        id: focusSettling

        interval: 0
        onTriggered: root.revealFocused()
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        target: null
        onWheel: event => root.scrollTo(root.contentY - (event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y * 0.5))
    }

    Loader {
        id: loader

        x: BrandTheme.panePadding
        y: BrandTheme.panePadding
        width: root.width - 2 * BrandTheme.panePadding
    }
}

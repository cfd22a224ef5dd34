pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// A card of rows, and how the keyboard goes through them.
Rectangle {
    id: root

    required property string title
    /// What stands in place of the rows while there are none.
    required property string emptyText
    property alias model: list.model
    property alias delegate: list.delegate
    property alias currentIndex: list.currentIndex
    property alias count: list.count
    readonly property int rowWidth: list.width - 12

    /// Return was pressed in the row.
    signal accepted(int row)
    /// Text was typed that no row takes.
    signal typed(string text)
    /// The same of the key that takes the last character away.
    signal erased

    /// Gives the row the keyboard, as far as there is one.
    function take(row: int) {
        list.currentIndex = row;
        list.positionViewAtIndex(row, ListView.Contain);
        list.forceActiveFocus(Qt.TabFocusReason);
    }

    function rowFor(key: int): int {
        const page = Math.max(1, Math.floor(list.height / (list.currentItem?.height ?? list.height)) - 1);
        const rows = {
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: list.count - 1,
            [Qt.Key_PageUp]: list.currentIndex - page,
            [Qt.Key_PageDown]: list.currentIndex + page
        };
        return key in rows ? Math.max(0, Math.min(rows[key], list.count - 1)) : -1;
    }

    function isText(event: KeyEvent): bool {
        const commands = Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier;
        return event.text.length > 0 && event.text > " " && event.text !== "\u007f" && !(event.modifiers & commands);
    }

    /// A key that stays down counts once: what comes next is another question.
    function accept(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.accepted(list.currentIndex);
    }

    radius: BrandTheme.cardRadius
    color: BrandTheme.card
    border.width: 1
    border.color: BrandTheme.edge
    Accessible.ignored: true

    ListView {
        id: list

        anchors.fill: parent
        anchors.margins: 4
        clip: true
        activeFocusOnTab: list.count > 0
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        // What has the keyboard stays in sight when something below takes room.
        onHeightChanged: list.positionViewAtIndex(list.currentIndex, ListView.Contain)
        T.ScrollBar.vertical: BrandScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: root.title

        Keys.onPressed: event => {
            const row = root.rowFor(event.key);
            event.accepted = true;
            if (row >= 0)
                list.currentIndex = row;
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                root.accept(event);
            else if (event.key === Qt.Key_Backspace)
                root.erased();
            else if (root.isText(event))
                root.typed(event.text);
            else
                event.accepted = false;
        }
    }

    Txt {
        anchors.centerIn: parent
        visible: list.count === 0
        role: BrandTheme.quiet
        text: root.emptyText
    }
}

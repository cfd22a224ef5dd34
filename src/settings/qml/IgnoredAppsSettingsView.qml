pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The Ignored Apps pane.
Column {
    id: root

    required property SettingsModel model

    readonly property IgnoredAppsModel apps: root.model.ignoredApps

    spacing: BrandTheme.cardSpacing
    Component.onCompleted: root.apps.refresh()

    /// The keyboard goes on in the list where the row was.
    function remove(row: IgnoredAppRow, index: int) {
        const next = rows.itemAt(index + 1) ?? rows.itemAt(index - 1);
        if (row.hasKeyboard) {
            if (next)
                (next as IgnoredAppRow).takeKeyboard();
            else
                addButton.forceActiveFocus(Qt.TabFocusReason);
        }
        root.apps.remove(index);
    }

    /// Goes from row to row where the list has the keyboard.
    function move(event: KeyEvent, index: int) {
        const targets = {
            [Qt.Key_Up]: index - 1,
            [Qt.Key_Down]: index + 1,
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: rows.count - 1
        };
        const target = event.key in targets ? rows.itemAt(targets[event.key]) as IgnoredAppRow : null;
        event.accepted = target !== null;
        if (target)
            target.takeKeyboard();
    }

    PaneHeader {
        width: parent.width
        bottomPadding: 8
        title: qsTr("Ignored Apps")
        caption: qsTr("Apps added here will be excluded from Velmorand snapping behaviors.")

        BrandButton {
            id: addButton

            symbol: "plus"
            text: qsTr("Add App...")
            onClicked: root.apps.addApplications()
        }
    }

    IgnoredAppsEmptyCard {
        id: emptyCard

        width: parent.width
        visible: root.apps.count === 0
        // The keyboard does not stay at what is gone.
        onVisibleChanged: {
            if (!emptyCard.visible && emptyCard.hasKeyboard)
                addButton.forceActiveFocus(Qt.TabFocusReason);
        }
        onAddRequested: root.apps.addApplications()
    }

    SettingsCard {
        width: parent.width
        visible: root.apps.count > 0
        topPadding: 4
        bottomPadding: 4
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Ignored Apps")

        Repeater {
            id: rows

            model: root.apps

            IgnoredAppRow {
                id: row

                required property int index

                width: parent?.width ?? 0
                isFirst: row.index === 0
                Keys.onPressed: event => root.move(event, row.index)
                onRemoved: root.remove(row, row.index)
            }
        }
    }

    Item {
        width: parent.width
        height: note.height

        Symbol {
            y: Math.round((BrandTheme.scaled(BrandTheme.caption.line) - height) / 2)
            name: "checkmark.seal"
            color: BrandTheme.sageDeep
        }

        Txt {
            id: note

            x: BrandTheme.symbolSize + BrandTheme.symbolSpacing
            width: parent.width - x
            role: BrandTheme.caption
            text: qsTr("Changes take effect immediately. No restart required.")
            wrapMode: Text.Wrap
        }
    }
}

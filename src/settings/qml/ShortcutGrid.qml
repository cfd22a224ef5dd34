pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// One group of actions under its title, in two equal columns. The rows of a line are equally high.
Column {
    id: root

    required property ShortcutSection section

    readonly property int rowWidth: Math.floor((root.width - BrandTheme.cardSpacing) / 2)

    Txt {
        width: parent.width
        bottomPadding: BrandTheme.blockSpacing - lead
        role: BrandTheme.cardTitle
        isHeading: true
        text: root.section.title
    }

    Column {
        width: parent.width
        spacing: BrandTheme.cardSpacing

        Repeater {
            model: Math.ceil(root.section.rows.length / 2)

            Row {
                id: line

                required property int index

                readonly property int second: 2 * line.index + 1
                readonly property real rowHeight: Math.max(left.implicitHeight, right.implicitHeight)

                spacing: BrandTheme.cardSpacing

                ShortcutActionRow {
                    id: left

                    width: root.rowWidth
                    height: line.rowHeight
                    row: root.section.rows[2 * line.index]
                }

                Loader {
                    id: right

                    width: root.rowWidth
                    height: line.rowHeight
                    active: line.second < root.section.rows.length
                    Component.onCompleted: right.setSource("ShortcutActionRow.qml", {
                        row: root.section.rows[line.second]
                    })
                }
            }
        }
    }
}

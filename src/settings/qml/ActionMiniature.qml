pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// A little picture of what an action does with a window. It is decoration.
Item {
    id: root

    required property ShortcutRow row

    readonly property int kind: root.row.miniature
    readonly property bool isDisplays: root.kind === ShortcutRow.NextDisplay || root.kind === ShortcutRow.PreviousDisplay
    readonly property bool isField: root.kind === ShortcutRow.Center || root.kind === ShortcutRow.Restore
    readonly property rect target: root.row.targetArea // qmllint disable type
    readonly property list<real> columns: root.cuts(root.target.x, root.target.width)
    readonly property list<real> lines: root.cuts(root.target.y, root.target.height)

    implicitWidth: 36
    implicitHeight: 28
    Accessible.ignored: true

    /// Where the field is cut so that a part of this place and size is one tile: evenly where that does.
    function cuts(start: real, size: real): list<real> {
        const even = Math.round(1 / size);
        const isEven = Math.abs(even * size - 1) < 0.01 && Math.abs(start / size - Math.round(start / size)) < 0.01;
        const inner = isEven ? Array.from({
            length: even - 1
        }, (_, place) => (place + 1) / even) : [start, start + size];
        return [0, ...inner.filter(cut => cut > 0.01 && cut < 0.99), 1];
    }

    /// The tiles are 2 apart; those at the edges go up to them.
    function edgeBefore(cut: real, length: real): real {
        return Math.round(cut * length) + (cut > 0 ? 1 : 0);
    }

    function edgeAfter(cut: real, length: real): real {
        return Math.round(cut * length) - (cut < 1 ? 1 : 0);
    }

    component Tile: Rectangle {
        property bool isTarget: false

        radius: 3
        color: isTarget ? BrandTheme.sageDeep : BrandTheme.tileOff
        Accessible.ignored: true
    }

    Repeater {
        model: root.isDisplays || root.isField ? 0 : (root.columns.length - 1) * (root.lines.length - 1)

        Tile {
            required property int index

            readonly property int column: index % (root.columns.length - 1)
            readonly property int line: Math.floor(index / (root.columns.length - 1))

            x: root.edgeBefore(root.columns[column], root.width)
            y: root.edgeBefore(root.lines[line], root.height)
            width: root.edgeAfter(root.columns[column + 1], root.width) - x
            height: root.edgeAfter(root.lines[line + 1], root.height) - y
            isTarget: Math.abs(root.columns[column] - root.target.x) < 0.01 && Math.abs(root.lines[line] - root.target.y) < 0.01
        }
    }

    Repeater {
        model: root.isDisplays ? 2 : 0

        Item {
            id: display

            required property int index

            readonly property bool isTarget: (display.index === 0) === (root.kind === ShortcutRow.PreviousDisplay)

            x: display.index * 20

            Tile {
                y: 5
                width: 16
                height: 14
                isTarget: display.isTarget
            }

            Tile {
                x: 5
                y: 21
                width: 6
                height: 2
                radius: 1
                isTarget: display.isTarget
            }
        }
    }

    Tile {
        anchors.fill: parent
        visible: root.isField
    }

    Tile {
        anchors.centerIn: parent
        width: 20
        height: 16
        visible: root.kind === ShortcutRow.Center
        isTarget: true
    }

    Symbol {
        anchors.centerIn: parent
        visible: root.kind === ShortcutRow.Restore
        size: 18
        name: "arrow.counterclockwise"
        color: BrandTheme.sageDeep
    }
}

import QtQuick
import Velmorand.Settings

/// A folder that can be opened, or an application in one that can be taken.
ChooserRow {
    id: root

    required property bool isFolder

    symbol: root.isFolder ? "folder" : ""
    Accessible.role: Accessible.Button
}

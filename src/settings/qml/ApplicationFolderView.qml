pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The folders of the machine, for an application that the desktop does not list.
FocusScope {
    id: root

    required property ApplicationChooserModel model

    readonly property ApplicationFolderModel folder: root.model.folder
    readonly property string folderPath: root.folder.path

    onFolderPathChanged: {
        path.text = root.folderPath;
        if (root.visible)
            root.begin();
    }

    /// Gives the first row the keyboard.
    function begin() {
        if (root.folder.count > 0)
            list.take(0);
        else
            path.forceActiveFocus(Qt.TabFocusReason);
    }

    function leave() {
        if (root.folder.hasParent)
            list.take(root.model.leaveFolder());
    }

    function go(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.model.openPath(path.text);
    }

    /// Nobody has to leave the list to write a path; it goes on from the folder that is shown.
    function write(text: string) {
        path.forceActiveFocus(Qt.TabFocusReason);
        path.text = text === "/" || text === "~" ? text : (root.folder.hasParent ? root.folderPath + "/" : "/") + text;
    }

    BrandTextField {
        id: path

        width: upButton.x - BrandTheme.symbolSpacing
        height: Math.max(path.implicitHeight, upButton.implicitHeight)
        title: qsTr("Folder or file")
        Keys.onDownPressed: list.take(list.currentIndex)
        Keys.onReturnPressed: event => root.go(event)
        Keys.onEnterPressed: event => root.go(event)
    }

    BrandButton {
        id: upButton

        anchors.right: parent.right
        enabled: root.folder.hasParent
        text: qsTr("Up")
        Accessible.description: qsTr("Opens the enclosing folder")
        onClicked: root.leave()
    }

    ChooserList {
        id: list

        anchors.top: path.bottom
        anchors.topMargin: 16
        anchors.bottom: problem.top
        anchors.bottomMargin: problem.visible ? BrandTheme.blockSpacing : 0
        width: parent.width
        title: qsTr("Folders and applications")
        emptyText: qsTr("No folders or applications here")
        model: root.folder
        onAccepted: row => root.model.open(row)
        onTyped: text => root.write(text)
        onErased: root.leave()

        delegate: ApplicationFolderRow {
            id: row

            required property int index
            required property string fileName

            width: list.rowWidth
            caption: row.isFolder || row.fileName === row.name ? "" : row.fileName
            onClicked: {
                list.currentIndex = row.index;
                root.model.open(row.index);
            }
        }
    }

    ProblemText {
        id: problem

        anchors.bottom: parent.bottom
        width: parent.width
        text: root.model.otherProblem
    }
}

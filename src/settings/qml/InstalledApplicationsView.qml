pragma ComponentBehavior: Bound

import QtQuick
import Velmorand.Settings

/// The applications that the desktop lists, and the search in them.
FocusScope {
    id: root

    required property ApplicationChooserModel model

    readonly property InstalledApplicationsModel applications: root.model.applications

    /// Has the search get the keyboard when the panel does.
    function reset() {
        root.focus = true;
        search.focus = true;
        list.currentIndex = 0;
    }

    /// Gives the search the keyboard.
    function begin() {
        search.forceActiveFocus(Qt.TabFocusReason);
    }

    /// Gives the row the keyboard.
    function take(row: int) {
        list.take(row);
    }

    function look() {
        root.applications.searchText = search.text;
        list.currentIndex = 0;
    }

    function accept(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.model.accept(search.length > 0 ? 0 : -1);
    }

    /// Nobody has to leave the list to search for something else.
    function write(text: string) {
        search.forceActiveFocus(Qt.TabFocusReason);
        search.insert(search.length, text);
    }

    function erase() {
        search.forceActiveFocus(Qt.TabFocusReason);
        search.remove(search.length - 1, search.length);
    }

    BrandTextField {
        id: search

        width: parent.width
        focus: true
        title: qsTr("Search")
        text: root.applications.searchText
        Accessible.searchEdit: true
        onTextChanged: root.look()
        Keys.onDownPressed: list.take(list.currentIndex)
        Keys.onReturnPressed: event => root.accept(event)
        Keys.onEnterPressed: event => root.accept(event)
    }

    ChooserList {
        id: list

        anchors.top: search.bottom
        anchors.topMargin: 16
        anchors.bottom: parent.bottom
        width: parent.width
        title: qsTr("Applications")
        emptyText: qsTr("No applications found")
        model: root.applications
        onAccepted: row => root.model.accept(row)
        onTyped: text => root.write(text)
        onErased: root.erase()

        delegate: ApplicationChooserRow {
            id: row

            required property int index
            required property string identifier

            width: list.rowWidth
            caption: row.identifier
            onRequested: chosen => {
                list.currentIndex = row.index;
                root.applications.setChosen(row.index, chosen);
            }
        }
    }
}

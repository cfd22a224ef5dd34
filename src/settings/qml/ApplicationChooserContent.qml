pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmorand.Settings

/// What stands in the panel: what the choice is for, the search, the applications, and the buttons.
FocusScope {
    id: root

    required property ApplicationChooserModel model

    readonly property InstalledApplicationsModel applications: root.model.applications

    focus: true
    Keys.onReturnPressed: root.model.confirm()
    Keys.onEnterPressed: root.model.confirm()

    Txt {
        id: message

        width: parent.width
        role: BrandTheme.cardTitle
        isHeading: true
        text: root.model.message
        wrapMode: Text.Wrap
    }

    BrandSearchField {
        id: search

        anchors.top: message.bottom
        anchors.topMargin: BrandTheme.blockSpacing
        width: parent.width
        title: qsTr("Search")
        text: root.applications.searchText
        onTextEdited: {
            root.applications.searchText = search.text;
            list.currentIndex = 0;
        }
        Keys.onDownPressed: list.currentItem?.forceActiveFocus(Qt.TabFocusReason)
    }

    Rectangle {
        anchors.top: search.bottom
        anchors.topMargin: 16
        anchors.bottom: foot.top
        anchors.bottomMargin: 16
        width: parent.width
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
            activeFocusOnTab: root.applications.count > 0
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            model: root.applications
            T.ScrollBar.vertical: BrandScrollBar {}
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Applications")

            delegate: ApplicationChooserRow {
                id: row

                required property int index

                width: list.width - 12
                activeFocusOnTab: false
                onRequested: chosen => {
                    list.currentIndex = row.index;
                    root.applications.setChosen(row.index, chosen);
                }
            }
        }

        Txt {
            anchors.centerIn: parent
            visible: root.applications.count === 0
            role: BrandTheme.quiet
            text: qsTr("No applications found")
        }
    }

    Item {
        id: foot

        anchors.bottom: parent.bottom
        width: parent.width
        height: confirmButton.height

        Txt {
            anchors.verticalCenter: parent.verticalCenter
            width: cancelButton.x - 16
            visible: root.applications.chosenCount > 0
            role: BrandTheme.caption
            text: qsTr("Chosen: %1").arg(root.applications.chosenCount)
            wrapMode: Text.Wrap
        }

        BrandButton {
            id: cancelButton

            anchors.right: confirmButton.left
            anchors.rightMargin: BrandTheme.symbolSpacing
            text: qsTr("Cancel")
            onClicked: root.model.cancel()
        }

        BrandButton {
            id: confirmButton

            anchors.right: parent.right
            kind: BrandButton.Prominent
            enabled: root.applications.chosenCount > 0
            text: root.model.confirmText
            onClicked: root.model.confirm()
        }
    }

    Connections {
        target: root.model

        function onIsOpenChanged() {
            search.focus = true;
            list.currentIndex = 0;
        }
    }
}

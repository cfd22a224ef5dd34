import QtQuick
import Velmorand.Settings

/// The General pane.
Column {
    id: root

    required property SettingsModel model

    spacing: BrandTheme.cardSpacing
    Component.onCompleted: root.model.general.paneAppeared()
    Component.onDestruction: root.model.general.paneDisappeared()

    WelcomeCard {
        width: parent.width
    }

    AccessibilityCard {
        width: parent.width
        model: root.model.general
    }

    BehaviorCard {
        width: parent.width
        model: root.model.general
    }
}

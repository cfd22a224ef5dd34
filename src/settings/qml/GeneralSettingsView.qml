import QtQuick
import Velmorand.Settings

/// The General pane.
Column {
    id: root

    required property GeneralSettingsModel model

    spacing: BrandTheme.cardSpacing
    Component.onCompleted: root.model.paneAppeared()
    Component.onDestruction: root.model.paneDisappeared()

    WelcomeCard {
        width: parent.width
    }

    AccessibilityCard {
        width: parent.width
        model: root.model
    }

    BehaviorCard {
        width: parent.width
        model: root.model
    }
}

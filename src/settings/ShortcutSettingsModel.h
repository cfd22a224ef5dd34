#pragma once

#include "base/Subscription.h"
#include "settings/ShortcutSection.h"
#include "windows/WindowAction.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QList>
#include <QObject>
#include <QQmlListProperty>
#include <QString>
#include <memory>

namespace velmorand {

class PreferencesStore;
class ShortcutManager;
class ShortcutRecorderPanel;

/// What the Shortcuts pane shows, and what its controls do. Everything follows the preferences, the registrations of the
/// hot keys and the recorder.
class ShortcutSettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QQmlListProperty<velmorand::ShortcutSection> sections READ sectionList CONSTANT)

public:
    /// `recorder` must outlive the model.
    ShortcutSettingsModel(std::shared_ptr<PreferencesStore> preferencesStore,
                          std::shared_ptr<ShortcutManager> shortcutManager, ShortcutRecorderPanel& recorder,
                          QObject* parent = nullptr);
    ~ShortcutSettingsModel() override;

    /// One for each group of actions, in their order. They live as long as the model.
    [[nodiscard]] const QList<ShortcutSection*>& sections() const { return sections_; }
    [[nodiscard]] QQmlListProperty<ShortcutSection> sectionList() { return {this, &sections_}; }

    /// Gives every action its default shortcut.
    Q_INVOKABLE void resetDefaults();

private:
    void makeSections();
    void update();
    void showRecordedAction();
    [[nodiscard]] QString problemOf(WindowAction action) const;
    [[nodiscard]] QString conflictOf(WindowAction action) const;

    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<ShortcutManager> shortcutManager_;
    ShortcutRecorderPanel& recorder_;
    QList<ShortcutSection*> sections_;
    Subscription preferences_;
    Subscription registrationIssues_;
    Subscription recordedAction_;
};

}  // namespace velmorand

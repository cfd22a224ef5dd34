#include "settings/ShortcutSettingsModel.h"

#include "preferences/PreferencesStore.h"
#include "settings/QtText.h"
#include "settings/TranslatedText.h"
#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderPanel.h"

#include <utility>

namespace velmorand {

ShortcutSettingsModel::ShortcutSettingsModel(std::shared_ptr<PreferencesStore> preferencesStore,
                                             std::shared_ptr<ShortcutManager> shortcutManager,
                                             ShortcutRecorderPanel& recorder, QObject* parent)
    : QObject(parent),
      preferencesStore_(std::move(preferencesStore)),
      shortcutManager_(std::move(shortcutManager)),
      recorder_(recorder),
      preferences_(preferencesStore_->state().subscribe([this](const PreferencesState&) { update(); })),
      registrationIssues_(shortcutManager_->registrationIssuesByAction().subscribe([this](const auto&) { update(); })),
      recordedAction_(recorder.recordedAction().subscribe([this](const auto&) { showRecordedAction(); })) {
    makeSections();
    update();
    showRecordedAction();
}

ShortcutSettingsModel::~ShortcutSettingsModel() = default;

void ShortcutSettingsModel::makeSections() {
    const auto record = [this](WindowAction action) { recorder_.open(action, preferencesStore_); };
    for (const WindowActionGroup group : allWindowActionGroups)
        sections_.append(new ShortcutSection(group, record, this));
}

void ShortcutSettingsModel::resetDefaults() {
    preferencesStore_->resetAllShortcuts();
}

void ShortcutSettingsModel::update() {
    for (const ShortcutSection* section : std::as_const(sections_)) {
        for (ShortcutRow* row : section->rows()) {
            row->setShortcut(preferencesStore_->effectiveShortcut(row->action()));
            row->setProblem(problemOf(row->action()));
        }
    }
}

void ShortcutSettingsModel::showRecordedAction() {
    const auto recorded = recorder_.recordedAction().value();
    for (const ShortcutSection* section : std::as_const(sections_)) {
        for (ShortcutRow* row : section->rows()) row->setBeingRecorded(recorded == row->action());
    }
}

/// A conflict comes first: the user can mend it here, and a shortcut in conflict is not registered in any case. What the
/// system said about an earlier registration may come from before the conflict.
QString ShortcutSettingsModel::problemOf(WindowAction action) const {
    QString conflict = conflictOf(action);
    if (!conflict.isEmpty()) return conflict;
    const auto& issues = shortcutManager_->registrationIssuesByAction().value();
    const auto issue = issues.find(action);
    return issue == issues.end() ? QString() : toQString(issue->second);
}

QString ShortcutSettingsModel::conflictOf(WindowAction action) const {
    const auto shortcut = preferencesStore_->effectiveShortcut(action);
    if (!shortcut) return {};
    const auto others =
        preferencesStore_->conflictingActions(shortcut->hotKey.keyCode, shortcut->hotKey.modifiers, action);
    return others.empty() ? QString() : tr("Conflicts with %1").arg(titlesOf(others));
}

}  // namespace velmorand

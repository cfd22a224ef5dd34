#include "settings/SettingsModel.h"

#include "platform/Workspace.h"
#include "settings/Contact.h"
#include "settings/QtText.h"
#include "settings/SettingsPane.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QVariantMap>
#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

const SettingsPaneDescription* paneNamed(const QString& rawValue) {
    const auto found = std::ranges::find_if(
        settingsPanes, [&](const SettingsPaneDescription& pane) { return toQString(pane.rawValue) == rawValue; });
    return found == settingsPanes.end() ? nullptr : found;
}

}  // namespace

SettingsModel::SettingsModel(const SettingsServices& services, const SettingsPlatform& platform,
                             SettingsFailureHandler onFailure, QObject* parent)
    : QObject(parent),
      workspace_(platform.workspace),
      onFailure_(std::make_shared<SettingsFailureHandler>(std::move(onFailure))),
      information_(platform.bundle),
      general_(services, platform),
      shortcuts_(services.preferencesStore, services.shortcutManager, platform.shortcutRecorderPanel),
      applicationChooser_(platform.workspace, platform.runLoop),
      ignoredApps_(services.preferencesStore, platform.workspace, platform.bundle, applicationChooser_),
      selectedPane_(toQString(settingsPanes.front().rawValue)) {}

SettingsModel::~SettingsModel() = default;

QVariantList SettingsModel::panes() const {
    QVariantList list;
    for (const SettingsPaneDescription& pane : settingsPanes) {
        list.append(QVariantMap{
            {QStringLiteral("rawValue"), toQString(pane.rawValue)},
            {QStringLiteral("title"), QCoreApplication::translate("SettingsPane", std::string(pane.title).c_str())},
            {QStringLiteral("symbol"), toQString(pane.symbol)},
        });
    }
    return list;
}

void SettingsModel::setSelectedPane(const QString& rawValue) {
    if (rawValue == selectedPane_ || paneNamed(rawValue) == nullptr) return;
    selectedPane_ = rawValue;
    Q_EMIT selectedPaneChanged();
}

QString SettingsModel::selectedView() const {
    return toQString(paneNamed(selectedPane_)->view);
}

void SettingsModel::becameActive() {
    if (paneNamed(selectedPane_)->pane == SettingsPane::ignoredApps) ignoredApps_.refresh();
}

/// The answer may come when the window is no longer there.
void SettingsModel::writeToSupport() {
    if (std::exchange(*isWritingToSupport_, true)) return;
    workspace_.openURL(fmt::format("mailto:{}", contactAddress), [weakHandler = std::weak_ptr(onFailure_),
                                                                  isWriting = isWritingToSupport_](bool opened) {
        *isWriting = false;
        const auto handler = weakHandler.lock();
        if (opened || !handler || !*handler) return;
        (*handler)(fmt::format("No mail program could be opened. Please write to {}.", contactAddress));
    });
}

}  // namespace velmorand

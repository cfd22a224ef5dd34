#include "settings/SettingsModel.h"

#include "platform/Workspace.h"
#include "settings/Contact.h"
#include "settings/SettingsPane.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QVariantMap>
#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

SettingsModel::SettingsModel(const SettingsServices& services, const SettingsPlatform& platform,
                             SettingsFailureHandler onFailure, QObject* parent)
    : QObject(parent),
      workspace_(platform.workspace),
      onFailure_(std::make_shared<SettingsFailureHandler>(std::move(onFailure))),
      information_(platform.bundle),
      general_(services, platform),
      selectedPane_(toQString(settingsPanes.front().rawValue)) {}

SettingsModel::~SettingsModel() = default;

QVariantList SettingsModel::panes() const {
    QVariantList list;
    for (const SettingsPaneDescription& pane : settingsPanes) {
        list.append(QVariantMap{
            {QStringLiteral("rawValue"), toQString(pane.rawValue)},
            {QStringLiteral("title"), QCoreApplication::translate("SettingsPane", pane.title.data())},
            {QStringLiteral("symbol"), toQString(pane.symbol)},
        });
    }
    return list;
}

void SettingsModel::setSelectedPane(const QString& rawValue) {
    const bool isPane = std::ranges::any_of(
        settingsPanes, [&](const SettingsPaneDescription& pane) { return toQString(pane.rawValue) == rawValue; });
    if (!isPane || rawValue == selectedPane_) return;
    selectedPane_ = rawValue;
    Q_EMIT selectedPaneChanged();
}

/// The answer may come when the window is no longer there.
void SettingsModel::writeToSupport() {
    workspace_.openURL(
        fmt::format("mailto:{}", contactAddress), [weakHandler = std::weak_ptr(onFailure_)](bool opened) {
            const auto handler = weakHandler.lock();
            if (opened || !handler || !*handler) return;
            (*handler)(fmt::format("No mail program could be opened. Please write to {}.", contactAddress));
        });
}

}  // namespace velmorand

#include "settings/SettingsModule.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <array>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

/// Relative to the folder of the executable: in the build tree, and installed.
constexpr std::array<const char*, 2> moduleFolders{"lib/velmorand", VELMORAND_MODULE_FOLDER};
constexpr const char* moduleFile = "libvelmorand_settings.so";

/// Where the module is; when it is nowhere, where it should be.
QString modulePath() {
    const QDir program(QCoreApplication::applicationDirPath());
    QString path;
    for (const char* folder : moduleFolders) {
        path = QDir::cleanPath(program.filePath(QLatin1StringView(folder) + u'/' + QLatin1StringView(moduleFile)));
        if (QFile::exists(path)) break;
    }
    return path;
}

}  // namespace

std::expected<std::unique_ptr<SettingsWindow>, std::string> makeSettingsWindowOfModule(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure) {
    QLibrary module(modulePath());
    module.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    if (!module.load()) return std::unexpected(module.errorString().toStdString());
    const auto* entry = reinterpret_cast<const SettingsModuleEntry*>(module.resolve(settingsModuleSymbol));
    if (entry == nullptr) return std::unexpected(module.errorString().toStdString());
    if (entry->build != std::string_view(VELMORAND_BUILD_STAMP)) {
        return std::unexpected(
            fmt::format("{} is of another build than the running program, which must be started anew.",
                        module.fileName().toStdString()));
    }
    return entry->make(services, platform, std::move(onFailure));
}

}  // namespace velmorand

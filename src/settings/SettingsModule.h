#pragma once

#include "settings/SettingsWindow.h"

namespace velmorand {

using SettingsModuleMaker = std::expected<std::unique_ptr<SettingsWindow>, std::string> (*)(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure);

/// What the module exports, under the name `settingsModuleSymbol`.
struct SettingsModuleEntry {
    /// Of which build the module is. It comes first in every build: where it is not the executable's own, nothing else here
    /// may be used.
    const char* build;
    SettingsModuleMaker make;
};
inline constexpr const char* settingsModuleSymbol = "velmorandSettingsModule";

/// Loads the module that has the settings window, once and for the rest of the process, and has it make the window.
/// Nothing of it, nor of what it is drawn with, is in the process before. The module is looked for where the build puts
/// it beside the executable, and where it is installed. A module of another build, as after an update under the running
/// program, is refused.
[[nodiscard]] std::expected<std::unique_ptr<SettingsWindow>, std::string> makeSettingsWindowOfModule(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure);

}  // namespace velmorand

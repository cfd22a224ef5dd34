#pragma once

#include "settings/SettingsWindow.h"

namespace velmorand {

/// The function that the module exports under this name.
inline constexpr const char* settingsModuleSymbol = "velmorandSettingsWindowMaker";
using SettingsModuleMaker = std::expected<std::unique_ptr<SettingsWindow>, std::string> (*)(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure);

/// Loads the module that has the settings window, once and for the rest of the process, and has it make the window.
/// Nothing of it, nor of what it is drawn with, is in the process before. The module is looked for where the build puts
/// it beside the executable, and where it is installed.
[[nodiscard]] std::expected<std::unique_ptr<SettingsWindow>, std::string> makeSettingsWindowOfModule(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure);

}  // namespace velmorand

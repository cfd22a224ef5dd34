#include "platform/linux/AccessibilitySettings.h"

#include "platform/linux/DetachedProcess.h"

#include <array>
#include <utility>

namespace velmorand {
namespace {

constexpr std::array<SettingsCommand, 1> gnome{{{"gnome-control-center", "universal-access"}}};
/// The name with the version is the older one; the shells show a single page where the whole is not installed.
constexpr std::array<SettingsCommand, 4> kde{{{"systemsettings", "kcm_access"},
                                              {"systemsettings5", "kcm_access"},
                                              {"kcmshell6", "kcm_access"},
                                              {"kcmshell5", "kcm_access"}}};
constexpr std::array<SettingsCommand, 1> xfce{{{"xfce4-accessibility-settings", ""}}};
constexpr std::array<SettingsCommand, 1> mate{{{"mate-at-properties", ""}}};
constexpr std::array<SettingsCommand, 1> cinnamon{{{"cinnamon-settings", "universal-access"}}};

std::string programNames(std::span<const SettingsCommand> commands) {
    std::string names;
    for (const SettingsCommand& command : commands) {
        if (!names.empty()) names += ", ";
        names += command.program;
    }
    return names;
}

}  // namespace

std::span<const SettingsCommand> accessibilitySettingsCommands(DesktopEnvironment desktop) {
    switch (desktop) {
        case DesktopEnvironment::gnome: return gnome;
        case DesktopEnvironment::kde: return kde;
        case DesktopEnvironment::xfce: return xfce;
        case DesktopEnvironment::mate: return mate;
        case DesktopEnvironment::cinnamon: return cinnamon;
    }
    std::unreachable();
}

void AccessibilitySettings::open() const {
    const std::string names = currentDesktopNames();
    const auto desktop = desktopEnvironmentNamedIn(names);
    if (!desktop) {
        logger_.info("No accessibility settings to open: XDG_CURRENT_DESKTOP is \"{}\", which names none of {}.", names,
                     knownDesktopEnvironments());
        return;
    }
    const auto commands = accessibilitySettingsCommands(*desktop);
    for (const SettingsCommand& command : commands) {
        const auto program = findProgram(std::string(command.program));
        if (!program) continue;
        std::vector<std::string> arguments;
        if (!command.page.empty()) arguments.emplace_back(command.page);
        const auto started = startDetached(*program, arguments);
        if (!started) logger_.error("Cannot start {}: {}", program->native(), started.error().message());
        return;
    }
    logger_.error("Cannot open the accessibility settings: not found in PATH: {}", programNames(commands));
}

}  // namespace velmorand

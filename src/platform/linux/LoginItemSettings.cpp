#include "platform/linux/LoginItemSettings.h"

#include <array>
#include <utility>

namespace velmorand {
namespace {

/// The desktop's own settings have no such page; some distributions add the first program, many users the second.
constexpr std::array<SettingsCommand, 2> gnome{{{"gnome-session-properties", ""}, {"gnome-tweaks", ""}}};
/// The name with the version is the older one; the shells show a single page where the whole is not installed.
constexpr std::array<SettingsCommand, 4> kde{{{"systemsettings", "kcm_autostart"},
                                              {"systemsettings5", "kcm_autostart"},
                                              {"kcmshell6", "kcm_autostart"},
                                              {"kcmshell5", "kcm_autostart"}}};
constexpr std::array<SettingsCommand, 1> xfce{{{"xfce4-session-settings", ""}}};
constexpr std::array<SettingsCommand, 1> mate{{{"mate-session-properties", ""}}};
constexpr std::array<SettingsCommand, 1> cinnamon{{{"cinnamon-settings", "startup"}}};
constexpr std::array<SettingsCommand, 1> lxqt{{{"lxqt-config-session", ""}}};

}  // namespace

std::span<const SettingsCommand> loginItemSettingsCommands(DesktopEnvironment desktop) {
    switch (desktop) {
        case DesktopEnvironment::gnome: return gnome;
        case DesktopEnvironment::kde: return kde;
        case DesktopEnvironment::xfce: return xfce;
        case DesktopEnvironment::mate: return mate;
        case DesktopEnvironment::cinnamon: return cinnamon;
        case DesktopEnvironment::lxqt: return lxqt;
    }
    std::unreachable();
}

}  // namespace velmorand

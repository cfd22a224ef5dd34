#include "platform/linux/AccessibilitySettings.h"

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

}  // namespace

std::span<const SettingsCommand> accessibilitySettingsCommands(DesktopEnvironment desktop) {
    switch (desktop) {
        case DesktopEnvironment::gnome: return gnome;
        case DesktopEnvironment::kde: return kde;
        case DesktopEnvironment::xfce: return xfce;
        case DesktopEnvironment::mate: return mate;
        case DesktopEnvironment::cinnamon: return cinnamon;
        case DesktopEnvironment::lxqt: return {};
    }
    std::unreachable();
}

}  // namespace velmorand

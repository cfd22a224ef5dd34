#include "platform/linux/DesktopEnvironment.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ranges>

namespace velmorand {
namespace {

constexpr auto rows = std::to_array<NamedDesktopEnvironment>({{"GNOME", DesktopEnvironment::gnome},
                                                              {"KDE", DesktopEnvironment::kde},
                                                              {"XFCE", DesktopEnvironment::xfce},
                                                              {"MATE", DesktopEnvironment::mate},
                                                              {"X-Cinnamon", DesktopEnvironment::cinnamon},
                                                              {"LXQt", DesktopEnvironment::lxqt}});

}  // namespace

std::span<const NamedDesktopEnvironment> desktopEnvironments() {
    return rows;
}

std::optional<DesktopEnvironment> desktopEnvironmentNamedIn(std::string_view names) {
    for (const auto part : std::views::split(names, ':')) {
        const auto* const row = std::ranges::find(rows, std::string_view(part), &NamedDesktopEnvironment::name);
        if (row != rows.end()) return row->desktop;
    }
    return std::nullopt;
}

std::string currentDesktopNames() {
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    return names == nullptr ? "" : names;
}

}  // namespace velmorand

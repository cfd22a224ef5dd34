#include "platform/linux/DesktopEnvironment.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ranges>

namespace velmorand {
namespace {

struct Row {
    std::string_view name;
    DesktopEnvironment desktop;
};

constexpr auto rows = std::to_array<Row>({{"GNOME", DesktopEnvironment::gnome},
                                          {"KDE", DesktopEnvironment::kde},
                                          {"XFCE", DesktopEnvironment::xfce},
                                          {"MATE", DesktopEnvironment::mate},
                                          {"X-Cinnamon", DesktopEnvironment::cinnamon}});

}  // namespace

std::optional<DesktopEnvironment> desktopEnvironmentNamedIn(std::string_view names) {
    for (const auto part : std::views::split(names, ':')) {
        const auto* const row = std::ranges::find(rows, std::string_view(part), &Row::name);
        if (row != rows.end()) return row->desktop;
    }
    return std::nullopt;
}

std::string knownDesktopEnvironments() {
    std::string names;
    for (const Row& row : rows) {
        if (!names.empty()) names += ", ";
        names += row.name;
    }
    return names;
}

std::string currentDesktopNames() {
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    return names == nullptr ? "" : names;
}

}  // namespace velmorand

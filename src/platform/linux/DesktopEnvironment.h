#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace velmorand {

/// A desktop environment whose settings we know our way in.
enum class DesktopEnvironment : std::uint8_t { gnome, kde, xfce, mate, cinnamon, lxqt };

/// One of them with the name that XDG_CURRENT_DESKTOP has for it.
struct NamedDesktopEnvironment {
    std::string_view name;
    DesktopEnvironment desktop;
};

/// All that are known.
[[nodiscard]] std::span<const NamedDesktopEnvironment> desktopEnvironments();

/// The first known one of the registered names, which colons separate as in XDG_CURRENT_DESKTOP; absent when none is
/// known. Case counts.
[[nodiscard]] std::optional<DesktopEnvironment> desktopEnvironmentNamedIn(std::string_view names);

/// What XDG_CURRENT_DESKTOP holds; empty when it is not set.
[[nodiscard]] std::string currentDesktopNames();

}  // namespace velmorand

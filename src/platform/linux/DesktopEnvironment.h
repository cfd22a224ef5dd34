#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// A desktop environment whose settings we know our way in.
enum class DesktopEnvironment : std::uint8_t { gnome, kde, xfce, mate, cinnamon };

/// The first known one of the registered names, which colons separate as in XDG_CURRENT_DESKTOP; absent when none is
/// known. Case counts.
[[nodiscard]] std::optional<DesktopEnvironment> desktopEnvironmentNamedIn(std::string_view names);

/// The registered names of all that are known, for the user: "GNOME, KDE, …".
[[nodiscard]] std::string knownDesktopEnvironments();

/// What XDG_CURRENT_DESKTOP holds; empty when it is not set.
[[nodiscard]] std::string currentDesktopNames();

}  // namespace velmorand

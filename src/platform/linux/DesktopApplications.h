#pragma once

#include "platform/InstalledApplication.h"
#include "platform/linux/DesktopEntries.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// The installed applications of a session. A location is the file of a desktop entry.
class DesktopApplications {
public:
    explicit DesktopApplications(DesktopEntries entries) : entries_(std::move(entries)) {}

    /// As in `Workspace`. What runs in a terminal has no windows of its own.
    [[nodiscard]] std::optional<std::filesystem::path> withIdentifier(std::string_view identifier);
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) const;
    [[nodiscard]] std::optional<ApplicationIcon> icon(const std::filesystem::path& location) const;

    /// For an entry that is not in the session's folders this is the identifier of the application that it starts, as
    /// far as the entry tells.
    [[nodiscard]] std::optional<std::string> identifier(const std::filesystem::path& location);

    /// Those that the menus of the desktop list.
    [[nodiscard]] std::vector<InstalledApplication> listed();

private:
    DesktopEntries entries_;
};

}  // namespace velmorand

#include "platform/linux/DesktopApplications.h"

#include "base/UnicodeText.h"
#include "platform/linux/ApplicationIdentity.h"

#include <system_error>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

std::string nameOf(const DesktopEntry& entry) {
    return entry.name.value_or(entry.id);
}

std::optional<ApplicationIcon> iconOf(const DesktopEntry& entry) {
    if (!entry.icon) return std::nullopt;
    if (!entry.icon->starts_with('/')) return ApplicationIcon{ApplicationIcon::Source::theme, *entry.icon};
    std::error_code error;
    if (!fs::is_regular_file(*entry.icon, error)) return std::nullopt;
    return ApplicationIcon{ApplicationIcon::Source::file, *entry.icon};
}

}  // namespace

std::optional<fs::path> DesktopApplications::withIdentifier(std::string_view identifier) {
    const DesktopEntry* entry = entries_.byID(identifier);
    return entry == nullptr ? std::nullopt : std::optional(entry->path);
}

std::string DesktopApplications::displayName(const fs::path& location) const {
    if (const auto entry = entries_.inFile(location)) return nameOf(*entry);
    const std::string name = location.extension() == ".desktop" ? location.stem() : location.filename();
    return name.empty() ? validUtf8(location.string()) : validUtf8(name);
}

std::optional<ApplicationIcon> DesktopApplications::icon(const fs::path& location) const {
    return entries_.inFile(location).and_then(iconOf);
}

std::optional<std::string> DesktopApplications::identifier(const fs::path& location) {
    const auto entry = entries_.inFile(location);
    if (!entry || entry->runsInTerminal) return std::nullopt;
    std::string found = entries_.covers(location) ? entry->id : identifierOfEntryElsewhere(*entry, entries_);
    return isApplicationIdentifier(found) ? std::optional(std::move(found)) : std::nullopt;
}

std::vector<InstalledApplication> DesktopApplications::listed() {
    std::vector<InstalledApplication> applications;
    for (const DesktopEntry& entry : entries_.listed()) {
        if (isApplicationIdentifier(entry.id))
            applications.push_back({entry.path, entry.id, nameOf(entry), iconOf(entry)});
    }
    return applications;
}

}  // namespace velmorand

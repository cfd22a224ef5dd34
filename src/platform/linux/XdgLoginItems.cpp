#include "platform/linux/XdgLoginItems.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/BaseFolders.h"
#include "platform/linux/DesktopEntryText.h"
#include "platform/linux/DetachedProcess.h"
#include "platform/linux/LoginItemSettings.h"
#include "platform/linux/RunningExecutable.h"
#include "platform/linux/StoredFile.h"

#include <fmt/format.h>

#include <cerrno>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using Outcome = std::expected<void, LoginItemError>;

/// No entry comes near it.
constexpr std::size_t largestEntry = 1U << 20U;

std::unexpected<LoginItemError> failure(std::string description) {
    return std::unexpected(LoginItemError{std::move(description)});
}

std::unexpected<LoginItemError> inTheWay(const fs::path& file) {
    std::error_code error;
    if (fs::is_directory(file, error)) return failure(fmt::format("{} is a folder.", file.native()));
    return failure(fmt::format("{} cannot be read as a desktop entry and was left as it is.", file.native()));
}

/// What is there at this path, or else the nearest above it, without links and detours.
fs::path nearest(fs::path path) {
    std::error_code error;
    while (path.has_relative_path() && !fs::exists(path, error)) path = path.parent_path();
    const fs::path plain = fs::canonical(path, error);
    return error ? path : plain;
}

fs::path folderAt(const fs::path& path) {
    const fs::path found = nearest(path);
    std::error_code error;
    return fs::is_directory(found, error) ? found : found.parent_path();
}

/// The sentence for the user about a file that could not be changed.
Outcome told(const std::expected<void, StoredFileError>& outcome, const fs::path& file) {
    if (outcome) return {};
    const std::error_code code = outcome.error().code;
    const fs::path& failed = outcome.error().path;
    if (code == std::errc::no_space_on_device || code == std::error_code(EDQUOT, std::generic_category()))
        return failure(fmt::format("There is no space left for {}.", file.native()));
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
        code == std::errc::read_only_file_system)
        return failure(fmt::format("Nothing in the folder {} may be changed.", folderAt(failed).native()));
    if (code == std::errc::not_a_directory)
        return failure(fmt::format("{} is not a folder.", nearest(failed).native()));
    return failure(outcome.error().description + ".");
}

/// The text of the file in the first of the folders that has it; empty when none has it or it cannot be read.
std::string textOfFirst(std::span<const fs::path> folders, const fs::path& file) {
    for (const fs::path& folder : folders) {
        const auto read = readStoredFile(folder / file, largestEntry);
        if (!read) return {};
        if (const std::optional<std::string>& text = *read) return *text;
    }
    return {};
}

bool isThere(const std::optional<std::string>& program) {
    return program && findProgram(*program);
}

}  // namespace

LoginItemPlaces LoginItemPlaces::ofSession() {
    constexpr const char* name = "autostart";
    LoginItemPlaces places{runningExecutable(), configurationFolder(name), systemConfigurationFolders(),
                           velmorand::dataFolders()};
    for (fs::path& folder : places.systemFolders) folder /= name;
    return places;
}

XdgLoginItems::XdgLoginItems(std::string_view identifier, LoginItemPlaces places, const LoginItemSettings& settings)
    : identifier_(identifier), fileName_(identifier_ + ".desktop"), places_(std::move(places)), settings_(settings) {}

XdgLoginItems::Entry XdgLoginItems::entryOf(std::string_view text) {
    const AutostartEntry entry = parseAutostartEntry(text);
    if (entry.isSwitchedOff) return entry.isUnregistered ? Entry::isUnregistered : Entry::isSwitchedOff;
    if (!entry.isApplication) return Entry::isUnknown;
    const bool starts = isThere(entry.program) && (!entry.tryExec || isThere(entry.tryExec));
    return starts ? Entry::starts : Entry::lacksItsProgram;
}

XdgLoginItems::Entry XdgLoginItems::usersEntry() const {
    const auto read = readStoredFile(usersFile(), largestEntry);
    if (!read) return Entry::isUnknown;
    if (const std::optional<std::string>& text = *read) return entryOf(*text);
    std::error_code error;
    return fs::is_symlink(usersFile(), error) ? Entry::isUnknown : Entry::none;  // a link that leads nowhere
}

bool XdgLoginItems::isStartedBySystem() const {
    return entryOf(textOfFirst(places_.systemFolders, fileName_)) == Entry::starts;
}

bool XdgLoginItems::isInstalled() const {
    const DesktopEntryValues values =
        desktopEntryValues(textOfFirst(places_.dataFolders, fs::path("applications") / fileName_));
    const auto tryExec = desktopEntryValue(values, "TryExec").transform(unescapedValue);
    return desktopEntryValue(values, "Type") == "Application" && desktopEntryValue(values, "Hidden") != "true" &&
           (!tryExec || isThere(tryExec));
}

LoginItemStatus XdgLoginItems::status() {
    switch (usersEntry()) {
        case Entry::starts: return LoginItemStatus::enabled;
        case Entry::isSwitchedOff: return LoginItemStatus::requiresApproval;
        case Entry::isUnknown: return LoginItemStatus::other;
        case Entry::none:
            if (isStartedBySystem()) return LoginItemStatus::enabled;
            break;
        case Entry::isUnregistered:
        case Entry::lacksItsProgram: break;
    }
    return isInstalled() ? LoginItemStatus::notRegistered : LoginItemStatus::notFound;
}

Outcome XdgLoginItems::registerItem() {
    const LoginItemStatus before = status();
    if (before == LoginItemStatus::enabled) return {};
    if (before == LoginItemStatus::other) return inTheWay(usersFile());
    if (!isInstalled()) return failure("This copy of Velmorand is not installed.");
    const auto exec = execValueFor(places_.executable);
    if (!exec)
        return failure("The path of this copy of Velmorand has characters with which it cannot be started at log-in.");
    if (!findProgram(places_.executable.native()))
        return failure(fmt::format("There is no program at {} any more.", places_.executable.native()));
    const std::string entry = registeringEntry(identifier_, places_.executable.native(), *exec);
    return told(storeFile(usersFile(), entry), usersFile());
}

Outcome XdgLoginItems::unregisterItem() {
    const Entry entry = usersEntry();
    if (entry == Entry::isUnknown) return inTheWay(usersFile());
    if (entry == Entry::isUnregistered) return {};
    if (isStartedBySystem())
        return told(storeFile(usersFile(), unregisteringEntry(), LinkInPlace::replace), usersFile());
    return told(removeStoredFile(usersFile()), usersFile());
}

void XdgLoginItems::openSystemSettingsLoginItems() {
    settings_.open();
}

}  // namespace velmorand

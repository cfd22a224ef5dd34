#include "platform/linux/DesktopEntries.h"

#include "base/UnicodeText.h"
#include "platform/linux/BaseFolders.h"
#include "platform/linux/DesktopEntryText.h"
#include "platform/linux/DesktopEnvironment.h"
#include "platform/linux/DetachedProcess.h"
#include "platform/linux/RegularFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ranges>
#include <system_error>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view suffix = ".desktop";

std::string environmentOr(const char* name, std::string fallback) {
    const char* value = std::getenv(name);
    return value == nullptr || *value == '\0' ? std::move(fallback) : value;
}

std::string_view lastPart(std::string_view text, char separator) {
    return text.substr(text.rfind(separator) + 1);  // npos + 1 is 0
}

/// The last part of the path of the program that is started.
std::optional<std::string> executableOf(std::string_view exec) {
    const std::string program = programOfExecValue(exec).value_or("");
    const std::string_view name = lastPart(program, '/');
    return name.empty() ? std::nullopt : std::optional(std::string(name));
}

std::vector<std::string> partsOf(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (const auto part : std::views::split(text, separator)) {
        if (!part.empty()) parts.emplace_back(part.begin(), part.end());
    }
    return parts;
}

/// The names in a value that is a list.
std::vector<std::string> namesIn(const std::optional<std::string>& value) {
    return partsOf(value.value_or(""), ';');
}

/// A name of a theme's icon has no ending, though many entries write one; a relative path leads nowhere.
std::optional<std::string> iconOf(std::string_view value) {
    constexpr std::array<std::string_view, 3> endings{".png", ".svg", ".xpm"};
    std::string icon = validUtf8(unescapedValue(value));
    if (hasControlCharacter(icon)) return std::nullopt;
    if (icon.starts_with('/')) return icon;
    const bool hasEnding =
        std::ranges::any_of(endings, [&](std::string_view ending) { return icon.ends_with(ending); });
    if (hasEnding) icon.resize(icon.size() - endings.front().size());
    return icon.empty() || icon.contains('/') ? std::nullopt : std::optional(std::move(icon));
}

std::string idOfRelative(const fs::path& relative) {
    std::string id = relative.string();
    id.resize(id.size() - suffix.size());
    std::ranges::replace(id, '/', '-');
    return id;
}

bool isThere(const std::optional<std::string>& program) {
    return !program || findProgram(*program);
}

/// "de_AT.UTF-8" gives "de_AT" and "de".
std::vector<std::string> sessionLocales() {
    const std::string whole = environmentOr("LC_ALL", environmentOr("LC_MESSAGES", environmentOr("LANG", "C")));
    const std::string locale = whole.substr(0, whole.find_first_of(".@"));
    if (locale == "C" || locale == "POSIX") return {};
    const std::string language = locale.substr(0, locale.find('_'));
    return language == locale ? std::vector{locale} : std::vector{locale, language};
}

/// When the folder last changed; the clock's beginning for one that is not there.
fs::file_time_type timeOf(const fs::path& folder) {
    std::error_code error;
    const auto time = fs::last_write_time(folder, error);
    return error ? fs::file_time_type{} : time;
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string id, std::string_view text,
                                              const std::vector<std::string>& locales) {
    const DesktopEntryValues values = desktopEntryValues(text);
    const auto value = [&](std::string_view key) { return desktopEntryValue(values, key); };
    if (value("Type") != "Application" || value("Hidden") == "true") return std::nullopt;

    DesktopEntry entry{std::move(id), value("Name").and_then(lineOfValue), value("StartupWMClass"),
                       value("Exec").and_then(executableOf), value("Icon").and_then(iconOf)};
    for (const std::string& locale : locales) {
        const auto localized = value("Name[" + locale + "]").and_then(lineOfValue);
        if (!localized) continue;
        entry.name = localized;
        break;
    }
    entry.listing = {.isHiddenInMenus = value("NoDisplay") == "true",
                     .onlyIn = namesIn(value("OnlyShowIn")),
                     .notIn = namesIn(value("NotShowIn")),
                     .neededProgram = value("TryExec").transform(unescapedValue)};
    entry.runsInTerminal = value("Terminal") == "true";
    return entry;
}

bool isListedIn(const DesktopEntryListing& listing, const std::vector<std::string>& desktops) {
    if (listing.isHiddenInMenus) return false;
    for (const std::string& desktop : desktops) {
        if (std::ranges::count(listing.onlyIn, desktop) > 0) return true;
        if (std::ranges::count(listing.notIn, desktop) > 0) return false;
    }
    return listing.onlyIn.empty();
}

DesktopEntries::DesktopEntries(std::vector<fs::path> folders, std::vector<std::string> locales,
                               std::vector<std::string> desktops)
    : folders_(std::move(folders)), locales_(std::move(locales)), desktops_(std::move(desktops)) {}

DesktopEntries DesktopEntries::ofSession() {
    return {dataFolders(), sessionLocales(), partsOf(currentDesktopNames(), ':')};
}

bool DesktopEntries::isCurrent() const {
    return read_ && std::ranges::all_of(times_, [](const auto& entry) { return timeOf(entry.first) == entry.second; });
}

void DesktopEntries::refresh() {
    if (isCurrent()) return;
    entries_.clear();
    ids_.clear();
    times_.clear();
    for (const fs::path& folder : folders_) readFolder(folder / "applications");
    read_ = true;
}

void DesktopEntries::readFolder(const fs::path& folder) {
    times_.emplace_back(folder, timeOf(folder));
    std::error_code error;
    fs::recursive_directory_iterator files(folder, fs::directory_options::skip_permission_denied, error);
    for (const fs::recursive_directory_iterator end; !error && files != end; files.increment(error)) {
        std::error_code entryError;
        if (files->is_directory(entryError)) times_.emplace_back(files->path(), timeOf(files->path()));
        if (files->path().extension() == suffix) readEntry(folder, files->path());
    }
}

void DesktopEntries::readEntry(const fs::path& folder, const fs::path& path) {
    const std::string id = idOfRelative(path.lexically_relative(folder));
    if (!ids_.insert(id).second) return;
    auto entry = parseDesktopEntry(id, readRegularFile(path), locales_);
    if (!entry) return;
    entry->path = path;
    entries_.emplace(id, std::move(*entry));
}

bool DesktopEntries::canBeChosen(const DesktopEntry& entry) const {
    return isListedIn(entry.listing, desktops_) && !entry.runsInTerminal;
}

template <typename Matches>
const DesktopEntry* DesktopEntries::find(const Matches& matches) {
    refresh();
    const DesktopEntry* unlisted = nullptr;
    for (const auto& [id, entry] : entries_) {
        if (!matches(entry)) continue;
        if (canBeChosen(entry)) return &entry;
        if (unlisted == nullptr) unlisted = &entry;
    }
    return unlisted;
}

const DesktopEntry* DesktopEntries::byID(std::string_view id) {
    refresh();
    const auto found = entries_.find(id);
    return found == entries_.end() ? nullptr : &found->second;
}

const DesktopEntry* DesktopEntries::byStartupWMClass(std::string_view windowClass) {
    if (const DesktopEntry* exact =
            find([&](const DesktopEntry& entry) { return entry.startupWMClass == windowClass; }))
        return exact;
    const std::string lowered = lowerCased(windowClass);
    return find([&](const DesktopEntry& entry) {
        return entry.startupWMClass && lowerCased(*entry.startupWMClass) == lowered;
    });
}

const DesktopEntry* DesktopEntries::byBaseName(std::string_view name) {
    const std::string lowered = lowerCased(name);
    if (const DesktopEntry* whole = find([&](const DesktopEntry& entry) { return lowerCased(entry.id) == lowered; }))
        return whole;
    return find([&](const DesktopEntry& entry) { return lowerCased(lastPart(entry.id, '.')) == lowered; });
}

const DesktopEntry* DesktopEntries::byExecutable(std::string_view executable) {
    return find([&](const DesktopEntry& entry) { return entry.executable == executable; });
}

std::vector<DesktopEntry> DesktopEntries::listed() {
    refresh();
    std::vector<DesktopEntry> found;
    for (const auto& [id, entry] : entries_) {
        if (canBeChosen(entry) && isThere(entry.listing.neededProgram)) found.push_back(entry);
    }
    return found;
}

std::optional<DesktopEntry> DesktopEntries::inFile(const fs::path& file) const {
    if (file.extension() != suffix) return std::nullopt;
    auto entry = parseDesktopEntry(idOf(file).value_or(file.stem().string()), readRegularFile(file), locales_);
    if (entry) entry->path = file;
    return entry;
}

std::optional<std::string> DesktopEntries::idOf(const fs::path& file) const {
    if (file.extension() != suffix) return std::nullopt;
    for (const fs::path& folder : folders_) {
        const fs::path relative =
            file.lexically_normal().lexically_relative((folder / "applications").lexically_normal());
        if (!relative.empty() && *relative.begin() != "..") return idOfRelative(relative);
    }
    return std::nullopt;
}

}  // namespace velmorand

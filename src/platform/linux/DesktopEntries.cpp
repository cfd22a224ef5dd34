#include "platform/linux/DesktopEntries.h"

#include "base/UnicodeText.h"
#include "platform/linux/BaseFolders.h"
#include "platform/linux/DesktopEntryText.h"
#include "platform/linux/RegularFile.h"

#include <algorithm>
#include <cstdlib>
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

    DesktopEntry entry{std::move(id), value("Name"), value("StartupWMClass"), value("Exec").and_then(executableOf)};
    for (const std::string& locale : locales) {
        const auto localized = value("Name[" + locale + "]");
        if (!localized) continue;
        entry.name = localized;
        break;
    }
    return entry;
}

DesktopEntries::DesktopEntries(std::vector<fs::path> folders, std::vector<std::string> locales)
    : folders_(std::move(folders)), locales_(std::move(locales)) {}

DesktopEntries DesktopEntries::ofSession() {
    return {dataFolders(), sessionLocales()};
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
    std::string id = path.lexically_relative(folder).string();
    id.resize(id.size() - suffix.size());
    std::ranges::replace(id, '/', '-');
    if (!ids_.insert(id).second) return;
    if (auto entry = parseDesktopEntry(id, readRegularFile(path), locales_)) entries_.emplace(id, std::move(*entry));
}

template <typename Matches>
const DesktopEntry* DesktopEntries::find(const Matches& matches) {
    refresh();
    const auto found = std::ranges::find_if(entries_, [&](const auto& entry) { return matches(entry.second); });
    return found == entries_.end() ? nullptr : &found->second;
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

}  // namespace velmorand

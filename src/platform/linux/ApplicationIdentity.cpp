#include "platform/linux/ApplicationIdentity.h"

#include "base/UnicodeText.h"
#include "platform/linux/RegularFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ranges>
#include <system_error>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view suffix = ".desktop";

/// Programs that run others: their own name says nothing of the application.
constexpr std::array<std::string_view, 8> interpreters{"python", "node", "nodejs",   "java",
                                                       "wine",   "perl", "electron", "ruby"};

/// Programs that start another one, which an entry names behind them.
constexpr std::array<std::string_view, 12> starters{"bash",      "dash", "env",  "flatpak", "gtk-launch",  "pkexec",
                                                    "prime-run", "sh",   "snap", "sudo",    "systemd-run", "xdg-open"};

constexpr std::size_t longestIdentifier = 256;

/// What the system puts behind the path of a program that was replaced while it runs.
constexpr std::string_view replacedMark = " (deleted)";

std::string_view withoutSuffix(std::string_view text, std::string_view ending) {
    return text.ends_with(ending) ? text.substr(0, text.size() - ending.size()) : text;
}

/// An interpreter may carry its version or its part: python3.11, wine64-preloader.
bool isInterpreter(std::string_view executable) {
    return std::ranges::count(interpreters, executable.substr(0, executable.find_first_of("0123456789.-"))) > 0;
}

/// systemd writes bytes that a unit name cannot hold as \xNN.
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned int byte = 0;
        const bool isEscape =
            text.substr(i).starts_with("\\x") && i + 4 <= text.size() &&
            std::from_chars(text.data() + i + 2, text.data() + i + 4, byte, 16).ptr == text.data() + i + 4;
        result += isEscape ? static_cast<char>(byte) : text[i];
        if (isEscape) i += 3;
    }
    return result;
}

std::optional<std::string> executableName(const fs::path& process) {
    std::error_code error;
    const fs::path program = fs::read_symlink(process / "exe", error);
    if (error) return std::nullopt;
    return std::string(withoutSuffix(program.filename().string(), replacedMark));
}

/// The id with or without its launcher in front: the longest reading that is known counts.
std::optional<std::string> knownEnding(std::string_view text, const std::function<bool(const std::string&)>& isKnown) {
    for (;;) {
        if (std::string id = unescaped(text); isKnown(id)) return id;
        const auto dash = text.find('-');
        if (dash == std::string_view::npos) return std::nullopt;
        text.remove_prefix(dash + 1);
    }
}

std::optional<std::string> applicationIDFromUnit(std::string_view unit,
                                                 const std::function<bool(const std::string&)>& isKnown) {
    constexpr std::string_view prefix = "app-";
    if (!unit.starts_with(prefix)) return std::nullopt;
    unit.remove_prefix(prefix.size());
    if (unit.ends_with(".service")) {
        unit = withoutSuffix(unit, ".service");
        return knownEnding(unit.substr(0, unit.find('@')), isKnown);
    }
    if (!unit.ends_with(".scope")) return std::nullopt;
    unit = withoutSuffix(unit, ".scope");
    if (auto id = knownEnding(unit.substr(0, unit.rfind('-')), isKnown)) return id;  // the last part may be random
    return knownEnding(unit, isKnown);
}

/// Tries the clues in order of their reliability.
class Search {
public:
    Search(const ApplicationClues& clues, DesktopEntries& entries, const fs::path& processes)
        : clues_(clues), entries_(entries) {
        if (clues.pid) process_ = processes / std::to_string(*clues.pid);
    }

    const DesktopEntry* entry() {
        if (const auto* found = declared()) return found;
        if (const auto* found = bySurroundings()) return found;
        if (const auto* found = byWindowClass(&DesktopEntries::byStartupWMClass)) return found;
        if (const auto* found = byWindowClass(&DesktopEntries::byBaseName)) return found;
        return byProgram();
    }

private:
    const DesktopEntry* declared() {
        if (clues_.declaredDesktopFile) {
            std::string_view file = *clues_.declaredDesktopFile;
            file = file.substr(file.rfind('/') + 1);
            if (const auto* found = entries_.byID(withoutSuffix(file, suffix))) return found;
        }
        return clues_.declaredApplicationID ? entries_.byID(*clues_.declaredApplicationID) : nullptr;
    }

    const DesktopEntry* bySurroundings() {
        if (!process_) return nullptr;
        const auto sandbox = applicationIDFromSandboxInformation(readRegularFile(*process_ / "root" / ".flatpak-info"));
        if (sandbox) {
            if (const auto* found = entries_.byID(*sandbox)) return found;
        }
        const auto unit =
            applicationIDFromControlGroup(readRegularFile(*process_ / "cgroup"),
                                          [this](const std::string& id) { return entries_.byID(id) != nullptr; });
        const DesktopEntry* found = unit ? entries_.byID(*unit) : nullptr;
        return found != nullptr && isStartedBy(*found) ? found : nullptr;
    }

    /// What a terminal or launcher starts runs in that program's unit and is another application all the same.
    [[nodiscard]] bool isStartedBy(const DesktopEntry& entry) const {
        const auto program = process_ ? executableName(*process_) : std::nullopt;
        return !program || isInterpreter(*program) || entry.executable == *program;
    }

    const DesktopEntry* byWindowClass(const DesktopEntry* (DesktopEntries::*lookUp)(std::string_view)) {
        for (const auto* text : {&clues_.windowClass, &clues_.windowInstance}) {
            if (!*text) continue;
            if (const auto* found = (entries_.*lookUp)(**text)) return found;
        }
        return nullptr;
    }

    const DesktopEntry* byProgram() {
        const auto program = process_ ? executableName(*process_) : std::nullopt;
        return program && !isInterpreter(*program) ? entries_.byExecutable(*program) : nullptr;
    }

    const ApplicationClues& clues_;
    DesktopEntries& entries_;
    std::optional<fs::path> process_;
};

}  // namespace

ApplicationIdentity identifyApplication(const ApplicationClues& clues, DesktopEntries& entries,
                                        const fs::path& processes) {
    if (const DesktopEntry* entry = Search(clues, entries, processes).entry())
        return {entry->id, entry->name ? entry->name : clues.windowClass};
    return {clues.windowClass, clues.windowClass};
}

bool isApplicationIdentifier(std::string_view text) {
    return !text.empty() && text.size() <= longestIdentifier && isValidUtf8(text) && !hasControlCharacter(text);
}

std::string identifierOfEntryElsewhere(const DesktopEntry& entry, DesktopEntries& entries) {
    if (const DesktopEntry* same = entries.byID(entry.id)) return same->id;
    // Most toolkits make the class of the program's name when nothing else is said.
    const bool tellsProgram =
        entry.executable && !isInterpreter(*entry.executable) && std::ranges::count(starters, *entry.executable) == 0;
    const auto windowClass = entry.startupWMClass || !tellsProgram ? entry.startupWMClass : entry.executable;
    if (windowClass) {
        if (const DesktopEntry* found = entries.byStartupWMClass(*windowClass)) return found->id;
        if (const DesktopEntry* found = entries.byBaseName(*windowClass)) return found->id;
    }
    if (tellsProgram) {
        if (const DesktopEntry* found = entries.byExecutable(*entry.executable)) return found->id;
    }
    return entry.startupWMClass.value_or(entry.id);
}

std::optional<std::string> applicationIDFromSandboxInformation(std::string_view text) {
    constexpr std::string_view key = "name=";
    bool inApplication = false;
    for (const auto part : std::views::split(text, '\n')) {
        const std::string_view line(part.begin(), part.end());
        if (line.starts_with('[')) inApplication = line == "[Application]";
        if (inApplication && line.starts_with(key) && line.size() > key.size())
            return std::string(line.substr(key.size()));
    }
    return std::nullopt;
}

std::optional<std::string> applicationIDFromControlGroup(std::string_view text,
                                                         const std::function<bool(const std::string&)>& isKnown) {
    for (const auto part : std::views::split(text, '\n')) {
        const std::string_view line(part.begin(), part.end());
        if (auto id = applicationIDFromUnit(line.substr(line.rfind('/') + 1), isKnown)) return id;
    }
    return std::nullopt;
}

}  // namespace velmorand

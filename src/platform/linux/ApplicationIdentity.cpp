#include "platform/linux/ApplicationIdentity.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <ranges>
#include <sstream>
#include <system_error>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view suffix = ".desktop";

/// Programs that run others: their own name says nothing of the application.
constexpr std::array<std::string_view, 7> interpreters{"python", "node", "java", "wine", "electron", "perl", "ruby"};

std::string readFile(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(text).str();
}

std::string_view withoutSuffix(std::string_view text, std::string_view ending) {
    return text.ends_with(ending) ? text.substr(0, text.size() - ending.size()) : text;
}

bool isInterpreter(std::string_view executable) {
    return std::ranges::any_of(interpreters,
                               [&](std::string_view interpreter) { return executable.starts_with(interpreter); });
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
    return program.filename().string();
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
        const auto sandbox = applicationIDFromSandboxInformation(readFile(*process_ / "root" / ".flatpak-info"));
        if (sandbox) {
            if (const auto* found = entries_.byID(*sandbox)) return found;
        }
        const auto unit = applicationIDFromControlGroup(
            readFile(*process_ / "cgroup"), [this](const std::string& id) { return entries_.byID(id) != nullptr; });
        return unit ? entries_.byID(*unit) : nullptr;
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
    std::string_view line = text.substr(0, text.find('\n'));
    std::string_view unit = line.substr(line.rfind('/') + 1);
    constexpr std::string_view prefix = "app-";
    if (!unit.starts_with(prefix) || !(unit.ends_with(".scope") || unit.ends_with(".service"))) return std::nullopt;
    const bool isScope = unit.ends_with(".scope");
    unit = withoutSuffix(withoutSuffix(unit.substr(prefix.size()), ".scope"), ".service");
    unit = isScope ? unit.substr(0, unit.rfind('-')) : unit.substr(0, unit.find('@'));

    // What is left is an id with or without its launcher in front: the longest reading that is known counts.
    for (std::string_view reading = unit;;) {
        if (std::string id = unescaped(reading); isKnown(id)) return id;
        const auto dash = reading.find('-');
        if (dash == std::string_view::npos) return std::nullopt;
        reading.remove_prefix(dash + 1);
    }
}

}  // namespace velmorand

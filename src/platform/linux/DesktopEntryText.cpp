#include "platform/linux/DesktopEntryText.h"

#include "base/UnicodeText.h"

#include <ranges>
#include <utility>

namespace velmorand {
namespace {

/// In a value of "Exec": what an argument may hold only in quotes, and what needs a backslash there.
constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotes = "\"`$\\";

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string replacedEach(std::string_view text, char wanted, std::string_view replacement) {
    std::string result;
    for (const char character : text) {
        if (character == wanted)
            result += replacement;
        else
            result += character;
    }
    return result;
}

std::string inQuotes(std::string_view argument) {
    std::string result = "\"";
    for (const char character : argument) {
        if (escapedInQuotes.contains(character)) result += '\\';
        result += character;
    }
    return result + '"';
}

}  // namespace

DesktopEntryValues desktopEntryValues(std::string_view text) {
    DesktopEntryValues values;
    bool inMainGroup = false;
    for (const auto part : std::views::split(text, '\n')) {
        const std::string_view line = trimmed({part.begin(), part.end()});
        if (line.empty() || line.starts_with('#')) continue;
        if (line.starts_with('[')) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const auto equals = line.find('=');
        if (!inMainGroup || equals == std::string_view::npos) continue;
        values.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return values;
}

std::optional<std::string> desktopEntryValue(const DesktopEntryValues& values, std::string_view key) {
    const auto found = values.find(key);
    return found == values.end() || found->second.empty() ? std::nullopt : std::optional(found->second);
}

std::string unescapedValue(std::string_view value) {
    constexpr std::string_view letters = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == '\\' && i + 1 < value.size() && letters.contains(value[i + 1]);
        text += isEscape ? meanings[letters.find(value[++i])] : value[i];
    }
    return text;
}

std::optional<std::string> lineOfValue(std::string_view value) {
    const std::string text = validUtf8(unescapedValue(value));
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // In UTF-8 the control characters beyond ASCII are 0xC2 and a byte from 0x80 to 0x9F.
        const bool isLateControl = byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        const bool isControl = isLateControl || byte < 0x20 || byte == 0x7F;
        line += isControl ? ' ' : text[i];
        if (isLateControl) ++i;
    }
    const std::string_view shown = trimmed(line);
    return shown.empty() ? std::nullopt : std::optional(std::string(shown));
}

std::string escapedValue(std::string_view text) {
    const auto lastLetter = text.find_last_not_of(' ');  // npos + 1 is 0
    std::string value = replacedEach(text.substr(0, lastLetter + 1), '\\', "\\\\");
    for (std::size_t blank = lastLetter + 1; blank < text.size(); ++blank) value += "\\s";  // would be taken off
    return value;
}

std::optional<std::string> execValueFor(const std::filesystem::path& program) {
    const std::string& path = program.native();
    if (!isValidUtf8(path) || hasControlCharacter(path)) return std::nullopt;
    const bool needsStarter = path.contains('%');
    if (needsStarter && path.contains('=')) return std::nullopt;
    const bool needsQuotes = path.find_first_of(reserved) != std::string::npos;
    const std::string argument = replacedEach(needsQuotes ? inQuotes(path) : path, '%', "%%");
    // A percent sign, doubled as it must be, is understood in arguments alone: whoever starts programs looks for the
    // program itself under the doubled name. So another program is started, which starts this one; a word with an equals
    // sign it would take for a variable.
    const std::string_view starter = needsStarter ? "/usr/bin/env " : "";
    return replacedEach(std::string(starter) + argument, '\\', "\\\\");
}

std::optional<std::string> programOfExecValue(std::string_view value) {
    const std::string command = unescapedValue(value);
    std::string program;
    bool inQuotes = false;
    for (std::size_t i = 0; i < command.size(); ++i) {
        const char character = command[i];
        const bool isEscape = character == '\\' && i + 1 < command.size();
        if (!inQuotes && blanks.contains(character)) break;
        if (character == '"')
            inQuotes = !inQuotes;
        else if (isEscape || (character == '%' && command.substr(i).starts_with("%%")))
            program += command[++i];
        else
            program += character;
    }
    return program.empty() ? std::nullopt : std::optional(std::move(program));
}

}  // namespace velmorand

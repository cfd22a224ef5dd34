#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// Values of a desktop entry by their keys, as they are written: still escaped.
using DesktopEntryValues = std::map<std::string, std::string, std::less<>>;

/// The values of the entry's main group; a repeated key keeps its first value. Empty when there is no such group.
[[nodiscard]] DesktopEntryValues desktopEntryValues(std::string_view text);

/// The value of this key; absent when it is empty, too.
[[nodiscard]] std::optional<std::string> desktopEntryValue(const DesktopEntryValues& values, std::string_view key);

/// The text that a value of a desktop entry stands for. A backslash before a character that it gives no meaning stays.
[[nodiscard]] std::string unescapedValue(std::string_view value);

/// The text as one line that can be shown: escapes resolved, no control characters, no blanks around it. Absent when
/// nothing is left. What is not UTF-8 becomes U+FFFD.
[[nodiscard]] std::optional<std::string> lineOfValue(std::string_view value);

/// The value that stands for this text, which has no control characters.
[[nodiscard]] std::string escapedValue(std::string_view text);

/// The value of "Exec" that starts the program at this absolute path, without arguments. Absent when a desktop entry
/// cannot have it started: what is not UTF-8, has control characters, or has both a percent sign and an equals sign.
[[nodiscard]] std::optional<std::string> execValueFor(const std::filesystem::path& program);

/// The program, by its path or name, that a value of "Exec" starts; absent when it names none.
[[nodiscard]] std::optional<std::string> programOfExecValue(std::string_view value);

}  // namespace velmorand

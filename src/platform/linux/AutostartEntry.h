#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// What an entry in an "autostart" folder says of a program that is to be started at log-in.
struct AutostartEntry {
    bool isApplication = false;
    /// Hidden, or not enabled: this is how desktops write that the user does not want it started.
    bool isSwitchedOff = false;
    /// Switched off by this program, not by the user's settings.
    bool isUnregistered = false;
    /// The program, by its path or name, without which nothing is started.
    std::optional<std::string> tryExec;
    /// The program that is started, by its path or name.
    std::optional<std::string> program;

    bool operator==(const AutostartEntry&) const = default;
};

/// Reads the text of an entry; what is none of an application says so.
[[nodiscard]] AutostartEntry parseAutostartEntry(std::string_view text);

/// The text of an entry that has this program started, as long as it is there: `program` is its absolute path, `exec` the
/// value of "Exec" for it, `identifier` the name of its icon.
[[nodiscard]] std::string registeringEntry(std::string_view identifier, std::string_view program,
                                           std::string_view exec);

/// The text of an entry that keeps an entry of the system with the same name from counting.
[[nodiscard]] std::string unregisteringEntry();

}  // namespace velmorand

#pragma once

#include "platform/Workspace.h"
#include "platform/linux/DesktopEntries.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// What a window and its process say of the application they belong to.
struct ApplicationClues {
    /// Absent for a process that is not known or runs elsewhere.
    std::optional<std::int32_t> pid;
    /// The id that the toolkit wrote on the window: a desktop-file id, or a path to one.
    std::optional<std::string> declaredDesktopFile;
    std::optional<std::string> declaredApplicationID;
    std::optional<std::string> windowClass;
    std::optional<std::string> windowInstance;
};

/// An application's identifier and name.
struct ApplicationIdentity {
    std::optional<std::string> identifier;
    std::optional<std::string> name;

    bool operator==(const ApplicationIdentity&) const = default;
};

/// Finds out which application a window belongs to: the desktop entry that the clues lead to, the most reliable
/// clue first; without one the window class stands for itself. `processes` is where the system shows its
/// processes (/proc).
[[nodiscard]] ApplicationIdentity identifyApplication(const ApplicationClues& clues, DesktopEntries& entries,
                                                      const std::filesystem::path& processes = "/proc");

/// Whether this may be an application's identifier: valid UTF-8 without control characters, not empty and at most 256
/// bytes.
[[nodiscard]] bool isApplicationIdentifier(std::string_view text);

/// The identifier that the windows of an application are expected to have which is started by an entry outside the
/// index: that of the entry in the index that starts the same application, found by the name of the file, by the window
/// class and by the program; else the window class, or what the file is called when the entry names none.
[[nodiscard]] std::string identifierOfEntryElsewhere(const DesktopEntry& entry, DesktopEntries& entries);

/// The application id in the information file of a sandbox (.flatpak-info); absent when there is none.
[[nodiscard]] std::optional<std::string> applicationIDFromSandboxInformation(std::string_view text);

/// The application id in the name of the systemd unit that a process runs in, from the text of its cgroup file:
/// `app[-<launcher>]-<id>[-<random>].scope` or `app[-<launcher>]-<id>[@<instance>].service`. Absent when the unit
/// is of another kind. As launcher and id cannot be told apart by form, `isKnown` decides between the readings.
[[nodiscard]] std::optional<std::string> applicationIDFromControlGroup(
    std::string_view text, const std::function<bool(const std::string&)>& isKnown);

}  // namespace velmorand

#pragma once

#include "platform/InstalledApplication.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// An application that is running now.
struct RunningApplication {
    /// Negative for an application whose process is not known or runs on another machine.
    std::int32_t pid = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;

    bool operator==(const RunningApplication&) const = default;
};

/// The applications of the user's session, those that run and those that are installed (`NSWorkspace`). Main thread
/// only. Every question is answered at once.
class Workspace {
public:
    virtual ~Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// The application that receives the user's key presses; absent when there is none.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Whether the user wants as little motion on screen as possible. Answered from memory; never waits.
    [[nodiscard]] virtual bool accessibilityDisplayShouldReduceMotion() = 0;

    /// Opens the page of the desktop's settings on which the user gives programs access to other applications'
    /// windows, or the nearest to it. Where there is none, nothing happens but a line in the log.
    virtual void openAccessibilitySettings() = 0;

    /// Told in a turn of the main loop whether a program was found for the address, and begun.
    using OpenURLCompletion = std::function<void(bool opened)>;

    /// Opens an address, such as "mailto:somebody@example.org", with the program that the user has for it
    /// (`openURL:configuration:completionHandler:`).
    virtual void openURL(std::string_view url, OpenURLCompletion completion) = 0;

    /// Where the application with this bundle identifier is (`URLForApplicationWithBundleIdentifier:`); absent when no
    /// such application is installed. Letter case counts.
    [[nodiscard]] virtual std::optional<std::filesystem::path> applicationWithIdentifier(
        std::string_view bundleIdentifier) = 0;

    /// The name that the user reads for what is at this location (`NSFileManager.displayNameAtPath:`): one line, not
    /// empty. Where there is no application it is made of the path.
    [[nodiscard]] virtual std::string displayName(const std::filesystem::path& location) = 0;

    /// The icon of the application at this location (`iconForFile:`); absent when it has none.
    [[nodiscard]] virtual std::optional<ApplicationIcon> icon(const std::filesystem::path& location) = 0;

    /// The bundle identifier of the application at this location (`NSBundle.bundleIdentifier`), the same that
    /// `frontmostApplication` tells while it runs. Absent when there is no application, it has no identifier, or its windows
    /// are another application's, such as a terminal's.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) = 0;

    /// The applications with windows of their own that the desktop offers its user, in no order; without those that it
    /// keeps from its menus.
    [[nodiscard]] virtual std::vector<InstalledApplication> installedApplications() = 0;

protected:
    Workspace() = default;
};

}  // namespace velmorand

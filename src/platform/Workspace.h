#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// An application that is running now.
struct RunningApplication {
    /// Negative for an application whose process is not known or runs on another machine.
    std::int32_t pid = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;

    bool operator==(const RunningApplication&) const = default;
};

/// The running applications of the user's session (`NSWorkspace`). Main thread only.
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

protected:
    Workspace() = default;
};

}  // namespace velmorand

#pragma once

#include "desktop/harness/ChildProcess.h"

namespace velmorand::desktop {

/// What kind of displays a server has.
enum class OutputKind {
    /// One output that is the whole screen. Monitors are drawn on it by name only, which most window managers heed, but
    /// not those made with GDK: they see outputs alone.
    single,
    /// As many outputs as one likes, as on a real machine.
    several
};

/// An X server of our own on a free display number, drawing into memory.
class DisplayServer {
public:
    struct Options {
        OutputKind outputs = OutputKind::single;
        /// Of the screen, in pixels of 24 bits.
        int width = 0;
        int height = 0;
        Environment environment = {};
        /// Where log and configuration files go.
        std::filesystem::path folder = {};
    };

    [[nodiscard]] static std::expected<DisplayServer, HarnessError> start(const Options& options);

    /// As in DISPLAY, ":7".
    [[nodiscard]] const std::string& displayName() const { return displayName_; }
    [[nodiscard]] ChildProcess& process() { return process_; }
    [[nodiscard]] const ChildProcess& process() const { return process_; }

private:
    DisplayServer(ChildProcess process, std::string displayName)
        : process_(std::move(process)), displayName_(std::move(displayName)) {}

    ChildProcess process_;
    std::string displayName_;
};

}  // namespace velmorand::desktop

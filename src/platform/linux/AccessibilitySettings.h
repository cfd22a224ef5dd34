#pragma once

#include "platform/Logger.h"
#include "platform/linux/DesktopEnvironment.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// A program that opens the accessibility page of a desktop's settings, and its arguments.
struct SettingsCommand {
    std::string_view program;
    /// Empty for none.
    std::string_view page;
};

/// The programs that open the page on this desktop, in its versions: the first one that is there does.
[[nodiscard]] std::span<const SettingsCommand> accessibilitySettingsCommands(DesktopEnvironment desktop);

/// Opens the accessibility page of the desktop that runs, as the environment names it.
class AccessibilitySettings {
public:
    explicit AccessibilitySettings(Log& log) : logger_(log, "ax") {}

    /// Leaves a line in the log when nothing can be opened.
    void open() const;

private:
    Logger logger_;
};

}  // namespace velmorand

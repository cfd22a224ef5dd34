#pragma once

#include "platform/linux/SettingsPage.h"

namespace velmorand {

/// The programs that open the accessibility page on this desktop.
[[nodiscard]] std::span<const SettingsCommand> accessibilitySettingsCommands(DesktopEnvironment desktop);

/// Opens the accessibility page of the desktop that runs, as the environment names it.
class AccessibilitySettings {
public:
    explicit AccessibilitySettings(Log& log)
        : page_(log, "ax", "accessibility settings", accessibilitySettingsCommands) {}

    /// Leaves a line in the log when nothing can be opened.
    void open() const { page_.open(); }

private:
    SettingsPage page_;
};

}  // namespace velmorand

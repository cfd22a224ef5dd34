#pragma once

#include "platform/linux/SettingsPage.h"

namespace velmorand {

/// The programs that open the page on this desktop that lists what is started at log-in.
[[nodiscard]] std::span<const SettingsCommand> loginItemSettingsCommands(DesktopEnvironment desktop);

/// Opens the page of the desktop that runs, as the environment names it, which lists what is started at log-in.
class LoginItemSettings {
public:
    explicit LoginItemSettings(Log& log) : page_(log, "app", "settings of login items", loginItemSettingsCommands) {}

    /// Leaves a line in the log when nothing can be opened.
    void open() const { page_.open(); }

private:
    SettingsPage page_;
};

}  // namespace velmorand

#pragma once

#include "platform/Logger.h"
#include "platform/linux/DesktopEnvironment.h"

#include <span>
#include <string_view>

namespace velmorand {

/// A program that opens a page of a desktop's settings, and its arguments.
struct SettingsCommand {
    std::string_view program;
    /// Empty for none.
    std::string_view page;
};

/// Answers the programs that open the page on this desktop, in its versions: the first one that is there does. None
/// where the desktop has no such page.
using SettingsCommands = std::span<const SettingsCommand> (*)(DesktopEnvironment desktop);

/// A page of the settings of the desktop that runs, as the environment names it.
class SettingsPage {
public:
    /// `category` and `name`, which is what the log calls the page, are literals.
    SettingsPage(Log& log, std::string_view category, std::string_view name, SettingsCommands commands)
        : logger_(log, category), name_(name), commands_(commands) {}

    /// Leaves a line in the log when nothing can be opened.
    void open() const;

private:
    Logger logger_;
    std::string_view name_;
    SettingsCommands commands_;
};

}  // namespace velmorand

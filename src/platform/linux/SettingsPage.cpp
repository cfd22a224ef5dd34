#include "platform/linux/SettingsPage.h"

#include "platform/linux/DetachedProcess.h"

#include <string>
#include <vector>

namespace velmorand {
namespace {

void append(std::string& names, std::string_view name) {
    if (!names.empty()) names += ", ";
    names += name;
}

std::string programNames(std::span<const SettingsCommand> commands) {
    std::string names;
    for (const SettingsCommand& command : commands) append(names, command.program);
    return names;
}

std::string desktopsWith(SettingsCommands commands) {
    std::string names;
    for (const auto& [name, desktop] : desktopEnvironments()) {
        if (!commands(desktop).empty()) append(names, name);
    }
    return names;
}

}  // namespace

void SettingsPage::open() const {
    const std::string names = currentDesktopNames();
    const auto desktop = desktopEnvironmentNamedIn(names);
    const auto commands = desktop ? commands_(*desktop) : std::span<const SettingsCommand>();
    if (commands.empty()) {
        logger_.info("No {} to open: XDG_CURRENT_DESKTOP is \"{}\", which names none of {}.", name_, names,
                     desktopsWith(commands_));
        return;
    }
    for (const SettingsCommand& command : commands) {
        const auto program = findProgram(std::string(command.program));
        if (!program) continue;
        std::vector<std::string> arguments;
        if (!command.page.empty()) arguments.emplace_back(command.page);
        const auto started = startDetached(*program, arguments);
        if (!started) logger_.error("Cannot start {}: {}", program->native(), started.error().message());
        return;
    }
    logger_.error("Cannot open the {}: not found in PATH: {}", name_, programNames(commands));
}

}  // namespace velmorand

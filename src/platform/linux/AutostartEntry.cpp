#include "platform/linux/AutostartEntry.h"

#include "platform/linux/DesktopEntryText.h"

#include <fmt/format.h>

namespace velmorand {
namespace {

constexpr std::string_view unregisteredKey = "X-Velmorand-Unregistered";

}  // namespace

AutostartEntry parseAutostartEntry(std::string_view text) {
    const DesktopEntryValues values = desktopEntryValues(text);
    return {
        .isApplication = desktopEntryValue(values, "Type") == "Application",
        .isSwitchedOff = desktopEntryValue(values, "Hidden") == "true" ||
                         desktopEntryValue(values, "X-GNOME-Autostart-enabled") == "false",
        .isUnregistered = desktopEntryValue(values, unregisteredKey) == "true",
        .tryExec = desktopEntryValue(values, "TryExec").transform(unescapedValue),
        .program = desktopEntryValue(values, "Exec").and_then(programOfExecValue),
    };
}

std::string registeringEntry(std::string_view identifier, std::string_view program, std::string_view exec) {
    return fmt::format("[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=Velmorand\n"
                       "Comment=Arranges windows by keyboard shortcuts\n"
                       "TryExec={}\n"
                       "Exec={}\n"
                       "Icon={}\n"
                       "Terminal=false\n"
                       "StartupNotify=false\n",
                       escapedValue(program), exec, identifier);
}

std::string unregisteringEntry() {
    return fmt::format("[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=Velmorand\n"
                       "Hidden=true\n"
                       "{}=true\n",
                       unregisteredKey);
}

}  // namespace velmorand

#include "app/LaunchAtLogin.h"
#include "platform/linux/LinuxLog.h"
#include "platform/linux/LoginItemSettings.h"
#include "platform/linux/XdgLoginItems.h"

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

const char* nameOf(LaunchAtLoginStatus status) {
    switch (status) {
        case LaunchAtLoginStatus::enabled: return "enabled";
        case LaunchAtLoginStatus::disabled: return "disabled";
        case LaunchAtLoginStatus::requiresApproval: return "requiresApproval";
        case LaunchAtLoginStatus::unavailable: return "unavailable";
    }
    std::unreachable();
}

int run(const std::filesystem::path& executable, std::string_view command) {
    LinuxLog log(VELMORAND_IDENTIFIER);
    const LoginItemSettings settings(log);
    LoginItemPlaces places = LoginItemPlaces::ofSession();
    places.executable = std::filesystem::absolute(executable);
    XdgLoginItems items(VELMORAND_IDENTIFIER, std::move(places), settings);
    LaunchAtLogin launchAtLogin(items);
    const auto outcome =
        command == "status" ? std::expected<void, LaunchAtLoginError>() : launchAtLogin.setEnabled(command == "on");
    std::printf("%s\n", nameOf(launchAtLogin.currentStatus()));
    if (outcome) return 0;
    std::fprintf(stderr, "%s\n", outcome.error().description.c_str());
    return 1;
}

}  // namespace
}  // namespace velmorand

/// Prints the status of launch at login of the executable, after it was switched where that is asked for. Ends with
/// status 1, and the sentence for the user on standard error, when it could not be switched.
int main(int argumentCount, char** arguments) {
    const std::string_view command = argumentCount == 3 ? arguments[2] : "";
    if (command == "status" || command == "on" || command == "off") return velmorand::run(arguments[1], command);
    std::fprintf(stderr, "Usage: velmorand_login_items EXECUTABLE status|on|off\n");
    return 2;
}

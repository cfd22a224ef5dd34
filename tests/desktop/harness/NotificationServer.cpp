#include "desktop/harness/NotificationServer.h"

#include "desktop/harness/SettingsFile.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

/// Runs for each notification that the server shows. Fields end with a tab, which no text here has.
constexpr std::string_view recorder = R"(#!/bin/sh
body=$(printf '%s' "$DUNST_BODY" | awk 'NR > 1 {{ printf "\\n" }} {{ printf "%s", $0 }}')
printf '%s\t%s\t%s\n' "$DUNST_ID" "$DUNST_SUMMARY" "$body" >> '{}'
)";

constexpr std::string_view settings = R"([global]
    markup = full
[every]
    summary = "*"
    script = "{}"
    timeout = 0
)";

std::expected<void, HarnessError> writeProgram(const fs::path& file, const std::string& content) {
    if (auto written = writeSettingsFile(file, content); !written) return written;
    std::error_code error;
    fs::permissions(file, fs::perms::owner_all, error);
    if (error) return std::unexpected(HarnessError{"cannot make a program of " + file.string()});
    return {};
}

bool isOnTheBus(TestDesktop& desktop) {
    auto question = desktop.start({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                   "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.Notifications"});
    return question && question->wait(patience) && question->log().contains("boolean true");
}

}  // namespace

std::expected<NotificationServer, HarnessError> NotificationServer::start(TestDesktop& desktop) {
    const fs::path record = desktop.folder() / "notifications";
    const fs::path program = desktop.folder() / "record-notification";
    const fs::path file = desktop.folder() / "dunstrc";
    if (auto written = writeProgram(program, fmt::format(recorder, record.string())); !written)
        return std::unexpected(written.error());
    if (auto written = writeSettingsFile(file, fmt::format(settings, program.string())); !written)
        return std::unexpected(written.error());
    auto process = desktop.start({"dunst", "-config", file.string()});
    if (!process) return std::unexpected(process.error());
    if (!desktop.observer().waitUntil([&] { return isOnTheBus(desktop); }))
        return std::unexpected(HarnessError{"the notification server does not come\n" + process->logTail()});
    return NotificationServer(std::move(*process), record);
}

std::vector<ShownNotification> NotificationServer::shown() const {
    std::vector<ShownNotification> notifications;
    std::ifstream stream(record_);
    for (ShownNotification next; std::getline(stream, next.number, '\t') && std::getline(stream, next.title, '\t') &&
                                 std::getline(stream, next.body);)
        notifications.push_back(next);
    return notifications;
}

}  // namespace velmorand::desktop

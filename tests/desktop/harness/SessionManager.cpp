#include "desktop/harness/SessionManager.h"

#include "desktop/harness/SettingsFile.h"

#include <fmt/format.h>

#include <fstream>
#include <iterator>
#include <utility>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds patient{20};

/// The one program of its session tells where the manager is to be found, which only its programs learn.
constexpr std::string_view sessionSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-session" version="1.0">
  <property name="general" type="empty">
    <property name="FailsafeSessionName" type="string" value="Failsafe"/>
    <property name="SaveOnExit" type="bool" value="true"/>
  </property>
  <property name="startup" type="empty">
    <property name="ssh-agent" type="empty"><property name="enabled" type="bool" value="false"/></property>
    <property name="gpg-agent" type="empty"><property name="enabled" type="bool" value="false"/></property>
    <property name="screensaver" type="empty"><property name="enabled" type="bool" value="false"/></property>
  </property>
  <property name="sessions" type="empty">
    <property name="Failsafe" type="empty">
      <property name="IsFailsafe" type="bool" value="true"/>
      <property name="Count" type="int" value="1"/>
      <property name="Client0_PerScreen" type="bool" value="false"/>
      <property name="Client0_Command" type="array">
        <value type="string" value="sh"/>
        <value type="string" value="-c"/>
        <value type="string" value="echo &quot;$SESSION_MANAGER&quot; &gt;&quot;$HOME/session-manager&quot;"/>
      </property>
    </property>
  </property>
</channel>
)";

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

std::expected<SessionManager, HarnessError> SessionManager::start(TestDesktop& desktop) {
    const Environment& session = desktop.environment();
    auto written = writeSettingsFile(xfceSettingsFile(session, "xfce4-session"), sessionSettings);
    if (!written) return std::unexpected(written.error());
    // Nothing that this machine starts at log-in: its folders are not looked into.
    auto process = desktop.start({"xfce4-session"}, {{"XDG_CONFIG_DIRS", session.at("XDG_RUNTIME_DIR")}});
    if (!process) return std::unexpected(process.error());

    const fs::path told = fs::path(session.at("HOME")) / "session-manager";
    std::string address;
    const bool isThere = desktop.observer().waitUntil(
        [&] {
            address = contentsOf(told);
            return address.ends_with('\n') || !process->isRunning();
        },
        patient);
    if (!isThere || !address.ends_with('\n')) {
        return std::unexpected(HarnessError{fmt::format("no session manager comes\n{}", process->logTail())});
    }
    address.pop_back();
    return SessionManager(desktop, std::move(*process), std::move(address));
}

std::expected<void, HarnessError> SessionManager::logOut() {
    auto request = desktop_->start({"xfce4-session-logout", "--logout"});
    if (!request) return std::unexpected(request.error());
    if (process_.wait(patient)) return {};
    return std::unexpected(
        HarnessError{fmt::format("the session goes on after log-out\n{}{}", process_.logTail(), request->logTail())});
}

std::string SessionManager::savedSession() const {
    std::string text;
    std::error_code error;
    const fs::path folder = fs::path(desktop_->environment().at("XDG_CACHE_HOME")) / "sessions";
    for (const auto& entry : fs::directory_iterator(folder, error)) text += contentsOf(entry.path());
    return text;
}

}  // namespace velmorand::desktop

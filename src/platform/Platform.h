#pragma once

#include <expected>
#include <memory>
#include <string>

namespace velmorand {

class Accessibility;
class Application;
class Bundle;
class Displays;
class HotKeyService;
class Log;
class LoginItemService;
class NotificationCenter;
class RecorderPanelHost;
class RunLoop;
class StatusBar;
class UserDefaults;
class UserNotificationCenter;
class Workspace;

/// Owns every service of the operating system that the program uses. It outlives all services built on it, which
/// hold the interfaces by reference. Main thread only.
class Platform {
public:
    virtual ~Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    [[nodiscard]] virtual Accessibility& accessibility() = 0;
    [[nodiscard]] virtual Workspace& workspace() = 0;
    [[nodiscard]] virtual Displays& displays() = 0;
    [[nodiscard]] virtual HotKeyService& hotKeyService() = 0;
    /// Tells of other applications.
    [[nodiscard]] virtual NotificationCenter& workspaceNotificationCenter() = 0;
    /// Tells of the displays and of this application.
    [[nodiscard]] virtual NotificationCenter& defaultNotificationCenter() = 0;
    /// Shows notifications to the user.
    [[nodiscard]] virtual UserNotificationCenter& userNotificationCenter() = 0;
    /// Shows the panel in which a key combination is recorded.
    [[nodiscard]] virtual RecorderPanelHost& recorderPanelHost() = 0;
    [[nodiscard]] virtual LoginItemService& loginItemService() = 0;
    [[nodiscard]] virtual StatusBar& statusBar() = 0;
    [[nodiscard]] virtual RunLoop& runLoop() = 0;
    [[nodiscard]] virtual Application& application() = 0;
    [[nodiscard]] virtual const Bundle& bundle() const = 0;
    [[nodiscard]] virtual UserDefaults& userDefaults() = 0;
    [[nodiscard]] virtual Log& log() = 0;

protected:
    Platform() = default;
};

/// Why the program ends instead of starting: it cannot, or it need not, as another copy of it is running.
struct EarlyEnd {
    /// One line for the user.
    std::string message;
    /// Of the process: 0 when the user has got what they wanted.
    int exitStatus = 1;
};

/// Makes the platform this executable was linked for. `argumentCount` and `arguments` are the process's own and
/// stay alive with the platform, which may take arguments that are meant for the toolkit. Where a copy of the program runs
/// in the session already, that one is reopened instead (`ApplicationDelegate::applicationShouldHandleReopen`).
[[nodiscard]] std::expected<std::unique_ptr<Platform>, EarlyEnd> makePlatform(int& argumentCount, char** arguments);

}  // namespace velmorand

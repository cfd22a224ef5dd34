#pragma once

#include "base/Published.h"
#include "base/Subscription.h"
#include "platform/Logger.h"
#include "windows/WindowAction.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace velmorand {

class Bundle;
class GlobalHotKeyRegistrar;
class PreferencesStore;
class RunLoop;
class UserNotificationCenter;
class WindowManager;
enum class NotificationAuthorization : std::uint8_t;

/// What the shortcut manager uses of the platform, which outlives it.
struct ShortcutManagerPlatform {
    UserNotificationCenter& userNotificationCenter;
    const Bundle& bundle;
    RunLoop& runLoop;
    Log& log;
};

/// Turns the user's shortcut settings into live hot keys, and presses into window actions. Main thread only.
/// It must be owned by a `std::shared_ptr`.
class ShortcutManager : public std::enable_shared_from_this<ShortcutManager> {
public:
    ShortcutManager(std::shared_ptr<PreferencesStore> preferencesStore, std::shared_ptr<WindowManager> windowManager,
                    std::shared_ptr<GlobalHotKeyRegistrar> registrar, const ShortcutManagerPlatform& platform);

    ShortcutManager(const ShortcutManager&) = delete;
    ShortcutManager& operator=(const ShortcutManager&) = delete;
    ~ShortcutManager() = default;

    /// Installs the hot-key handler, registers every effective shortcut and follows the preferences from then on.
    /// Without a handler nothing is registered and `eventHandlerIssue` says so. The user is notified of problems.
    void start();

    /// Registers the current shortcuts afresh. Does nothing without a handler or while a shortcut is recorded.
    void refreshRegistrations();

    /// While suspended no hot key is registered, so that the recorder sees every combination.
    void setRecordingSuspended(bool suspended);

    /// Performs the action of a pressed hot key.
    void handleHotKey(std::uint32_t id);

    /// Gives everything back, at the end of the program.
    void stop();

    /// Why there are no hot keys at all; absent when there are.
    [[nodiscard]] const std::optional<std::string>& eventHandlerIssue() const { return eventHandlerIssue_; }

    /// The problems of the last registration pass: the conflicts in ascending order, then the failures.
    [[nodiscard]] const std::vector<std::string>& shortcutIssues() const { return shortcutIssues_; }

    /// What to show beside an action's shortcut.
    [[nodiscard]] Published<std::map<WindowAction, std::string>>& registrationIssuesByAction() {
        return registrationIssuesByAction_;
    }

private:
    void subscribeToPreferences();
    std::set<WindowAction> collectConflicts();
    void registerAction(WindowAction action, std::uint32_t id);
    [[nodiscard]] std::vector<std::string> currentIssues() const;
    void notifyOfChangedIssues();
    void notifyIfAllowed(NotificationAuthorization authorization, const std::vector<std::string>& issues);
    void postNotification(const std::vector<std::string>& issues);

    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<WindowManager> windowManager_;
    std::shared_ptr<GlobalHotKeyRegistrar> registrar_;
    std::map<std::uint32_t, WindowAction> actionsByHotKeyID_;
    Subscription preferencesSubscription_;
    std::optional<std::string> eventHandlerIssue_;
    std::vector<std::string> shortcutIssues_;
    bool isSuspendedForRecording_ = false;
    bool handlerInstalled_ = false;
    std::optional<std::vector<std::string>> lastNotifiedIssues_;
    Published<std::map<WindowAction, std::string>> registrationIssuesByAction_;
    UserNotificationCenter& userNotificationCenter_;
    const Bundle& bundle_;
    RunLoop& runLoop_;
    Logger logger_;
};

}  // namespace velmorand

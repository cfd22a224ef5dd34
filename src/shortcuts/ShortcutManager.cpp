#include "shortcuts/ShortcutManager.h"

#include "base/UnicodeText.h"
#include "platform/Bundle.h"
#include "platform/RunLoop.h"
#include "platform/UserNotificationCenter.h"
#include "preferences/PreferencesStore.h"
#include "shortcuts/GlobalHotKeyRegistrar.h"
#include "windows/WindowManager.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cassert>
#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view handlerIssueText = "Could not install the keyboard shortcut handler.";
constexpr std::string_view registrationIssueText = "Saved, but another app is already using this shortcut.";
constexpr std::string_view conflictTitle = "Velmorand: Shortcut Conflict";
constexpr std::string_view issueTitle = "Velmorand: Shortcut Issue";
/// Behind the application's identifier: a newer notification takes the place of the older one.
constexpr std::string_view notificationName = ".shortcut.issue";

/// Ids do not depend on which actions are registered, so an action keeps its id.
std::uint32_t hotKeyID(WindowAction action) {
    return std::to_underlying(action) + 1U;
}

std::string conflictText(const ShortcutConflict& conflict) {
    std::vector<std::string_view> titles;
    for (const WindowAction action : conflict.actions) titles.push_back(metadata(action).title);
    std::ranges::sort(titles);
    return fmt::format("Shortcut conflict, not registered: {}.", fmt::join(titles, ", "));
}

std::string registrationFailureText(WindowAction action, const KeyboardShortcut& shortcut) {
    return fmt::format("Could not register {} ({}). Another app may already be using it.", metadata(action).title,
                       spokenDescription(shortcut));
}

}  // namespace

ShortcutManager::ShortcutManager(std::shared_ptr<PreferencesStore> preferencesStore,
                                 std::shared_ptr<WindowManager> windowManager,
                                 std::shared_ptr<GlobalHotKeyRegistrar> registrar,
                                 const ShortcutManagerPlatform& platform)
    : preferencesStore_(std::move(preferencesStore)),
      windowManager_(std::move(windowManager)),
      registrar_(std::move(registrar)),
      userNotificationCenter_(platform.userNotificationCenter),
      bundle_(platform.bundle),
      runLoop_(platform.runLoop),
      logger_(platform.log, "shortcuts") {}

void ShortcutManager::start() {
    assert(runLoop_.isMainThread());
    const auto installed = registrar_->installHandler([weakSelf = weak_from_this()](std::uint32_t id) {
        if (const auto self = weakSelf.lock()) self->handleHotKey(id);
    });
    handlerInstalled_ = installed.has_value();
    if (!installed) {
        eventHandlerIssue_ = handlerIssueText;
        logger_.error("hot key handler install failed: {}", installed.error().description());
        notifyOfChangedIssues();
        return;
    }
    eventHandlerIssue_.reset();
    refreshRegistrations();
    subscribeToPreferences();
}

void ShortcutManager::subscribeToPreferences() {
    const PreferencesState& state = preferencesStore_->current();
    preferencesSubscription_ = preferencesStore_->state().subscribe(
        [weakSelf = weak_from_this(),
         last = std::pair(state.shortcuts, state.disabledShortcutActions)](const PreferencesState& changed) mutable {
            auto now = std::pair(changed.shortcuts, changed.disabledShortcutActions);
            if (now == last) return;
            last = std::move(now);
            const auto self = weakSelf.lock();
            if (!self) return;
            self->runLoop_.post([weakSelf] {
                if (const auto alive = weakSelf.lock()) alive->refreshRegistrations();
            });
        });
}

void ShortcutManager::refreshRegistrations() {
    assert(runLoop_.isMainThread());
    if (isSuspendedForRecording_ || !handlerInstalled_) return;
    registrar_->unregisterAll();
    actionsByHotKeyID_.clear();
    shortcutIssues_.clear();
    registrationIssuesByAction_.set({});
    const std::set<WindowAction> conflicting = collectConflicts();
    for (const WindowAction action : allWindowActions) {
        if (!conflicting.contains(action)) registerAction(action, hotKeyID(action));
    }
    notifyOfChangedIssues();
}

/// Notes the text of every conflict, in ascending order; answers all actions that take part in one.
std::set<WindowAction> ShortcutManager::collectConflicts() {
    std::set<WindowAction> conflicting;
    for (const ShortcutConflict& conflict : preferencesStore_->conflictGroups()) {
        shortcutIssues_.push_back(conflictText(conflict));
        conflicting.insert(conflict.actions.begin(), conflict.actions.end());
    }
    std::ranges::sort(shortcutIssues_);
    return conflicting;
}

void ShortcutManager::registerAction(WindowAction action, std::uint32_t id) {
    const auto shortcut = preferencesStore_->effectiveShortcut(action);
    if (!shortcut) return;
    const auto registered = registrar_->registerHotKey(shortcut->hotKey, id);
    if (!registered) {
        shortcutIssues_.push_back(registrationFailureText(action, *shortcut));
        registrationIssuesByAction_.modify([action](auto& issues) { issues[action] = registrationIssueText; });
        logger_.error("Failed shortcut {}: {}", rawValue(action), registered.error().description());
        return;
    }
    actionsByHotKeyID_[id] = action;
    if (registrationIssuesByAction_.value().contains(action))
        registrationIssuesByAction_.modify([action](auto& issues) { issues.erase(action); });
    logger_.debug("Registered shortcut {} id {}", rawValue(action), id);
}

std::vector<std::string> ShortcutManager::currentIssues() const {
    std::vector<std::string> issues = shortcutIssues_;
    if (eventHandlerIssue_) issues.insert(issues.begin(), *eventHandlerIssue_);
    return issues;
}

/// The user hears of each list of problems once, and of the same one again only after there were none.
void ShortcutManager::notifyOfChangedIssues() {
    const std::vector<std::string> issues = currentIssues();
    if (issues.empty()) {
        lastNotifiedIssues_.reset();
        return;
    }
    if (lastNotifiedIssues_ == issues) return;
    lastNotifiedIssues_ = issues;
    userNotificationCenter_.notificationSettings(
        [weakSelf = weak_from_this(), issues](NotificationAuthorization authorization) {
            if (const auto self = weakSelf.lock()) self->notifyIfAllowed(authorization, issues);
        });
}

void ShortcutManager::notifyIfAllowed(NotificationAuthorization authorization, const std::vector<std::string>& issues) {
    switch (authorization) {
        case NotificationAuthorization::authorized:
        case NotificationAuthorization::provisional: postNotification(issues); return;
        case NotificationAuthorization::notDetermined:
            userNotificationCenter_.requestAuthorization({.alert = true, .sound = true},
                                                         [weakSelf = weak_from_this(), issues](bool granted) {
                                                             const auto self = weakSelf.lock();
                                                             if (self && granted) self->postNotification(issues);
                                                         });
            return;
        case NotificationAuthorization::denied:
        case NotificationAuthorization::other: return;
    }
}

void ShortcutManager::postNotification(const std::vector<std::string>& issues) {
    assert(runLoop_.isMainThread());
    const bool areConflicts =
        std::ranges::all_of(issues, [](const std::string& issue) { return containsIgnoringCase(issue, "conflict"); });
    UserNotificationRequest request{.identifier = bundle_.identifier().value_or("") + std::string(notificationName),
                                    .content = {.title = std::string(areConflicts ? conflictTitle : issueTitle),
                                                .body = fmt::format("{}", fmt::join(issues, "\n")),
                                                .playsDefaultSound = true}};
    userNotificationCenter_.add(
        std::move(request), [logger = logger_](const std::expected<void, UserNotificationError>& added) {
            if (!added) logger.error("Failed to post shortcut issue notification: {}", added.error().description);
        });
}

void ShortcutManager::setRecordingSuspended(bool suspended) {
    assert(runLoop_.isMainThread());
    isSuspendedForRecording_ = suspended;
    if (!suspended) {
        refreshRegistrations();
        return;
    }
    registrar_->unregisterAll();
    actionsByHotKeyID_.clear();
}

void ShortcutManager::handleHotKey(std::uint32_t id) {
    assert(runLoop_.isMainThread());
    const auto found = actionsByHotKeyID_.find(id);
    if (found == actionsByHotKeyID_.end()) {
        logger_.error("Missing action for hotkey id {}", id);
        return;
    }
    const WindowAction action = found->second;
    logger_.info("Dispatching shortcut {}", rawValue(action));
    // A refusal reaches the user through the window manager's own report.
    [[maybe_unused]] const auto outcome = windowManager_->perform(action);
}

void ShortcutManager::stop() {
    assert(runLoop_.isMainThread());
    registrar_->unregisterAll();
    registrar_->uninstallHandler();
    actionsByHotKeyID_.clear();
    handlerInstalled_ = false;
    preferencesSubscription_.cancel();
}

}  // namespace velmorand

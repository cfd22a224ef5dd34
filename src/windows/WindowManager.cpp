#include "windows/WindowManager.h"

#include "platform/Accessibility.h"
#include "platform/Bundle.h"
#include "platform/RunLoop.h"
#include "platform/Workspace.h"
#include "preferences/PreferencesStore.h"
#include "windows/AXWindowClient.h"
#include "windows/FrameTolerance.h"
#include "windows/PermissionsManager.h"
#include "windows/ScreenGeometryProvider.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr std::chrono::hours restoreEntryLifetime{1};

LayoutOptions layoutOptions(const PreferencesState& preferences) {
    return {preferences.outerPadding, preferences.innerGap, preferences.clampToVisibleArea};
}

}  // namespace

WindowManager::WindowManager(std::shared_ptr<PermissionsManager> permissionsManager,
                             std::shared_ptr<PreferencesStore> preferencesStore,
                             std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider,
                             std::shared_ptr<AXWindowClient> axClient, const WindowManagerPlatform& platform)
    : permissionsManager_(std::move(permissionsManager)),
      preferencesStore_(std::move(preferencesStore)),
      screenGeometryProvider_(std::move(screenGeometryProvider)),
      axClient_(std::move(axClient)),
      restoreTracker_(restoreEntryLifetime, [&runLoop = platform.runLoop] { return runLoop.date(); }),
      platform_(platform),
      logger_(platform.log, "windows") {
    NotificationCenter& center = platform_.workspaceNotificationCenter;
    terminationToken_.emplace(
        center, center.addObserver(NotificationName::applicationTerminated, [this](const Notification& notification) {
            if (notification.pid) restoreTracker_.forget(*notification.pid);
        }));
}

WindowManager::~WindowManager() = default;

WindowManager::Outcome WindowManager::perform(WindowAction action) {
    assert(platform_.runLoop.isMainThread());
    auto outcome = run(action);
    if (!outcome) report(outcome.error().description());
    return outcome;
}

WindowManager::Outcome WindowManager::run(WindowAction action) {
    logger_.info("perform {}", rawValue(action));
    if (auto trusted = requireTrust(); !trusted) return trusted;
    restoreTracker_.prune([this](const WindowKey& window) { return isAlive(window); });
    if (auto displays = requireTwoDisplays(action); !displays) return displays;
    const auto subject = this->subject();
    if (!subject) return std::unexpected(subject.error());
    if (std::holds_alternative<Restore>(kind(action))) return restore(*subject);
    const auto target = targetFrame(action, subject->frame);
    if (!target) return std::unexpected(target.error());
    return move(*subject, *target);
}

WindowManager::Outcome WindowManager::requireTrust() {
    permissionsManager_->refresh();
    if (permissionsManager_->isTrusted().value()) return {};
    logger_.error("not trusted, requesting access");
    permissionsManager_->refreshWithPrompt();
    return std::unexpected(WindowOperationError::accessibilityPermissionMissing);
}

WindowManager::Outcome WindowManager::requireTwoDisplays(WindowAction action) const {
    const bool needsAnotherDisplay = std::holds_alternative<MoveDisplay>(kind(action));
    if (needsAnotherDisplay && screenGeometryProvider_->screens().size() < 2)
        return std::unexpected(WindowOperationError::displayMoveUnavailable);
    return {};
}

std::expected<WindowManager::Subject, WindowOperationError> WindowManager::subject() const {
    const auto application = arrangeableApplication();
    if (!application) return std::unexpected(application.error());

    const AXElement element = platform_.accessibility.createApplication(application->pid);
    platform_.accessibility.setMessagingTimeout(element, accessibilityMessagingTimeout);
    const auto window = axClient_->focusedWindow(element);
    if (!window) return std::unexpected(window.error());

    const auto frame = axClient_->readFrame(*window);
    if (!frame) return std::unexpected(frame.error());
    logger_.info("current frame {}", describe(*frame));
    return Subject{application->pid, WindowKey{*window}, *frame};
}

std::expected<RunningApplication, WindowOperationError> WindowManager::arrangeableApplication() const {
    const auto application = platform_.workspace.frontmostApplication();
    if (!application) {
        logger_.error("no frontmost application");
        return std::unexpected(WindowOperationError::noFrontmostApplication);
    }
    const auto& identifier = application->bundleIdentifier;
    logger_.info("frontmost {} pid {}", identifier.value_or("?"), application->pid);
    if (identifier == platform_.bundle.identifier()) {
        logger_.error("frontmost is Velmorand itself");
        return std::unexpected(WindowOperationError::velmorandIsFrontmost);
    }
    if (identifier && std::ranges::count(preferencesStore_->current().ignoredApps, *identifier) > 0)
        return std::unexpected(WindowOperationError::ignored(application->localizedName.value_or(*identifier)));
    return *application;
}

std::expected<Rect, WindowOperationError> WindowManager::targetFrame(WindowAction action, const Rect& current) const {
    const auto target =
        screenGeometryProvider_->targetFrame(action, current, layoutOptions(preferencesStore_->current()));
    if (!target) {
        logger_.error("no target frame for {}", rawValue(action));
        return std::unexpected(WindowOperationError::missingScreen);
    }
    logger_.info("target frame {}", describe(*target));
    return *target;
}

WindowManager::Outcome WindowManager::move(const Subject& subject, const Rect& target) {
    if (!axClient_->canSetFrame(subject.window.element))
        return std::unexpected(WindowOperationError::unsupportedWindow);
    const auto moved = moveAtOnce(subject.window, target);
    if (!moved) return std::unexpected(moved.error());
    record(subject, subject.frame, moved->final.value_or(target));
    return {};
}

WindowManager::Outcome WindowManager::restore(const Subject& subject) {
    const auto remembered = restoreTracker_.restoreFrame(subject.pid, subject.window);
    if (!remembered) return std::unexpected(WindowOperationError::missingRestoreFrame);
    const Rect target = clampedToItsScreen(*remembered);
    if (!axClient_->canSetFrame(subject.window.element))
        return std::unexpected(WindowOperationError::unsupportedWindow);
    const auto moved = moveAtOnce(subject.window, target);
    if (!moved) return std::unexpected(moved.error());
    if (moved->landed) restoreTracker_.setEntry(subject.pid, subject.window, std::nullopt);
    return {};
}

Rect WindowManager::clampedToItsScreen(const Rect& frame) const {
    if (!preferencesStore_->current().clampToVisibleArea) return frame;
    const auto screen = screenForFrame(frame, screenGeometryProvider_->screens());
    return screen ? clamped(frame, screen->axVisibleFrame) : frame;
}

std::expected<FrameOutcome, WindowOperationError> WindowManager::moveAtOnce(const WindowKey& window,
                                                                            const Rect& target) {
    auto outcome = axClient_->setFrame(window.element, target);
    if (outcome && !outcome->landed) report(windowDidNotMoveMessage);
    return outcome;
}

void WindowManager::record(const Subject& subject, const Rect& source, const Rect& applied) {
    const auto entry = restoreTracker_.entry(subject.pid, subject.window);
    const bool stillWhereItWasPut = entry && framesMatch(entry->lastAppliedFrame, source);
    restoreTracker_.setEntry(
        subject.pid, subject.window,
        RestoreTracker<WindowKey>::Entry{.restoreFrame = stillWhereItWasPut ? entry->restoreFrame : source,
                                         .lastAppliedFrame = applied,
                                         .updatedAt = platform_.runLoop.date()});
}

bool WindowManager::isAlive(const WindowKey& window) const {
    platform_.accessibility.setMessagingTimeout(window.element, accessibilityMessagingTimeout);
    return platform_.accessibility.copyAttributeValue(window.element, ax_attribute::role).has_value();
}

void WindowManager::report(std::string_view message) const {
    if (onFailure_) onFailure_(message);
}

}  // namespace velmorand

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
      animationDriver_(axClient_, platform.runLoop, platform.log),
      restoreTracker_(restoreEntryLifetime, [&runLoop = platform.runLoop] { return runLoop.date(); }),
      platform_(platform),
      logger_(platform.log, "windows") {
    observeDesktop();
}

WindowManager::~WindowManager() = default;

void WindowManager::observeDesktop() {
    NotificationCenter& workspace = platform_.workspaceNotificationCenter;
    terminationToken_.emplace(
        workspace,
        workspace.addObserver(NotificationName::applicationTerminated, [this](const Notification& notification) {
            if (!notification.pid) return;
            const auto isItsOwn = [&](const auto& entry) { return entry.second.pid == *notification.pid; };
            restoreTracker_.forget(*notification.pid);
            std::erase_if(pendingRestoreSourceFrames_, isItsOwn);
            std::erase_if(anchorsOnTheWayBack_, isItsOwn);
        }));
    NotificationCenter& application = platform_.defaultNotificationCenter;
    screenChangeToken_.emplace(application, application.addObserver(NotificationName::screenParametersChanged,
                                                                    [this](const Notification& /*notification*/) {
                                                                        animationDriver_.cancelAll();
                                                                    }));
}

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
    const WindowKey key{*window};
    const Rect current = animationDriver_.runningTarget(key).value_or(*frame);
    logger_.info("current frame {}", describe(current));
    return Subject{application->pid, key, current};
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
    const auto anchor = anchorOf(subject.window);
    const Move move{subject.pid, subject.window, anchor, anchor ? anchor->frame : subject.frame, target};
    return animatesMoves() ? moveAnimated(move) : moveAtOnce(move);
}

WindowManager::Outcome WindowManager::moveAtOnce(const Move& move) {
    animationDriver_.cancel(move.window);
    const auto moved = axClient_->setFrame(move.window.element, move.target);
    if (!moved) {
        putBack(move.window, move.anchor);
        return std::unexpected(moved.error());
    }
    if (!moved->landed) report(windowDidNotMoveMessage);
    record(move, moved->final.value_or(move.target));
    dropAnchor(move.window, move.source);
    return {};
}

WindowManager::Outcome WindowManager::moveAnimated(const Move& move) {
    animationDriver_.cancel(move.window);
    pendingRestoreSourceFrames_.insert_or_assign(move.window, PendingRestoreAnchor{move.pid, move.source});
    const double duration = preferencesStore_->current().animationDuration;
    if (duration <= 0) {
        moveInOneStep(move);
        return {};
    }
    const auto start = axClient_->readFrame(move.window.element);
    if (!start) {
        dropAnchor(move.window, move.source);
        putBack(move.window, move.anchor);
        return std::unexpected(start.error());
    }
    animationDriver_.animate(move.window, *start, move.target, duration,
                             [this, move](const AnimationCompletion& completion) { completeMove(move, completion); });
    return {};
}

void WindowManager::moveInOneStep(const Move& move) {
    const auto written = writeWithoutCheck(move.window, move.target);
    if (written) record(move, axClient_->readFrame(move.window.element).value_or(move.target));
    dropAnchor(move.window, move.source);
    if (!written) report(written.error().description());
}

/// An animated move that fails is not recorded, other than one at once: the window may be anywhere on its way.
void WindowManager::completeMove(const Move& move, const AnimationCompletion& completion) {
    if (std::holds_alternative<AnimationLanded>(completion)) record(move, move.target);
    dropAnchor(move.window, move.source);
    if (const auto* failed = std::get_if<AnimationFailed>(&completion)) report(failed->message);
}

WindowManager::Outcome WindowManager::restore(const Subject& subject) {
    const auto anchor = anchorOf(subject.window);
    const auto remembered = anchor ? anchor->frame : restoreTracker_.restoreFrame(subject.pid, subject.window);
    if (!remembered) return std::unexpected(WindowOperationError::missingRestoreFrame);
    pendingRestoreSourceFrames_.erase(subject.window);
    const Return back{subject.pid, subject.window, anchor, clampedToItsScreen(*remembered)};
    if (!axClient_->canSetFrame(subject.window.element)) {
        putBack(back.window, back.anchor);
        return std::unexpected(WindowOperationError::unsupportedWindow);
    }
    animationDriver_.cancel(subject.window);
    return animatesMoves() ? returnAnimated(back) : returnAtOnce(back);
}

WindowManager::Outcome WindowManager::returnAtOnce(const Return& back) {
    const auto moved = axClient_->setFrame(back.window.element, back.target);
    if (!moved) {
        putBack(back.window, back.anchor);
        return std::unexpected(moved.error());
    }
    completeReturn(back, moved->landed ? AnimationCompletion(AnimationLanded{})
                                       : AnimationFailed{std::string(windowDidNotMoveMessage)});
    return {};
}

WindowManager::Outcome WindowManager::returnAnimated(const Return& back) {
    const double duration = preferencesStore_->current().animationDuration;
    if (duration <= 0) {
        const auto written = writeWithoutCheck(back.window, back.target);
        completeReturn(back, written ? AnimationCompletion(AnimationLanded{})
                                     : AnimationFailed{written.error().description()});
        return {};
    }
    const auto start = axClient_->readFrame(back.window.element);
    if (!start) {
        putBack(back.window, back.anchor);
        return std::unexpected(start.error());
    }
    if (back.anchor) anchorsOnTheWayBack_.insert_or_assign(back.window, *back.anchor);
    animationDriver_.animate(back.window, *start, back.target, duration,
                             [this, back](const AnimationCompletion& completion) {
                                 Return ended = back;
                                 ended.anchor = takeAnchorOnTheWayBack(back.window);
                                 completeReturn(ended, completion);
                             });
    return {};
}

/// A restore that lands uses up everything that is remembered of the window; any other can be tried again.
void WindowManager::completeReturn(const Return& back, const AnimationCompletion& completion) {
    if (std::holds_alternative<AnimationLanded>(completion)) {
        restoreTracker_.setEntry(back.pid, back.window, std::nullopt);
        pendingRestoreSourceFrames_.erase(back.window);
    } else {
        putBack(back.window, back.anchor);
    }
    if (const auto* failed = std::get_if<AnimationFailed>(&completion)) report(failed->message);
}

bool WindowManager::animatesMoves() const {
    return preferencesStore_->current().enableAnimations &&
           !platform_.workspace.accessibilityDisplayShouldReduceMotion();
}

std::optional<PendingRestoreAnchor> WindowManager::anchorOf(const WindowKey& window) const {
    const auto found = pendingRestoreSourceFrames_.find(window);
    return found == pendingRestoreSourceFrames_.end() ? std::nullopt : std::optional(found->second);
}

/// Only the anchor with exactly this frame: a later move may have left another one.
void WindowManager::dropAnchor(const WindowKey& window, const Rect& frame) {
    const auto found = pendingRestoreSourceFrames_.find(window);
    if (found != pendingRestoreSourceFrames_.end() && found->second.frame == frame)
        pendingRestoreSourceFrames_.erase(found);
}

void WindowManager::putBack(const WindowKey& window, const std::optional<PendingRestoreAnchor>& anchor) {
    if (anchor) pendingRestoreSourceFrames_.insert_or_assign(window, *anchor);
}

/// Absent also when the application has ended in the meantime.
std::optional<PendingRestoreAnchor> WindowManager::takeAnchorOnTheWayBack(const WindowKey& window) {
    const auto node = anchorsOnTheWayBack_.extract(window);
    return node.empty() ? std::nullopt : std::optional(node.mapped());
}

WindowManager::Outcome WindowManager::writeWithoutCheck(const WindowKey& window, const Rect& frame) const {
    if (auto moved = axClient_->setPosition(window.element, frame.origin()); !moved) return moved;
    return axClient_->setSize(window.element, frame.size());
}

Rect WindowManager::clampedToItsScreen(const Rect& frame) const {
    if (!preferencesStore_->current().clampToVisibleArea) return frame;
    const auto screen = screenForFrame(frame, screenGeometryProvider_->screens());
    return screen ? clamped(frame, screen->axVisibleFrame) : frame;
}

void WindowManager::record(const Move& move, const Rect& applied) {
    const auto entry = restoreTracker_.entry(move.pid, move.window);
    const bool stillWhereItWasPut = entry && framesMatch(entry->lastAppliedFrame, move.source);
    restoreTracker_.setEntry(
        move.pid, move.window,
        RestoreTracker<WindowKey>::Entry{.restoreFrame = stillWhereItWasPut ? entry->restoreFrame : move.source,
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

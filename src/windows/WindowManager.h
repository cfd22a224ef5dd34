#pragma once

#include "base/Rect.h"
#include "platform/AXElement.h"
#include "platform/Logger.h"
#include "windows/NotificationToken.h"
#include "windows/RestoreTracker.h"
#include "windows/WindowAction.h"
#include "windows/WindowAnimationDriver.h"
#include "windows/WindowKey.h"
#include "windows/WindowOperationError.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace velmorand {

class Accessibility;
class AXWindowClient;
class Bundle;
class PermissionsManager;
class PreferencesStore;
class RunLoop;
class ScreenGeometryProvider;
class Workspace;
struct RunningApplication;

/// The services of the platform that the window manager asks directly.
struct WindowManagerPlatform {
    Accessibility& accessibility;
    Workspace& workspace;
    NotificationCenter& workspaceNotificationCenter;
    NotificationCenter& defaultNotificationCenter;
    const Bundle& bundle;
    RunLoop& runLoop;
    Log& log;
};

/// Where a window was before an animated move that has started and is not recorded yet.
struct PendingRestoreAnchor {
    std::int32_t pid = 0;
    Rect frame;

    bool operator==(const PendingRestoreAnchor&) const = default;
};

/// Performs window actions on the focused window of the frontmost application: every check, the target frame,
/// the move, at once or animated, and the memory of where the window was. Main thread only.
class WindowManager {
public:
    /// Success, or why the action was refused.
    using Outcome = std::expected<void, WindowOperationError>;

    WindowManager(std::shared_ptr<PermissionsManager> permissionsManager,
                  std::shared_ptr<PreferencesStore> preferencesStore,
                  std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider,
                  std::shared_ptr<AXWindowClient> axClient, const WindowManagerPlatform& platform);

    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;
    ~WindowManager();

    /// Performs `action`. Success means that the move was issued or its animation started, also when the window then
    /// did not end at its target; every refusal and every move that did not land is also told through `onFailure`.
    Outcome perform(WindowAction action);

    /// Told the sentence that the user should see when an action was refused or a move did not land.
    void setOnFailure(std::function<void(std::string_view message)> onFailure) { onFailure_ = std::move(onFailure); }

    /// Whether any window of this application has a frame to return to, however old.
    [[nodiscard]] bool hasRestoreEntry(std::int32_t pid) const { return restoreTracker_.hasEntry(pid); }

private:
    /// The window an action works on.
    struct Subject {
        std::int32_t pid = 0;
        WindowKey window;
        Rect frame;  ///< where the window is, or where its running animation takes it
    };

    /// A move of a window to its target, and the frame that a later restore returns to.
    struct Move {
        std::int32_t pid = 0;
        WindowKey window;
        std::optional<PendingRestoreAnchor> anchor;  ///< the source comes from it; it is kept when the move is refused
        Rect source;
        Rect target;
    };

    /// A move back to a remembered frame.
    struct Return {
        std::int32_t pid = 0;
        WindowKey window;
        std::optional<PendingRestoreAnchor> anchor;  ///< the frame comes from it; it is put back when the move fails
        Rect target;
    };

    void observeDesktop();

    Outcome run(WindowAction action);
    Outcome requireTrust();
    Outcome requireTwoDisplays(WindowAction action) const;
    [[nodiscard]] std::expected<Subject, WindowOperationError> subject() const;
    [[nodiscard]] std::expected<RunningApplication, WindowOperationError> arrangeableApplication() const;
    [[nodiscard]] std::expected<Rect, WindowOperationError> targetFrame(WindowAction action, const Rect& current) const;

    Outcome move(const Subject& subject, const Rect& target);
    Outcome moveAtOnce(const Move& move);
    Outcome moveAnimated(const Move& move);
    void moveInOneStep(const Move& move);
    void completeMove(const Move& move, const AnimationCompletion& completion);

    Outcome restore(const Subject& subject);
    Outcome returnAtOnce(const Return& back);
    Outcome returnAnimated(const Return& back);
    void completeReturn(const Return& back, const AnimationCompletion& completion);

    [[nodiscard]] bool animatesMoves() const;
    [[nodiscard]] std::optional<PendingRestoreAnchor> anchorOf(const WindowKey& window) const;
    void dropAnchor(const WindowKey& window, const Rect& frame);
    void putBack(const WindowKey& window, const std::optional<PendingRestoreAnchor>& anchor);
    [[nodiscard]] std::optional<PendingRestoreAnchor> takeAnchorOnTheWayBack(const WindowKey& window);
    [[nodiscard]] Outcome writeWithoutCheck(const WindowKey& window, const Rect& frame) const;
    [[nodiscard]] Rect clampedToItsScreen(const Rect& frame) const;
    void record(const Move& move, const Rect& applied);

    [[nodiscard]] bool isAlive(const WindowKey& window) const;
    void report(std::string_view message) const;

    std::shared_ptr<PermissionsManager> permissionsManager_;
    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider_;
    std::shared_ptr<AXWindowClient> axClient_;
    WindowAnimationDriver animationDriver_;
    RestoreTracker<WindowKey> restoreTracker_;
    std::unordered_map<WindowKey, PendingRestoreAnchor> pendingRestoreSourceFrames_;
    /// Those that a running restore has taken, to be put back if it does not land.
    std::unordered_map<WindowKey, PendingRestoreAnchor> anchorsOnTheWayBack_;
    std::optional<NotificationToken> terminationToken_;
    std::optional<NotificationToken> screenChangeToken_;
    std::function<void(std::string_view)> onFailure_;
    WindowManagerPlatform platform_;
    Logger logger_;
};

}  // namespace velmorand

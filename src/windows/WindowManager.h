#pragma once

#include "base/Rect.h"
#include "platform/AXElement.h"
#include "platform/Logger.h"
#include "windows/NotificationToken.h"
#include "windows/RestoreTracker.h"
#include "windows/WindowAction.h"
#include "windows/WindowKey.h"
#include "windows/WindowOperationError.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace velmorand {

class Accessibility;
class AXWindowClient;
class Bundle;
class PermissionsManager;
class PreferencesStore;
class RunLoop;
class ScreenGeometryProvider;
class Workspace;
struct FrameOutcome;
struct RunningApplication;

/// The services of the platform that the window manager asks directly.
struct WindowManagerPlatform {
    Accessibility& accessibility;
    Workspace& workspace;
    NotificationCenter& workspaceNotificationCenter;
    const Bundle& bundle;
    RunLoop& runLoop;
    Log& log;
};

/// Performs window actions on the focused window of the frontmost application: every check, the target frame,
/// the move, and the memory of where the window was. Main thread only.
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

    /// Performs `action`. Success means that the move was issued, also when the window then did not end at its
    /// target; every refusal and every move that did not land is also told through `onFailure`.
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
        Rect frame;  ///< where the window is
    };

    Outcome run(WindowAction action);
    Outcome requireTrust();
    Outcome requireTwoDisplays(WindowAction action) const;
    [[nodiscard]] std::expected<Subject, WindowOperationError> subject() const;
    [[nodiscard]] std::expected<RunningApplication, WindowOperationError> arrangeableApplication() const;
    [[nodiscard]] std::expected<Rect, WindowOperationError> targetFrame(WindowAction action, const Rect& current) const;

    Outcome move(const Subject& subject, const Rect& target);
    Outcome restore(const Subject& subject);
    [[nodiscard]] Rect clampedToItsScreen(const Rect& frame) const;
    [[nodiscard]] std::expected<FrameOutcome, WindowOperationError> moveAtOnce(const WindowKey& window,
                                                                               const Rect& target);
    void record(const Subject& subject, const Rect& source, const Rect& applied);

    [[nodiscard]] bool isAlive(const WindowKey& window) const;
    void report(std::string_view message) const;

    std::shared_ptr<PermissionsManager> permissionsManager_;
    std::shared_ptr<PreferencesStore> preferencesStore_;
    std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider_;
    std::shared_ptr<AXWindowClient> axClient_;
    RestoreTracker<WindowKey> restoreTracker_;
    std::optional<NotificationToken> terminationToken_;
    std::function<void(std::string_view)> onFailure_;
    WindowManagerPlatform platform_;
    Logger logger_;
};

}  // namespace velmorand

#pragma once

#include "base/Published.h"
#include "base/ThreadChecker.h"

namespace velmorand {

class Accessibility;
class Workspace;

/// Holds the last answer to "may this program move other applications' windows". It does not watch the system by
/// itself: its users refresh it when they need it. Main thread only.
class PermissionsManager {
public:
    /// Starts with the answer of this moment, without a prompt. Both must outlive it.
    PermissionsManager(Accessibility& accessibility, Workspace& workspace);

    PermissionsManager(const PermissionsManager&) = delete;
    PermissionsManager& operator=(const PermissionsManager&) = delete;
    ~PermissionsManager() = default;

    /// The published answer.
    [[nodiscard]] Published<bool>& isTrusted() { return isTrusted_; }

    /// Asks the system again.
    void refresh();

    /// Asks the system again and has it tell the user what is missing when the answer is no.
    void refreshWithPrompt();

    /// Does so and opens the settings in which the user can give access, whatever the answer.
    void requestAccess();

    /// Opens the settings in which the user can give access.
    void openAccessibilitySettings();

private:
    Published<bool> isTrusted_;
    Accessibility& accessibility_;
    Workspace& workspace_;
    ThreadChecker thread_;
};

}  // namespace velmorand

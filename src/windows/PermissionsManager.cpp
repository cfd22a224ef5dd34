#include "windows/PermissionsManager.h"

#include "platform/Accessibility.h"
#include "platform/Workspace.h"

#include <cassert>

namespace velmorand {

PermissionsManager::PermissionsManager(Accessibility& accessibility, Workspace& workspace)
    : isTrusted_(accessibility.isProcessTrusted()), accessibility_(accessibility), workspace_(workspace) {}

void PermissionsManager::refresh() {
    assert(thread_.isCurrent());
    isTrusted_.set(accessibility_.isProcessTrusted());
}

void PermissionsManager::refreshWithPrompt() {
    assert(thread_.isCurrent());
    isTrusted_.set(accessibility_.isProcessTrustedWithPrompt());
}

void PermissionsManager::requestAccess() {
    refreshWithPrompt();
    openAccessibilitySettings();
}

void PermissionsManager::openAccessibilitySettings() {
    assert(thread_.isCurrent());
    workspace_.openAccessibilitySettings();
}

}  // namespace velmorand

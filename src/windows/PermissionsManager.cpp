#include "windows/PermissionsManager.h"

#include "platform/Accessibility.h"

namespace velmorand {

PermissionsManager::PermissionsManager(Accessibility& accessibility)
    : isTrusted_(accessibility.isProcessTrusted()), accessibility_(accessibility) {}

void PermissionsManager::refresh() {
    isTrusted_.set(accessibility_.isProcessTrusted());
}

void PermissionsManager::refreshWithPrompt() {
    isTrusted_.set(accessibility_.isProcessTrustedWithPrompt());
}

}  // namespace velmorand

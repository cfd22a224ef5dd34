#include "windows/PermissionsManager.h"

#include "platform/Accessibility.h"

#include <cassert>

namespace velmorand {

PermissionsManager::PermissionsManager(Accessibility& accessibility)
    : isTrusted_(accessibility.isProcessTrusted()), accessibility_(accessibility) {}

void PermissionsManager::refresh() {
    assert(thread_.isCurrent());
    isTrusted_.set(accessibility_.isProcessTrusted());
}

void PermissionsManager::refreshWithPrompt() {
    assert(thread_.isCurrent());
    isTrusted_.set(accessibility_.isProcessTrustedWithPrompt());
}

}  // namespace velmorand

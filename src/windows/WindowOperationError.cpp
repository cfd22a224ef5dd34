#include "windows/WindowOperationError.h"

#include <utility>

namespace velmorand {

std::string WindowOperationError::description() const {
    switch (case_) {
        case ignoredApplication: return payload_ + " is ignored.";
        case axFailure: return payload_;
        case accessibilityPermissionMissing: return "Accessibility permission is required.";
        case noFrontmostApplication: return "No frontmost application is available.";
        case velmorandIsFrontmost: return "Select another app's window, then try again.";
        case noFocusedWindow: return "No focused window is available.";
        case unsupportedWindow: return "This window does not support resizing.";
        case missingWindowFrame: return "Could not read the window frame.";
        case missingScreen: return "Could not find a matching display.";
        case displayMoveUnavailable: return "Only one display is connected.";
        case missingRestoreFrame: return "No previous frame is available to restore.";
    }
    std::unreachable();
}

}  // namespace velmorand

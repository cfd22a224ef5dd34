#pragma once

#include "base/Rect.h"
#include "windows/ManagedScreen.h"
#include "windows/WindowAction.h"

#include <optional>
#include <span>

namespace velmorand {

/// The user's layout settings.
struct LayoutOptions {
    double outerPadding = 0;  ///< points between a placed window and the screen edge
    double innerGap = 0;      ///< points between neighbouring placed windows
    /// Lay out in the visible frame and keep results inside it; otherwise lay out in the whole display.
    bool clampToVisibleArea = true;

    bool operator==(const LayoutOptions&) const = default;
};

/// The frame that `action` gives a window whose frame is `current`, on whole points. `screens` is in traversal
/// order. Absent when there is no target: no screen, `restore`, or a display move without another screen to go
/// to or from an empty area.
[[nodiscard]] std::optional<Rect> targetFrame(WindowAction action, const Rect& current, const LayoutOptions& options,
                                              std::span<const ManagedScreen> screens);

}  // namespace velmorand

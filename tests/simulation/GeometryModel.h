#pragma once

#include "base/Rect.h"
#include "platform/Displays.h"
#include "windows/WindowAction.h"

#include <optional>
#include <vector>

/// Where windows have to go, written down a second time and as plainly as possible. It shares nothing with the product
/// but plain values, so that a mistake would have to be made twice.
namespace velmorand::simulation {

/// A display as actions see it: the origin is the upper left corner of the primary display, y grows downward.
struct ModelScreen {
    std::int64_t number = 0;
    Rect whole;
    /// What panels leave free.
    Rect visible;
};

/// The user's layout settings.
struct ModelLayout {
    double padding = 0;
    double gap = 0;
    bool clamps = true;
};

/// From left to right and, where left edges are equal, from top to bottom.
[[nodiscard]] std::vector<ModelScreen> modelScreens(const std::vector<DisplayDescription>& displays);

/// The place in the list of the screen that a window with this frame is on; absent when there is no screen.
[[nodiscard]] std::optional<std::size_t> modelScreenOf(const Rect& frame, const std::vector<ModelScreen>& screens);

/// Where the action puts a window; absent when it cannot.
[[nodiscard]] std::optional<Rect> modelTarget(WindowAction action, const Rect& current, const ModelLayout& layout,
                                              const std::vector<ModelScreen>& screens);

/// The frame made no larger than the area and moved into it.
[[nodiscard]] Rect modelClamped(Rect frame, const Rect& area);

/// Where a restore puts a window that had this frame.
[[nodiscard]] Rect modelReturn(const Rect& frame, bool clamps, const std::vector<ModelScreen>& screens);

/// Whether each of left, top, width and height is off by 2 points at most.
[[nodiscard]] bool modelSame(const Rect& one, const Rect& other);

}  // namespace velmorand::simulation

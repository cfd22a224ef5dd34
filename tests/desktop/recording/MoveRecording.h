#pragma once

#include "desktop/harness/PixelRect.h"

#include <string>
#include <vector>

namespace velmorand::desktop {

/// A frame of the window and when it was seen.
struct TimedFrame {
    /// After the shortcut was pressed.
    double milliseconds = 0;
    /// From the primary display's top-left corner, in pixels.
    PixelRect frame;
};

/// One animated move from its shortcut to its end.
struct MoveRecording {
    std::string windowManager;
    /// As the settings have it, in milliseconds.
    double duration = 0;
    PixelRect start;
    PixelRect target;
    /// What the window manager was asked for, one for each tick.
    std::vector<TimedFrame> requested = {};
    /// What the user saw: each frame that the window had, from when on.
    std::vector<TimedFrame> seen = {};
};

/// When the move began, in milliseconds after the press: the first request lies one tick behind it.
[[nodiscard]] double beginningOf(const MoveRecording& recording);

/// The requests, the frames and the easing curve over time, as an SVG picture.
[[nodiscard]] std::string pictureOf(const MoveRecording& recording);

/// The page that shows the picture at \p pictureName and lists the frames.
[[nodiscard]] std::string pageOf(const MoveRecording& recording, const std::string& pictureName);

}  // namespace velmorand::desktop

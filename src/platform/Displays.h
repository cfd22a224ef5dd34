#pragma once

#include "base/Rect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// One display as the window server describes it. Rectangles are in the window server's own coordinates: origin
/// at the bottom-left corner of the primary display, y growing upward, points.
struct DisplayDescription {
    /// The display's number ("NSScreenNumber"); absent when its description has none.
    std::optional<std::int64_t> number;
    std::string localizedName;
    Rect frame;
    /// The part of the frame that panels leave free.
    Rect visibleFrame;

    bool operator==(const DisplayDescription&) const = default;
};

/// The displays of the desktop. Main thread only. The list is read afresh at every call.
class Displays {
public:
    virtual ~Displays() = default;
    Displays(const Displays&) = delete;
    Displays& operator=(const Displays&) = delete;

    /// Primary display first; empty when no display is connected.
    [[nodiscard]] virtual std::vector<DisplayDescription> screens() = 0;

protected:
    Displays() = default;
};

}  // namespace velmorand

#pragma once

#include "base/Rect.h"
#include "platform/Displays.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velmorand {

/// One display as a test thinks of it: in the accessibility space, where the primary one starts at the origin.
struct TestDisplay {
    std::int64_t number = 0;
    std::string name;
    Rect axFrame;
    /// Points at the top that a panel covers.
    double panelHeight = 0;
};

/// The same displays as the window server describes them. The first is the primary one.
[[nodiscard]] std::vector<DisplayDescription> describedByWindowServer(const std::vector<TestDisplay>& displays);

/// 1440 by 900 points at the origin, the upper 25 under a panel.
[[nodiscard]] TestDisplay mainDisplay();
/// 1920 by 1080 points to the right of the main display, the upper 25 under a panel.
[[nodiscard]] TestDisplay rightDisplay();

}  // namespace velmorand

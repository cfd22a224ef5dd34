#pragma once

#include "desktop/demo/DemoActions.h"
#include "desktop/harness/PixelRect.h"

#include <map>
#include <optional>
#include <vector>

namespace velmorand::desktop {

/// By how much two frames may differ in each of their numbers and still count as the same.
inline constexpr int frameTolerance = 2;

/// Where a window has to be after an action, told in the plainest way from what the program promises, and independent
/// of its code. All rectangles have their origin at the primary display's top-left corner.
class DemoModel {
public:
    /// \p workAreas are the displays without their panels, from left to right.
    explicit DemoModel(std::vector<PixelRect> workAreas) : workAreas_(std::move(workAreas)) {}

    /// Absent when there is nothing to restore for \p window, a number of the caller's choice.
    [[nodiscard]] std::optional<PixelRect> wanted(int window, const DemoAction& action, const PixelRect& before) const;
    /// Remembers that \p action took \p window from \p before to \p after.
    void remember(int window, const DemoAction& action, const PixelRect& before, const PixelRect& after);

private:
    struct Memory {
        PixelRect beforeTheFirstAction;
        PixelRect afterTheLastAction;
    };

    [[nodiscard]] std::size_t displayOf(const PixelRect& frame) const;
    [[nodiscard]] PixelRect movedToDisplay(const PixelRect& frame, int offset) const;

    std::vector<PixelRect> workAreas_;
    std::map<int, Memory> memories_;
};

}  // namespace velmorand::desktop

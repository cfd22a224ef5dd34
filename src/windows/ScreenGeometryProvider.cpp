#include "windows/ScreenGeometryProvider.h"

#include "platform/Displays.h"

#include <algorithm>
#include <cassert>

namespace velmorand {
namespace {

/// From the window server's space (bottom-left origin) to the accessibility space. `referenceHeight` is the top
/// edge of the primary display in the former.
Rect flipped(const Rect& rect, double referenceHeight) {
    return {rect.minX(), referenceHeight - rect.maxY(), rect.width, rect.height};
}

bool leftToRightThenTopToBottom(const ManagedScreen& a, const ManagedScreen& b) {
    if (a.axFrame.minX() == b.axFrame.minX()) return a.axFrame.minY() < b.axFrame.minY();
    return a.axFrame.minX() < b.axFrame.minX();
}

}  // namespace

std::vector<ManagedScreen> ScreenGeometryProvider::screens() const {
    assert(thread_.isCurrent());
    const std::vector<DisplayDescription> displays = displays_.screens();
    std::vector<ManagedScreen> screens;
    if (displays.empty()) return screens;

    const double referenceHeight = displays.front().frame.maxY();
    for (const DisplayDescription& display : displays) {
        if (!display.number) continue;
        screens.push_back({static_cast<std::uint32_t>(*display.number), display.localizedName,
                           flipped(display.frame, referenceHeight), flipped(display.visibleFrame, referenceHeight)});
    }
    switch (traversalOrder_) {
        case DisplayTraversalOrder::spatialLeftToRightTopToBottom:
            std::ranges::stable_sort(screens, leftToRightThenTopToBottom);
    }
    return screens;
}

std::optional<Rect> ScreenGeometryProvider::targetFrame(WindowAction action, const Rect& current,
                                                        const LayoutOptions& options) const {
    return velmorand::targetFrame(action, current, options, screens());
}

}  // namespace velmorand

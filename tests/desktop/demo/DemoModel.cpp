#include "desktop/demo/DemoModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmorand::desktop {

namespace {

/// Rounds the four edges, so that neighbours that share an edge still share it.
PixelRect roundedEdges(double left, double top, double width, double height) {
    const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
    const int x = round(left);
    const int y = round(top);
    return {x, y, round(left + width) - x, round(top + height) - y};
}

PixelRect partOf(const PixelRect& area, const DemoFraction& part) {
    return roundedEdges(area.x + area.width * part.x, area.y + area.height * part.y, area.width * part.width,
                        area.height * part.height);
}

/// As large as fits, moved inside by the shortest way.
PixelRect keptInside(const PixelRect& area, const PixelRect& frame) {
    const int width = std::min(frame.width, area.width);
    const int height = std::min(frame.height, area.height);
    return {std::clamp(frame.x, area.x, area.right() - width), std::clamp(frame.y, area.y, area.bottom() - height),
            width, height};
}

PixelRect centredIn(const PixelRect& area, const PixelRect& frame) {
    const int width = std::min(frame.width, area.width);
    const int height = std::min(frame.height, area.height);
    return roundedEdges(area.x + (area.width - width) / 2.0, area.y + (area.height - height) / 2.0, width, height);
}

int overlap(const PixelRect& a, const PixelRect& b) {
    const int width = std::min(a.right(), b.right()) - std::max(a.x, b.x);
    const int height = std::min(a.bottom(), b.bottom()) - std::max(a.y, b.y);
    return std::max(width, 0) * std::max(height, 0);
}

}  // namespace

std::optional<PixelRect> DemoModel::wanted(int window, const DemoAction& action, const PixelRect& before) const {
    const auto& area = workAreas_[displayOf(before)];
    switch (action.kind) {
        case DemoKind::fraction: return partOf(area, action.fraction);
        case DemoKind::display: return movedToDisplay(before, action.displayOffset);
        case DemoKind::maximize: return area;
        case DemoKind::center: return centredIn(area, before);
        case DemoKind::restore: {
            const auto memory = memories_.find(window);
            if (memory == memories_.end()) return std::nullopt;
            const auto& frame = memory->second.beforeTheFirstAction;
            return keptInside(workAreas_[displayOf(frame)], frame);
        }
    }
    std::unreachable();
}

void DemoModel::remember(int window, const DemoAction& action, const PixelRect& before, const PixelRect& after) {
    if (action.kind == DemoKind::restore) {
        memories_.erase(window);
        return;
    }
    const auto [memory, isNew] = memories_.try_emplace(window, Memory{before, after});
    // Moved by hand since the last action: a new chain begins.
    if (!isNew && !framesAgree(memory->second.afterTheLastAction, before, frameTolerance)) {
        memory->second.beforeTheFirstAction = before;
    }
    memory->second.afterTheLastAction = after;
}

/// The display that shows most of the frame. The windows of the demo are never off all displays.
std::size_t DemoModel::displayOf(const PixelRect& frame) const {
    const auto most =
        std::ranges::max_element(workAreas_, {}, [&](const PixelRect& area) { return overlap(area, frame); });
    return static_cast<std::size_t>(most - workAreas_.begin());
}

PixelRect DemoModel::movedToDisplay(const PixelRect& frame, int offset) const {
    const auto count = static_cast<int>(workAreas_.size());
    const auto index = static_cast<int>(displayOf(frame));
    const auto& from = workAreas_[static_cast<std::size_t>(index)];
    const auto& to = workAreas_[static_cast<std::size_t>((index + offset + count) % count)];
    const double horizontal = static_cast<double>(to.width) / from.width;
    const double vertical = static_cast<double>(to.height) / from.height;
    return keptInside(to, roundedEdges(to.x + (frame.x - from.x) * horizontal, to.y + (frame.y - from.y) * vertical,
                                       frame.width * horizontal, frame.height * vertical));
}

}  // namespace velmorand::desktop

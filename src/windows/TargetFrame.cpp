#include "windows/TargetFrame.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace velmorand {
namespace {

/// An unrounded frame and the area it is clamped to.
struct Placement {
    Rect frame;
    Rect area;
};

Rect usableArea(const ManagedScreen& screen, const LayoutOptions& options) {
    const Rect& layout = options.clampToVisibleArea ? screen.axVisibleFrame : screen.axFrame;
    const double padding = options.outerPadding;
    return {layout.minX() + padding, layout.minY() + padding, std::max(0.0, layout.width - 2 * padding),
            std::max(0.0, layout.height - 2 * padding)};
}

struct Span {
    double start;
    double length;
};

/// A fraction of one axis. An edge inside the area gives up half the gap, an outer edge none; that is decided by
/// the fractions as computed, so that thirds which sum to exactly 1 reach the outer edge.
Span fractionOfAxis(double areaStart, double areaLength, double start, double length, double gap) {
    const double halfGap = gap * 0.5;
    Span span{areaStart + areaLength * start, areaLength * length};
    if (start > 0) {
        span.start += halfGap;
        span.length -= halfGap;
    }
    if (start + length < 1.0) span.length -= halfGap;
    span.length = std::max(0.0, span.length);
    return span;
}

Rect fractionOf(const Rect& area, const Fraction& fraction, double gap) {
    const Span horizontal = fractionOfAxis(area.minX(), area.width, fraction.x, fraction.width, gap);
    const Span vertical = fractionOfAxis(area.minY(), area.height, fraction.y, fraction.height, gap);
    return {horizontal.start, vertical.start, horizontal.length, vertical.length};
}

/// The same relative position and size in another area; what lies outside the one lies outside the other.
Rect mapped(const Rect& frame, const Rect& source, const Rect& target) {
    return {target.minX() + ((frame.minX() - source.minX()) / source.width) * target.width,
            target.minY() + ((frame.minY() - source.minY()) / source.height) * target.height,
            (frame.width / source.width) * target.width, (frame.height / source.height) * target.height};
}

Rect roundedToWholePoints(const Rect& rect) {
    const double minX = std::round(rect.minX());
    const double minY = std::round(rect.minY());
    return {minX, minY, std::max(0.0, std::round(rect.maxX()) - minX), std::max(0.0, std::round(rect.maxY()) - minY)};
}

/// Answers the unrounded placement for each kind of action.
class Placer {
public:
    Placer(const Rect& current, const ManagedScreen& screen, const LayoutOptions& options,
           std::span<const ManagedScreen> screens)
        : current_(current),
          screen_(screen),
          options_(options),
          screens_(screens),
          area_(usableArea(screen, options)) {}

    std::optional<Placement> operator()(const Fraction& fraction) const {
        return Placement{fractionOf(area_, fraction, options_.innerGap), area_};
    }

    std::optional<Placement> operator()(const MoveDisplay& move) const {
        const auto index = indexOfScreen(screen_, screens_);
        if (!index || screens_.size() < 2) return std::nullopt;
        const auto count = static_cast<std::ptrdiff_t>(screens_.size());
        const auto target = (static_cast<std::ptrdiff_t>(*index) + move.offset + count) % count;
        if (area_.width <= 0 || area_.height <= 0) return std::nullopt;
        const Rect targetArea = usableArea(screens_[static_cast<std::size_t>(target)], options_);
        return Placement{mapped(current_, area_, targetArea), targetArea};
    }

    std::optional<Placement> operator()(const Maximize&) const { return Placement{area_, area_}; }

    std::optional<Placement> operator()(const Center&) const {
        return Placement{centered(current_.size(), area_, options_.clampToVisibleArea), area_};
    }

    std::optional<Placement> operator()(const Restore&) const { return std::nullopt; }

private:
    const Rect& current_;
    const ManagedScreen& screen_;
    const LayoutOptions& options_;
    std::span<const ManagedScreen> screens_;
    Rect area_;
};

}  // namespace

std::optional<Rect> targetFrame(WindowAction action, const Rect& current, const LayoutOptions& options,
                                std::span<const ManagedScreen> screens) {
    const auto screen = screenForFrame(current, screens);
    if (!screen) return std::nullopt;
    const auto placement = std::visit(Placer(current, *screen, options, screens), kind(action));
    if (!placement) return std::nullopt;
    return roundedToWholePoints(options.clampToVisibleArea ? clamped(placement->frame, placement->area)
                                                           : placement->frame);
}

}  // namespace velmorand

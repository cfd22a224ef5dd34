#include "settings/WindowFrame.h"

#include <fmt/format.h>

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <tuple>

namespace velmorand {
namespace {

/// Beyond any desktop, and far from where sums overflow.
constexpr int farthest = 1'000'000;

std::int64_t coveredArea(const QRect& area, const QRect& frame) {
    const QRect covered = area.intersected(frame);
    return std::int64_t{covered.width()} * covered.height();
}

std::int64_t squaredDistance(const QRect& area, const QRect& frame) {
    const QPoint between = area.center() - frame.center();
    return std::int64_t{between.x()} * between.x() + std::int64_t{between.y()} * between.y();
}

int placedWithin(int start, int length, int areaStart, int areaLength) {
    return std::max(areaStart, std::min(start, areaStart + areaLength - length));
}

}  // namespace

std::string windowFrameText(const QRect& frame) {
    return fmt::format("{} {} {} {}", frame.x(), frame.y(), frame.width(), frame.height());
}

std::optional<QRect> windowFrameFromText(std::string_view text) {
    std::array<int, 4> numbers{};
    const char* position = text.data();
    const char* const end = text.data() + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) {
            if (position == end || *position != ' ') return std::nullopt;
            ++position;
        }
        const auto [next, error] = std::from_chars(position, end, numbers.at(i));
        if (error != std::errc{} || numbers.at(i) < -farthest || numbers.at(i) > farthest) return std::nullopt;
        position = next;
    }
    const QRect frame(numbers[0], numbers[1], numbers[2], numbers[3]);
    if (position != end || frame.isEmpty()) return std::nullopt;
    return frame;
}

QList<QRect> freeAreasOfDisplays() {
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens()) areas.append(screen->availableGeometry());
    return areas;
}

QRect windowFrameWithin(const QList<QRect>& areas, const QRect& frame, const QSize& smallest,
                        const QMargins& decorations) {
    const auto fit = [&](const QRect& area) {
        return std::tuple(coveredArea(area, frame), -squaredDistance(area, frame));
    };
    const auto best = std::ranges::max_element(areas, {}, fit);
    if (best == areas.end() || best->contains(frame)) return frame;
    const QRect area = best->marginsRemoved(decorations);
    const QSize size = frame.size().boundedTo(area.size()).expandedTo(smallest);
    return {placedWithin(frame.x(), size.width(), area.x(), area.width()),
            placedWithin(frame.y(), size.height(), area.y(), area.height()), size.width(), size.height()};
}

}  // namespace velmorand

#include "simulation/GeometryModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmorand::simulation {
namespace {

struct Part {
    double x;
    double y;
    double width;
    double height;
};

std::optional<Part> partOf(WindowAction action) {
    switch (action) {
        case WindowAction::leftHalf: return Part{0, 0, 1.0 / 2, 1};
        case WindowAction::rightHalf: return Part{1.0 / 2, 0, 1.0 / 2, 1};
        case WindowAction::topHalf: return Part{0, 0, 1, 1.0 / 2};
        case WindowAction::bottomHalf: return Part{0, 1.0 / 2, 1, 1.0 / 2};
        case WindowAction::topLeft: return Part{0, 0, 1.0 / 2, 1.0 / 2};
        case WindowAction::topRight: return Part{1.0 / 2, 0, 1.0 / 2, 1.0 / 2};
        case WindowAction::bottomLeft: return Part{0, 1.0 / 2, 1.0 / 2, 1.0 / 2};
        case WindowAction::bottomRight: return Part{1.0 / 2, 1.0 / 2, 1.0 / 2, 1.0 / 2};
        case WindowAction::leftThird: return Part{0, 0, 1.0 / 3, 1};
        case WindowAction::centerThird: return Part{1.0 / 3, 0, 1.0 / 3, 1};
        case WindowAction::rightThird: return Part{2.0 / 3, 0, 1.0 / 3, 1};
        case WindowAction::leftTwoThirds: return Part{0, 0, 2.0 / 3, 1};
        case WindowAction::centerTwoThirds: return Part{1.0 / 6, 0, 2.0 / 3, 1};
        case WindowAction::rightTwoThirds: return Part{1.0 / 3, 0, 2.0 / 3, 1};
        case WindowAction::nextDisplay:
        case WindowAction::previousDisplay:
        case WindowAction::maximizeWindow:
        case WindowAction::centerWindow:
        case WindowAction::restore: return std::nullopt;
    }
    std::unreachable();
}

/// How much of two frames is common; 0 for frames that only touch.
double commonArea(const Rect& one, const Rect& other) {
    const double width = std::min(one.x + one.width, other.x + other.width) - std::max(one.x, other.x);
    const double height = std::min(one.y + one.height, other.y + other.height) - std::max(one.y, other.y);
    return width > 0 && height > 0 ? width * height : 0;
}

double distanceFrom(double x, double y, const Rect& rect) {
    double dx = 0;
    if (x < rect.x) dx = rect.x - x;
    if (x > rect.x + rect.width) dx = x - (rect.x + rect.width);
    double dy = 0;
    if (y < rect.y) dy = rect.y - y;
    if (y > rect.y + rect.height) dy = y - (rect.y + rect.height);
    return std::sqrt(dx * dx + dy * dy);
}

Rect usable(const ModelScreen& screen, const ModelLayout& layout) {
    Rect area = layout.clamps ? screen.visible : screen.whole;
    area.x += layout.padding;
    area.y += layout.padding;
    area.width -= 2 * layout.padding;
    area.height -= 2 * layout.padding;
    area.width = std::max(area.width, 0.0);
    area.height = std::max(area.height, 0.0);
    return area;
}

Rect placed(const Part& part, const Rect& area, double gap) {
    const double half = gap * 0.5;
    Rect frame{area.x + area.width * part.x, area.y + area.height * part.y, area.width * part.width,
               area.height * part.height};
    if (part.x > 0) {
        frame.x += half;
        frame.width -= half;
    }
    if (part.x + part.width < 1.0) frame.width -= half;
    if (part.y > 0) {
        frame.y += half;
        frame.height -= half;
    }
    if (part.y + part.height < 1.0) frame.height -= half;
    frame.width = std::max(frame.width, 0.0);
    frame.height = std::max(frame.height, 0.0);
    return frame;
}

Rect inTheMiddle(const Rect& current, const Rect& area, bool clamps) {
    double width = current.width;
    double height = current.height;
    if (clamps && width > area.width) width = area.width;
    if (clamps && height > area.height) height = area.height;
    return {area.x + (area.width - width) * 0.5, area.y + (area.height - height) * 0.5, width, height};
}

Rect carriedOver(const Rect& current, const Rect& from, const Rect& to) {
    return {to.x + ((current.x - from.x) / from.width) * to.width,
            to.y + ((current.y - from.y) / from.height) * to.height, (current.width / from.width) * to.width,
            (current.height / from.height) * to.height};
}

Rect onWholePoints(const Rect& frame) {
    const double left = std::round(frame.x);
    const double top = std::round(frame.y);
    const double right = std::round(frame.x + frame.width);
    const double bottom = std::round(frame.y + frame.height);
    return {left, top, right > left ? right - left : 0, bottom > top ? bottom - top : 0};
}

}  // namespace

std::vector<ModelScreen> modelScreens(const std::vector<DisplayDescription>& displays) {
    std::vector<ModelScreen> screens;
    if (displays.empty()) return screens;
    const double top = displays[0].frame.y + displays[0].frame.height;
    for (const DisplayDescription& display : displays) {
        if (!display.number) continue;
        Rect whole = display.frame;
        whole.y = top - (display.frame.y + display.frame.height);
        Rect visible = display.visibleFrame;
        visible.y = top - (display.visibleFrame.y + display.visibleFrame.height);
        std::size_t place = screens.size();
        const auto comesBefore = [&](const ModelScreen& other) {
            return whole.x < other.whole.x || (whole.x == other.whole.x && whole.y < other.whole.y);
        };
        while (place > 0 && comesBefore(screens[place - 1])) --place;
        screens.insert(screens.begin() + static_cast<std::ptrdiff_t>(place), {*display.number, whole, visible});
    }
    return screens;
}

std::optional<std::size_t> modelScreenOf(const Rect& frame, const std::vector<ModelScreen>& screens) {
    if (screens.empty()) return std::nullopt;
    std::size_t best = 0;
    for (std::size_t i = 1; i < screens.size(); ++i) {
        if (commonArea(screens[i].visible, frame) > commonArea(screens[best].visible, frame)) best = i;
    }
    if (commonArea(screens[best].visible, frame) > 0) return best;
    best = 0;
    const double x = frame.x + frame.width * 0.5;
    const double y = frame.y + frame.height * 0.5;
    for (std::size_t i = 1; i < screens.size(); ++i) {
        if (distanceFrom(x, y, screens[i].visible) < distanceFrom(x, y, screens[best].visible)) best = i;
    }
    return best;
}

std::optional<Rect> modelTarget(WindowAction action, const Rect& current, const ModelLayout& layout,
                                const std::vector<ModelScreen>& screens) {
    const auto screen = modelScreenOf(current, screens);
    if (!screen || action == WindowAction::restore) return std::nullopt;
    Rect area = usable(screens[*screen], layout);
    Rect frame = area;
    if (const auto part = partOf(action)) frame = placed(*part, area, layout.gap);
    if (action == WindowAction::centerWindow) frame = inTheMiddle(current, area, layout.clamps);
    if (action == WindowAction::nextDisplay || action == WindowAction::previousDisplay) {
        if (screens.size() < 2 || area.width <= 0 || area.height <= 0) return std::nullopt;
        const std::size_t steps = action == WindowAction::nextDisplay ? 1 : screens.size() - 1;
        const Rect from = area;
        area = usable(screens[(*screen + steps) % screens.size()], layout);
        frame = carriedOver(current, from, area);
    }
    return onWholePoints(layout.clamps ? modelClamped(frame, area) : frame);
}

Rect modelClamped(Rect frame, const Rect& area) {
    frame.width = std::min(frame.width, area.width);
    frame.height = std::min(frame.height, area.height);
    frame.x = std::min(std::max(frame.x, area.x), area.x + area.width - frame.width);
    frame.y = std::min(std::max(frame.y, area.y), area.y + area.height - frame.height);
    return frame;
}

Rect modelReturn(const Rect& frame, bool clamps, const std::vector<ModelScreen>& screens) {
    const auto screen = modelScreenOf(frame, screens);
    return clamps && screen ? modelClamped(frame, screens[*screen].visible) : frame;
}

bool modelSame(const Rect& one, const Rect& other) {
    return std::abs(one.x - other.x) <= 2 && std::abs(one.y - other.y) <= 2 && std::abs(one.width - other.width) <= 2 &&
           std::abs(one.height - other.height) <= 2;
}

}  // namespace velmorand::simulation

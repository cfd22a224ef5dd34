#include "platform/linux/x11/X11WorkAreas.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace velmorand {
namespace {

/// A band must leave at least this much of a monitor, in pixels and as a part of its length on that axis.
constexpr double smallestWorkArea = 100;
constexpr double smallestWorkAreaPart = 0.3;

constexpr std::size_t wholeStrutItems = 4;
constexpr std::size_t partialStrutItems = 12;

using Edge = X11Strut::Edge;

/// The edges in the order of the property's items.
constexpr std::array edges{Edge::left, Edge::right, Edge::top, Edge::bottom};

/// `start` and `end` run along the edge and both belong to the band.
Rect bandAt(Edge edge, double thickness, double start, double end, const Size& root) {
    switch (edge) {
        case Edge::left: return Rect::fromEdges(0, start, thickness, end + 1);
        case Edge::right: return Rect::fromEdges(root.width - thickness, start, root.width, end + 1);
        case Edge::top: return Rect::fromEdges(start, 0, end + 1, thickness);
        case Edge::bottom: return Rect::fromEdges(start, root.height - thickness, end + 1, root.height);
    }
    std::unreachable();
}

bool isVertical(Edge edge) {
    return edge == Edge::top || edge == Edge::bottom;
}

Rect cut(const Rect& area, const X11Strut& strut) {
    const Rect& band = strut.band;
    switch (strut.edge) {
        case Edge::left:
            return Rect::fromEdges(std::max(area.minX(), band.maxX()), area.minY(), area.maxX(), area.maxY());
        case Edge::right:
            return Rect::fromEdges(area.minX(), area.minY(), std::min(area.maxX(), band.minX()), area.maxY());
        case Edge::top:
            return Rect::fromEdges(area.minX(), std::max(area.minY(), band.maxY()), area.maxX(), area.maxY());
        case Edge::bottom:
            return Rect::fromEdges(area.minX(), area.minY(), area.maxX(), std::min(area.maxY(), band.minY()));
    }
    std::unreachable();
}

bool leavesEnough(const Rect& area, const Rect& monitor, Edge edge) {
    const double left = isVertical(edge) ? area.height : area.width;
    const double whole = isVertical(edge) ? monitor.height : monitor.width;
    return left >= std::max(smallestWorkArea, whole * smallestWorkAreaPart);
}

/// A panel that lies on no monitor at all, such as one that hides itself, still reserves its band.
bool onlyCrosses(const X11Strut& strut, const X11Monitor& monitor, std::span<const X11Monitor> monitors) {
    const auto holdsPanel = [&](const X11Monitor& other) { return intersects(strut.panel, other.frame); };
    return !holdsPanel(monitor) && std::ranges::any_of(monitors, holdsPanel);
}

}  // namespace

std::vector<X11Strut> decodeStruts(const X11PropertyValue& partial, const X11PropertyValue& whole,
                                   std::uint32_t cardinalType, const Size& root, const Rect& panel) {
    auto items = decodeItems(partial, cardinalType);
    const bool hasRanges = items && items->size() == partialStrutItems;
    if (!hasRanges) items = decodeItems(whole, cardinalType);
    if (!items || (!hasRanges && items->size() != wholeStrutItems)) return {};

    std::vector<X11Strut> struts;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const Edge edge = edges[i];
        const double along = isVertical(edge) ? root.width : root.height;
        const double across = isVertical(edge) ? root.height : root.width;
        const double thickness = std::min<double>((*items)[i], across);
        const double start = hasRanges ? (*items)[4 + 2 * i] : 0;
        const double end = hasRanges ? std::min<double>((*items)[5 + 2 * i], along - 1) : along - 1;
        if (thickness > 0 && end >= start) struts.push_back({edge, bandAt(edge, thickness, start, end, root), panel});
    }
    return struts;
}

Rect workArea(const X11Monitor& monitor, std::span<const X11Monitor> monitors, std::span<const X11Strut> struts) {
    Rect area = monitor.frame;
    for (const X11Strut& strut : struts) {
        if (!intersects(strut.band, monitor.frame)) continue;
        const Rect smaller = cut(area, strut);
        if (!onlyCrosses(strut, monitor, monitors) && leavesEnough(smaller, monitor.frame, strut.edge)) area = smaller;
    }
    return area;
}

std::vector<X11Monitor> arranged(std::vector<X11Monitor> monitors) {
    std::erase_if(monitors, [](const X11Monitor& monitor) { return monitor.frame.isEmpty(); });
    std::ranges::stable_sort(monitors, {}, [](const X11Monitor& monitor) {
        return std::tuple(!monitor.primary, monitor.frame.minX(), monitor.frame.minY());
    });
    std::vector<X11Monitor> distinct;
    for (X11Monitor& monitor : monitors) {
        if (std::ranges::find(distinct, monitor.frame, &X11Monitor::frame) == distinct.end())
            distinct.push_back(std::move(monitor));
    }
    return distinct;
}

}  // namespace velmorand

#include "desktop/harness/TestPanel.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>

namespace velmorand::desktop {

namespace {

int thickness(RootEdge edge, const PixelRect& frame, const PixelRect& root) {
    switch (edge) {
        case RootEdge::left: return frame.right();
        case RootEdge::right: return root.width - frame.x;
        case RootEdge::top: return frame.bottom();
        case RootEdge::bottom: return root.height - frame.y;
    }
    std::unreachable();
}

}  // namespace

std::vector<std::uint32_t> partialStrut(RootEdge edge, const PixelRect& frame, const PixelRect& root) {
    auto numbers = wholeStrut(edge, frame, root);
    numbers.resize(12);
    const bool isVertical = edge == RootEdge::top || edge == RootEdge::bottom;
    const auto place = 4 + 2 * static_cast<std::size_t>(edge);
    numbers[place] = static_cast<std::uint32_t>(isVertical ? frame.x : frame.y);
    numbers[place + 1] = static_cast<std::uint32_t>((isVertical ? frame.right() : frame.bottom()) - 1);
    return numbers;
}

std::vector<std::uint32_t> wholeStrut(RootEdge edge, const PixelRect& frame, const PixelRect& root) {
    std::vector<std::uint32_t> numbers(4);
    numbers[static_cast<std::size_t>(edge)] = static_cast<std::uint32_t>(thickness(edge, frame, root));
    return numbers;
}

std::vector<std::string> panelWindow(const TestPanel& panel) {
    std::vector<std::string> command{VELMORAND_PLAIN_WINDOW,
                                     "--dock",
                                     "--title",
                                     panel.title,
                                     "--size",
                                     fmt::format("{}x{}", panel.frame.width, panel.frame.height),
                                     "--position",
                                     fmt::format("{},{}", panel.frame.x, panel.frame.y)};
    const auto add = [&](const char* option, const std::vector<std::uint32_t>& numbers) {
        if (!numbers.empty()) command.insert(command.end(), {option, fmt::format("{}", fmt::join(numbers, ","))});
    };
    add("--partial-strut", panel.partialStrut);
    add("--strut", panel.strut);
    if (panel.desktop) add("--desktop", {*panel.desktop});
    return command;
}

}  // namespace velmorand::desktop

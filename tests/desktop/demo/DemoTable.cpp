#include "desktop/demo/DemoTable.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

namespace velmorand::desktop {

namespace {

std::string_view textOf(DemoVerdict verdict) {
    switch (verdict) {
        case DemoVerdict::landed: return "yes";
        case DemoVerdict::rounded: return "yes:";
        case DemoVerdict::failed: return "NO:";
    }
    std::unreachable();
}

}  // namespace

void printHeading(std::span<const PixelRect> workAreas) {
    fmt::print("Frames are width x height + x + y, from the primary display's top-left corner. Work areas:");
    for (const auto& area : workAreas) fmt::print(" {}", area.text());
    fmt::print("\n\n{:>2}  {:<16} {:<12} {:<20} {:<20} {:<20} {}\n", "#", "action", "window", "frame before", "wanted",
               "after", "landed");
}

void printRow(int number, const DemoRow& row) {
    fmt::print("{:>2}  {:<16} {:<12} {:<20} {:<20} {:<20} {}{}{}\n", number, row.step.action, nameOf(row.step.window),
               row.before.text(), row.wanted.text(), row.after.text(), textOf(row.verdict),
               row.remark.empty() ? "" : " ", row.remark);
    std::fflush(stdout);
}

}  // namespace velmorand::desktop

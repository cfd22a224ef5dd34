#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11WorkAreas.h"

#include <xcb/xproto.h>

#include <algorithm>
#include <vector>

namespace velmorand {
namespace {

bool lies(const Rect& inner, const Rect& outer) {
    return inner.minX() >= outer.minX() && inner.minY() >= outer.minY() && inner.maxX() <= outer.maxX() &&
           inner.maxY() <= outer.maxY();
}

std::vector<X11Monitor> someMonitors(FuzzInput& input) {
    std::vector<X11Monitor> monitors;
    for (auto left = input.between<std::size_t>(0, 6); left > 0; --left)
        monitors.push_back({input.between<std::uint32_t>(1, 9), {}, input.protocolRect(true), input.boolean()});
    return monitors;
}

void checkArrangement(const std::vector<X11Monitor>& given, const std::vector<X11Monitor>& monitors) {
    require(arranged(monitors) == monitors, "what is arranged stays as it is");
    const auto isGiven = [&](const X11Monitor& monitor) { return std::ranges::count(given, monitor) > 0; };
    require(std::ranges::all_of(monitors, isGiven), "no monitor is made up");
    const auto isShown = [&](const X11Monitor& monitor) {
        return monitor.frame.isEmpty() || std::ranges::count(monitors, monitor.frame, &X11Monitor::frame) == 1;
    };
    require(std::ranges::all_of(given, isShown), "every area with a size is there once");
    require(std::ranges::none_of(monitors, &Rect::isEmpty, &X11Monitor::frame), "no monitor is empty");
    const auto hasSize = [](const X11Monitor& monitor) { return monitor.primary && !monitor.frame.isEmpty(); };
    require(std::ranges::none_of(given, hasSize) || monitors.front().primary, "the primary monitor comes first");
}

std::vector<X11Strut> someStruts(FuzzInput& input, const Size& root) {
    std::vector<X11Strut> struts;
    for (auto left = input.between<std::size_t>(0, 6); left > 0; --left) {
        const Rect panel = input.protocolRect();
        const auto partial = input.property(XCB_ATOM_CARDINAL, 32);
        const auto whole = input.property(XCB_ATOM_CARDINAL, 32);
        const auto bands = decodeStruts(partial, whole, XCB_ATOM_CARDINAL, root, panel);
        require(bands.size() <= 4, "a panel reserves each edge once at most");
        for (const X11Strut& strut : bands) {
            require(strut.panel == panel, "a band knows its panel");
            require(strut.band.width > 0 && strut.band.height > 0, "a band has an area");
            require(lies(strut.band, {0, 0, root.width, root.height}), "a band lies in the root window");
        }
        struts.insert(struts.end(), bands.begin(), bands.end());
    }
    return struts;
}

/// A length of the work area is the monitor's own, or enough to work in.
bool isEnough(double length, double whole) {
    return length == whole || length >= std::max(100.0, whole * 0.3);
}

void checkWorkAreas(const std::vector<X11Monitor>& monitors, const std::vector<X11Strut>& struts) {
    for (const X11Monitor& monitor : monitors) {
        const Rect area = workArea(monitor, monitors, struts);
        require(lies(area, monitor.frame), "a work area lies in its monitor");
        require(isEnough(area.width, monitor.frame.width) && isEnough(area.height, monitor.frame.height),
                "panels leave enough of a monitor");
        require(workArea(monitor, monitors, {}) == monitor.frame, "without panels the whole monitor is free");
    }
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmorand;
    FuzzInput input(data, size);
    const std::vector<X11Monitor> given = someMonitors(input);
    const std::vector<X11Monitor> monitors = arranged(given);
    checkArrangement(given, monitors);
    const Size root{static_cast<double>(input.number<std::uint16_t>()),
                    static_cast<double>(input.number<std::uint16_t>())};
    checkWorkAreas(monitors, someStruts(input, root));
    return 0;
}

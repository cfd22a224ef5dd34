#include "desktop/x11/X11DisplayTest.h"

#include <algorithm>
#include <cmath>

namespace velmorand::desktop {
namespace {

/// Longer than the platform lets a burst of changes settle, on a loaded machine.
constexpr std::chrono::milliseconds quietTime{250};

int pixels(double value) {
    return static_cast<int>(std::lround(value));
}

}  // namespace

void X11DisplayTest::open(const DesktopOptions& options) {
    X11Test::open(options);
    for (const Monitor& monitor : options.monitors) root_ = united(root_, monitor.rect);
    windowSystem().setObserver({.applicationTerminated = {}, .displaysChanged = [this] { ++told_; }});
}

xcb_window_t X11DisplayTest::openPanel(const TestPanel& panel) {
    startClient(panelWindow(panel));
    const auto window = observer().findWindow(panel.title);
    EXPECT_TRUE(window) << window.error();
    EXPECT_EQ(observer().clientRect(window.value_or(XCB_WINDOW_NONE)), panel.frame)
        << "the panel is not where the test means it to be";
    return window.value_or(XCB_WINDOW_NONE);
}

xcb_window_t X11DisplayTest::openPanel(RootEdge edge, const PixelRect& frame, std::string_view title) {
    return openPanel({.title = std::string(title), .frame = frame, .partialStrut = partialStrut(edge, frame, root_)});
}

void X11DisplayTest::closeLastClient(xcb_window_t window) {
    lastClient().terminate();
    EXPECT_TRUE(observer().waitUntil([&] { return !observer().clientRect(window); }));
}

PixelRect X11DisplayTest::workArea(std::string_view display) {
    const auto primary = std::ranges::find_if(desktop().monitors(), &Monitor::isPrimary);
    const auto displays = windowSystem().displays();
    const auto found = std::ranges::find(displays, display, &DisplayDescription::localizedName);
    if (found == displays.end() || primary == desktop().monitors().end()) return {};
    const Rect& area = found->visibleFrame;
    return {primary->rect.x + pixels(area.x), primary->rect.bottom() - pixels(area.y + area.height), pixels(area.width),
            pixels(area.height)};
}

std::vector<PixelRect> X11DisplayTest::workAreas() {
    std::vector<PixelRect> areas;
    for (const Monitor& monitor : desktop().monitors()) areas.push_back(workArea(monitor.name));
    return areas;
}

void X11DisplayTest::expectTold(int changes) {
    EXPECT_TRUE(runUntil([&] { return told_ >= changes; })) << "a change is not told of";
    const MonotonicTime end = runLoop.now() + quietTime;
    const RunLoop::Timer wakeUp = runLoop.after(quietTime, [] {});
    EXPECT_TRUE(runUntil([&] { return runLoop.now() >= end; }));
    EXPECT_EQ(told_, changes);
    told_ = 0;
}

void X11DisplayTest::switchToDesktop(std::uint32_t number) {
    XConnection& connection = observer().connection();
    connection.sendToWindowManager(connection.root(), "_NET_CURRENT_DESKTOP", {number});
    EXPECT_TRUE(observer().waitUntil([&] {
        return connection.numbers(connection.root(), "_NET_CURRENT_DESKTOP") == std::vector<std::uint32_t>{number};
    }));
}

}  // namespace velmorand::desktop

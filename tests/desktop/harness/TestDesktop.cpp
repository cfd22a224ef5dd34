#include "desktop/harness/TestDesktop.h"

#include "desktop/harness/Screenshot.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmorand::desktop {

namespace {

PixelRect rootRect(const std::vector<Monitor>& monitors) {
    PixelRect whole;
    for (const auto& monitor : monitors) whole = united(whole, monitor.rect);
    return whole;
}

std::vector<PixelRect> rectsOf(const std::vector<Monitor>& monitors) {
    std::vector<PixelRect> rects;
    std::ranges::transform(monitors, std::back_inserter(rects), &Monitor::rect);
    return rects;
}

/// Programs made with GDK know only displays that are outputs, and so do some window managers of other make.
OutputKind outputsFor(const DesktopOptions& options) {
    const bool needsOutputs =
        options.hasOutputs || needsOutputsForDisplays(options.windowManager.kind) || options.panel;
    return needsOutputs && options.monitors.size() > 1 ? OutputKind::several : OutputKind::single;
}

}  // namespace

std::expected<std::unique_ptr<TestDesktop>, HarnessError> TestDesktop::create(const DesktopOptions& options) {
    auto folder = TemporaryFolder::create("velmorand-desktop");
    if (!folder) return std::unexpected(folder.error());
    auto environment = makeSession(folder->path());
    if (!environment) return std::unexpected(environment.error());
    const auto root = rootRect(options.monitors);
    auto server = DisplayServer::start({.outputs = outputsFor(options),
                                        .width = root.width,
                                        .height = root.height,
                                        .environment = *environment,
                                        .folder = folder->path()});
    if (!server) return std::unexpected(server.error());
    environment->insert_or_assign("DISPLAY", server->displayName());
    const auto services = options.startsServices ? std::nullopt : std::optional(folder->path() / "no-services");
    auto bus = SessionBus::start(*environment, folder->path(), services);
    if (!bus) return std::unexpected(bus.error());
    environment->insert_or_assign("DBUS_SESSION_BUS_ADDRESS", bus->address());
    auto observer = XObserver::connect(server->displayName());
    if (!observer) return std::unexpected(observer.error());

    std::unique_ptr<TestDesktop> desktop(new TestDesktop(std::move(*folder), std::move(*server), std::move(*bus),
                                                         std::move(*observer), std::move(*environment)));
    paintBackground(desktop->observer_.connection(), rectsOf(options.monitors));
    if (auto done = desktop->setMonitors(options.monitors); !done) return std::unexpected(done.error());
    if (DesktopViewer::isWanted()) {
        auto viewer = DesktopViewer::start(desktop->displayName(), desktop->environment_, desktop->folder());
        if (!viewer) return std::unexpected(viewer.error());
        desktop->viewer_ = std::move(*viewer);
    }
    if (auto done = desktop->startWindowManager(options.windowManager); !done) return std::unexpected(done.error());
    if (options.panel) {
        if (auto done = desktop->startPanel(*options.panel); !done) return std::unexpected(done.error());
    }
    return desktop;
}

std::expected<ChildProcess, HarnessError> TestDesktop::start(const std::vector<std::string>& arguments,
                                                             const Environment& additions) {
    if (arguments.empty()) return std::unexpected(HarnessError{"no program to start"});
    auto environment = environment_;
    for (const auto& [name, value] : additions) environment.insert_or_assign(name, value);
    const auto program = std::filesystem::path(arguments.front()).filename().string();
    return ChildProcess::start({.arguments = arguments,
                                .environment = std::move(environment),
                                .logFile = folder() / fmt::format("{}-{}.log", ++startedPrograms_, program),
                                .reportsOnDescriptor3 = false});
}

std::expected<void, HarnessError> TestDesktop::setMonitors(const std::vector<Monitor>& monitors) {
    auto applied = applyMonitors(observer_.connection(), monitors);
    if (applied) monitors_ = monitors;
    return applied;
}

std::expected<void, HarnessError> TestDesktop::startWindowManager(const WindowManagerOptions& options) {
    if (options.kind == WindowManagerKind::none) return {};
    // Now and then one hangs in its own start; that is no matter of the tests, so it gets a second chance.
    for (const auto timeout : {patience / 3, patience}) {
        windowManager_.reset();
        const auto command = commandOf(options, environment_);
        auto process = start(command.arguments, command.variables);
        if (!process) return std::unexpected(process.error());
        windowManager_ = std::move(*process);
        if (waitForWindowManager(observer_, options, timeout)) return {};
    }
    return std::unexpected(failure(fmt::format("{} does not answer as it should", nameOf(options.kind))));
}

void TestDesktop::stopWindowManager() {
    windowManager_.reset();
    observer_.waitUntil([&] { return !observer_.windowManagerName(); });
}

std::expected<void, HarnessError> TestDesktop::replaceWindowManager(const WindowManagerOptions& options) {
    if (windowManager_) stopWindowManager();
    return startWindowManager(options);
}

std::expected<void, HarnessError> TestDesktop::startPanel(const PanelOptions& options) {
    if (auto written = writePanelSettings(environment_, options.edge, options.height); !written) return written;
    auto process = start({"xfce4-panel", "--disable-wm-check"});
    if (!process) return std::unexpected(process.error());
    panel_ = std::move(*process);
    // It reserves a little at first and the rest when its plug-ins are there.
    const bool isReady = observer_.waitUntil([&] { return reservedOnPrimary(options.edge) == options.height; });
    if (isReady) return {};
    return std::unexpected(failure(fmt::format("the panel reserves {} pixels of the screen's edges instead of {}",
                                               fmt::join(observer_.reservedEdges(), " "), options.height)));
}

int TestDesktop::reservedOnPrimary(PanelEdge edge) {
    const auto strut = observer_.reservedEdges();
    const auto primary = std::ranges::find_if(monitors_, &Monitor::isPrimary);
    if (strut.empty() || primary == monitors_.end()) return 0;
    // Struts are measured from the edge of the root window.
    if (edge == PanelEdge::top) return static_cast<int>(strut[2]) - primary->rect.y;
    return static_cast<int>(strut[3]) - (rootRect(monitors_).height - primary->rect.bottom());
}

std::string TestDesktop::logTails() const {
    std::string text = fmt::format("--- desktop {} ---\n{}", displayName(), server_.process().logTail(10));
    if (windowManager_) text += windowManager_->logTail();
    if (panel_) text += panel_->logTail();
    return text;
}

HarnessError TestDesktop::failure(std::string_view what) const {
    return {fmt::format("{}\n{}", what, logTails())};
}

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/DesktopSettings.h"
#include "desktop/harness/DesktopViewer.h"
#include "desktop/harness/DisplayServer.h"
#include "desktop/harness/Monitors.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/harness/TemporaryFolder.h"
#include "desktop/harness/WindowManagers.h"
#include "desktop/harness/XObserver.h"

#include <memory>

namespace velmorand::desktop {

struct PanelOptions {
    PanelEdge edge = PanelEdge::bottom;
    /// What it reserves of the display, in pixels.
    int height = 32;
};

struct DesktopOptions {
    WindowManagerOptions windowManager = {};
    /// In root coordinates; the root window is the rectangle from the origin that contains them all.
    std::vector<Monitor> monitors{{"main", {0, 0, 1280, 800}, true}};
    /// Whether each display is an output of the X server, as on a real machine, even where a name would do.
    bool hasOutputs = false;
    /// Whether the session bus starts services that are installed on this machine, such as a notification server, when
    /// somebody asks for them.
    bool startsServices = true;
    /// A panel across the primary display. It needs a window manager.
    std::optional<PanelOptions> panel = {};
};

/// A whole desktop of its own: X server, monitors, session bus, home folder, window manager and panel. Nothing of it is
/// shared with the user's session or with another test desktop, and everything is ended and removed, in reverse order,
/// when the object dies. Processes started on it should be ended before.
class TestDesktop {
public:
    /// Returns when everything is really there: the window manager answers and, where asked for, composites; the panel
    /// has reserved its edge.
    [[nodiscard]] static std::expected<std::unique_ptr<TestDesktop>, HarnessError> create(
        const DesktopOptions& options);

    TestDesktop(const TestDesktop&) = delete;
    TestDesktop& operator=(const TestDesktop&) = delete;

    /// As in DISPLAY.
    [[nodiscard]] const std::string& displayName() const { return server_.displayName(); }
    /// The whole environment for programs on this desktop.
    [[nodiscard]] const Environment& environment() const { return environment_; }
    /// Holds home and logs.
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }
    [[nodiscard]] const std::vector<Monitor>& monitors() const { return monitors_; }

    /// Starts a program on this desktop, with \p additions to or instead of the variables of environment(). Its log
    /// file lies in folder().
    [[nodiscard]] std::expected<ChildProcess, HarnessError> start(const std::vector<std::string>& arguments,
                                                                  const Environment& additions = {});

    /// Plugs monitors in and out. They must lie within the root window, which keeps its size.
    [[nodiscard]] std::expected<void, HarnessError> setMonitors(const std::vector<Monitor>& monitors);

    /// Null without a window manager.
    [[nodiscard]] ChildProcess* windowManager() { return windowManager_ ? &*windowManager_ : nullptr; }
    /// Returns when its check window is gone, too. Root properties that it left behind stay.
    void stopWindowManager();
    /// Stops the running one, if any, and starts another; returns when that one answers.
    [[nodiscard]] std::expected<void, HarnessError> replaceWindowManager(const WindowManagerOptions& options);

    /// Null without a panel.
    [[nodiscard]] ChildProcess* panel() { return panel_ ? &*panel_ : nullptr; }
    void stopPanel() { panel_.reset(); }
    [[nodiscard]] ChildProcess& server() { return server_.process(); }
    [[nodiscard]] ChildProcess& sessionBus() { return bus_.process(); }
    /// The desktop's own observer; a test may well connect another one.
    [[nodiscard]] XObserver& observer() { return observer_; }

    /// The last lines of what the X server, window manager and panel wrote, for failure messages.
    [[nodiscard]] std::string logTails() const;

private:
    TestDesktop(TemporaryFolder folder, DisplayServer server, SessionBus bus, XObserver observer,
                Environment environment)
        : folder_(std::move(folder)),
          server_(std::move(server)),
          bus_(std::move(bus)),
          observer_(std::move(observer)),
          environment_(std::move(environment)) {}

    [[nodiscard]] std::expected<void, HarnessError> startWindowManager(const WindowManagerOptions& options);
    [[nodiscard]] std::expected<void, HarnessError> startPanel(const PanelOptions& options);
    /// How many pixels of the primary display are reserved at that edge.
    [[nodiscard]] int reservedOnPrimary(PanelEdge edge);
    [[nodiscard]] HarnessError failure(std::string_view what) const;

    // In the order of their start: they end the other way round.
    TemporaryFolder folder_;
    DisplayServer server_;
    SessionBus bus_;
    XObserver observer_;
    Environment environment_;
    std::vector<Monitor> monitors_;
    std::optional<DesktopViewer> viewer_;
    std::optional<ChildProcess> windowManager_;
    std::optional<ChildProcess> panel_;
    int startedPrograms_ = 0;
};

}  // namespace velmorand::desktop

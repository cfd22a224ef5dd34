#include "desktop/demo/DemoDesktop.h"

#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/SettingsFile.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/harness/TrayUser.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmorand::desktop {

namespace {

constexpr PixelRect secondary{0, 0, 1280, 1024};
constexpr PixelRect primary{1280, 24, 1600, 1000};
constexpr int panelHeight = 32;
/// Status items stand between the buttons of the windows and the clock; both change by themselves.
constexpr int clockWidth = 60;
constexpr int trayWidth = 400;
constexpr PixelRect tray{primary.x + primary.width - clockWidth - trayWidth, primary.y + primary.height - panelHeight,
                         trayWidth, panelHeight};

struct Opening {
    DemoWindow window = DemoWindow::terminal;
    const char* title = "";
    /// From the primary display's top-left corner.
    PixelRect frame = {};
};

constexpr std::array openings{
    Opening{DemoWindow::serverSide, "Tasks", {-1040, 220, 640, 470}},
    Opening{DemoWindow::clientSide, "Notes", {560, 230, 760, 540}},
    Opening{DemoWindow::terminal, "Terminal", {90, 80, 760, 470}},
};

std::vector<std::string> commandOf(const Opening& opening) {
    const TestWindow window{.title = opening.title};
    switch (opening.window) {
        case DemoWindow::terminal: return terminalWindow(window);
        case DemoWindow::clientSide: return clientSideWindow(window);
        case DemoWindow::serverSide: return serverSideWindow(window);
    }
    std::unreachable();
}

}  // namespace

std::expected<std::unique_ptr<DemoDesktop>, HarnessError> DemoDesktop::open(const std::filesystem::path& program,
                                                                            std::size_t shortcuts,
                                                                            WindowManagerKind windowManager,
                                                                            std::string_view storedSettings) {
    auto desktop = TestDesktop::create({.windowManager = {.kind = windowManager, .isCompositing = true},
                                        .monitors = {{"secondary", secondary, false}, {"primary", primary, true}},
                                        .panel = PanelOptions{.edge = PanelEdge::bottom, .height = panelHeight}});
    if (!desktop) return std::unexpected(desktop.error());
    auto keyboard = TestKeyboard::attach((*desktop)->observer());
    if (!keyboard) return std::unexpected(keyboard.error());

    std::unique_ptr<DemoDesktop> demo(new DemoDesktop(std::move(*desktop), *keyboard));
    if (auto done = demo->openWindows(); !done) return std::unexpected(done.error());
    if (auto done = demo->checkShadow(); !done) return std::unexpected(done.error());
    if (!storedSettings.empty()) {
        auto left = writeSettingsFile(storedSettingsFile(demo->test().environment()), storedSettings);
        if (!left) return std::unexpected(left.error());
    }
    demo->trayWithoutIcon_ = readScreenArea(demo->observer().connection(), tray);
    auto started = startProgram(demo->test(), program, shortcuts);
    if (!started) return std::unexpected(HarnessError{started.error().message + demo->logTails()});
    demo->program_ = std::move(*started);
    return demo;
}

std::vector<PixelRect> DemoDesktop::workAreas() const {
    auto free = primary;
    free.height -= panelHeight;
    return {fromRoot(secondary), fromRoot(free)};
}

std::optional<PixelRect> DemoDesktop::frameOf(DemoWindow window) {
    const auto frame = desktop_->observer().visibleFrame(idOf(window));
    return frame ? std::optional(fromRoot(*frame)) : std::nullopt;
}

std::expected<PixelRect, HarnessError> DemoDesktop::openMenu() {
    TrayUser user(*desktop_);
    user.useHost(TrayHostKind::xfce, tray);
    if (const auto icon = user.findIcon(trayWithoutIcon_); !icon) return std::unexpected(icon.error());
    return user.openMenu();
}

PixelRect DemoDesktop::toRoot(const PixelRect& frame) const {
    return frame.relativeTo(-primary.x, -primary.y);
}

PixelRect DemoDesktop::fromRoot(const PixelRect& frame) const {
    return frame.relativeTo(primary.x, primary.y);
}

std::expected<void, HarnessError> DemoDesktop::openWindows() {
    for (const auto& opening : openings) {
        auto client = desktop_->start(commandOf(opening));
        if (!client) return std::unexpected(client.error());
        clients_.emplace(opening.window, std::move(*client));
        const auto window = observer().findWindow(opening.title);
        if (!window) return std::unexpected(HarnessError{window.error().message + '\n' + logTails()});
        windows_[opening.window] = *window;
        if (auto active = pager_.activate(*window); !active) return active;
        const auto steps = observer().sizeSteps(*window).value_or(SizeSteps{});
        const int tolerance = std::max({steps.width, steps.height, frameTolerance});
        if (auto placed = pager_.place(*window, toRoot(opening.frame), tolerance); !placed) {
            return std::unexpected(placed.error());
        }
    }
    return {};
}

std::expected<void, HarnessError> DemoDesktop::checkShadow() {
    if (!observer().isComposited()) return {};
    const auto shadow = observer().clientShadow(idOf(DemoWindow::clientSide));
    if (shadow && *shadow != Extents{}) return {};
    return std::unexpected(HarnessError{"the client-side window has no _GTK_FRAME_EXTENTS\n" + logTails()});
}

std::string DemoDesktop::logTails() const {
    std::string text = desktop_->logTails();
    for (const auto& [window, client] : clients_) text += client.logTail();
    if (program_) text += program_->logTail();
    return text;
}

}  // namespace velmorand::desktop

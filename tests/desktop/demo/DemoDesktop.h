#pragma once

#include "desktop/demo/DemoModel.h"
#include "desktop/demo/DemoScript.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/ScreenArea.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestKeyboard.h"

#include <map>
#include <string_view>

namespace velmorand::desktop {

/// The desktop of the demo: two displays of different size, the primary one not at the origin of the root window,
/// with a panel on it, and three windows; and on it the running program.
class DemoDesktop {
public:
    /// Returns when the windows are on screen and \p program has registered \p shortcuts shortcuts. Fails, too, when
    /// the window that draws its own shadow does not say so under a compositing window manager. The program finds
    /// \p storedSettings as the document of an earlier run, unless it is empty.
    [[nodiscard]] static std::expected<std::unique_ptr<DemoDesktop>, HarnessError> open(
        const std::filesystem::path& program, std::size_t shortcuts, WindowManagerKind windowManager,
        std::string_view storedSettings = {});

    /// The displays without the panel, from left to right, from the primary display's top-left corner.
    [[nodiscard]] std::vector<PixelRect> workAreas() const;
    /// The frame that the user sees, from the primary display's top-left corner; absent when the window is gone.
    [[nodiscard]] std::optional<PixelRect> frameOf(DemoWindow window);
    /// Between the two origins.
    [[nodiscard]] PixelRect toRoot(const PixelRect& frame) const;
    [[nodiscard]] PixelRect fromRoot(const PixelRect& frame) const;

    /// Clicks the program's icon on the panel, which must show one, and answers where its menu is seen, in root
    /// coordinates. Works once; the menu stays open until a key or a click closes it.
    [[nodiscard]] std::expected<PixelRect, HarnessError> openMenu();

    [[nodiscard]] xcb_window_t idOf(DemoWindow window) const { return windows_.at(window); }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] Pager& pager() { return pager_; }
    [[nodiscard]] TestKeyboard& keyboard() { return keyboard_; }
    [[nodiscard]] ChildProcess& program() { return *program_; }
    /// The process that the window belongs to.
    [[nodiscard]] ChildProcess& client(DemoWindow window) { return clients_.at(window); }
    /// The desktop underneath.
    [[nodiscard]] TestDesktop& test() { return *desktop_; }
    /// What everything that runs there wrote last.
    [[nodiscard]] std::string logTails() const;

private:
    DemoDesktop(std::unique_ptr<TestDesktop> desktop, TestKeyboard keyboard)
        : desktop_(std::move(desktop)), pager_(desktop_->observer()), keyboard_(keyboard) {}

    [[nodiscard]] std::expected<void, HarnessError> openWindows();
    [[nodiscard]] std::expected<void, HarnessError> checkShadow();

    std::unique_ptr<TestDesktop> desktop_;
    Pager pager_;
    TestKeyboard keyboard_;
    std::map<DemoWindow, ChildProcess> clients_;
    std::map<DemoWindow, xcb_window_t> windows_;
    std::optional<ChildProcess> program_;
    /// The panel's part for status items before the program put one there.
    ScreenArea trayWithoutIcon_;
};

}  // namespace velmorand::desktop

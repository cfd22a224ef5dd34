#pragma once

#include "desktop/harness/HostileClient.h"
#include "desktop/harness/TestPanel.h"
#include "desktop/x11/X11Test.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

/// A desktop whose displays, and what panels leave of them, are looked at.
class X11DisplayTest : public X11Test {
protected:
    /// A desktop under openbox with these displays.
    void openDisplays(const std::vector<Monitor>& monitors) { open(DesktopOptions{.monitors = monitors}); }
    /// The same with everything else as given. From now on it is counted how often the platform tells of a change.
    void open(const DesktopOptions& options);

    /// Starts the panel and waits until it is on screen.
    xcb_window_t openPanel(const TestPanel& panel);
    /// The same for one that reserves \p edge along its length.
    xcb_window_t openPanel(RootEdge edge, const PixelRect& frame, std::string_view title = "Panel");

    /// Ends the client that was started last, and waits until \p window is gone.
    void closeLastClient(xcb_window_t window);

    /// What is left of the display of that name, in root coordinates; empty when there is none.
    [[nodiscard]] PixelRect workArea(std::string_view display);
    /// The same for each display, as the desktop lists them.
    [[nodiscard]] std::vector<PixelRect> workAreas();

    /// The whole root window of the desktop as it was opened.
    [[nodiscard]] const PixelRect& root() const { return root_; }

    /// Expects that the platform tells of \p changes changes of the displays since this was last asked, no more and no
    /// fewer.
    void expectTold(int changes);

    [[nodiscard]] HostileClient anyClient() { return HostileClient(observer().connection()); }
    /// Asks the window manager for another current desktop, and waits until it is that.
    void switchToDesktop(std::uint32_t number);

private:
    PixelRect root_;
    int told_ = 0;
};

}  // namespace velmorand::desktop

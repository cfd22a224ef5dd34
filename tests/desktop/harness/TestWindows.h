#pragma once

#include <string>
#include <vector>

namespace velmorand::desktop {

/// A test window to open: what the commands below make of it.
struct TestWindow {
    /// By which it is found; should be unique on its desktop.
    std::string title = {};
    /// Size of its content in pixels, without decorations.
    int width = 640;
    int height = 420;
    /// 0 for none.
    int minimumWidth = 0;
    int minimumHeight = 0;
    bool isResizable = true;
    /// Of a plain window only. Whether its hints ask that positions mean its own corner and not that of its frame.
    bool hasStaticGravity = false;
    /// Of a plain window only.
    bool isDialog = false;
    /// The application's identifier and, made of it, both parts of WM_CLASS; empty for the program's own, which a Qt
    /// window always has.
    std::string applicationId = {};
};

/// Each returns the command that opens the window, for TestDesktop::start().

/// A toolkit window that draws its own title bar and, where a compositing manager runs, its own shadow.
[[nodiscard]] std::vector<std::string> clientSideWindow(const TestWindow& window);
/// The same of the next generation of that toolkit.
[[nodiscard]] std::vector<std::string> gtk4Window(const TestWindow& window);
/// A toolkit window in the window manager's decorations.
[[nodiscard]] std::vector<std::string> serverSideWindow(const TestWindow& window);
/// A window of another toolkit, in the window manager's decorations.
[[nodiscard]] std::vector<std::string> qtWindow(const TestWindow& window);
/// A window of a program without a toolkit, in the window manager's decorations. It opens another window, with " 2" and
/// so on behind the title, each time its program gets SIGUSR1.
[[nodiscard]] std::vector<std::string> plainWindow(const TestWindow& window);
/// A terminal, whose size goes in steps of characters. It prints a few lines and stays; of \p window only the title
/// counts.
[[nodiscard]] std::vector<std::string> terminalWindow(const TestWindow& window);

}  // namespace velmorand::desktop

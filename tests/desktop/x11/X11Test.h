#pragma once

#include "desktop/harness/HostileClient.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestWindows.h"
#include "platform/linux/support/QtFixture.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowSystem.h"

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <optional>

namespace velmorand::desktop {

/// The X11 part of the platform, piece by piece, in this process on a desktop of its own. A test first opens a desktop.
class X11Test : public QtFixture {
protected:
    X11Test();
    ~X11Test() override;

    void TearDown() override;

    /// Makes the desktop and connects to it. The test ends with a failure when it cannot be had.
    void open(const DesktopOptions& options = {});

    /// Starts our own window manager, which needs a desktop without one, and waits until it is there. It replaces the
    /// one started before.
    void startPlainManager(const std::vector<std::string>& options);
    /// Connects anew, as a program that is started now would, by the desktop's own name or another one for it.
    void connect(const std::string& displayName);
    void connect() { connect(desktop().displayName()); }

    /// Starts a program on the desktop that ends with the test.
    void startClient(const std::vector<std::string>& command);
    /// Starts a client and waits until its window is on screen and active.
    [[nodiscard]] xcb_window_t openWindow(const std::vector<std::string>& command, std::string_view title);
    /// The same with a window of a program without a toolkit.
    [[nodiscard]] xcb_window_t openWindow(const TestWindow& window) {
        return openWindow(plainWindow(window), window.title);
    }
    /// The client started last.
    [[nodiscard]] ChildProcess& lastClient() { return clients_.back(); }

    /// The window as the platform knows it: the focused one of the frontmost application.
    [[nodiscard]] WindowID focusedWindow();

    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] Pager pager() { return Pager(desktop_->observer()); }
    [[nodiscard]] HostileClient hostileClient() { return HostileClient(observer().connection()); }
    [[nodiscard]] X11Connection& connection() { return *connection_; }
    [[nodiscard]] X11WindowSystem& windowSystem() { return *windowSystem_; }

    /// The usual bound of a call.
    [[nodiscard]] static velmorand::Deadline soon() {
        return std::chrono::steady_clock::now() + std::chrono::milliseconds(750);
    }

private:
    void disconnect();
    void handleConnection();

    std::unique_ptr<TestDesktop> desktop_;
    std::optional<ChildProcess> plainManager_;
    std::list<ChildProcess> clients_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11WindowSystem> windowSystem_;
    Subscription readable_;
    Subscription sleeping_;
};

}  // namespace velmorand::desktop

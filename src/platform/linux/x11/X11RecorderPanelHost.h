#pragma once

#include "platform/Log.h"
#include "platform/linux/x11/X11RecorderPanel.h"

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace velmorand {

/// The recorder panel in a window of the views, with the whole keyboard while it is the key window, unless another client
/// has that. The window system on the same connection asks for the root window's events.
class X11RecorderPanelHost final : public RecorderPanelHost {
public:
    /// Everything must outlive the host; the keyboard is that of the connection. `synchroniseViews` returns when the X
    /// server has done all that the views have asked of it on their own connection. Fails when the server does not
    /// answer.
    [[nodiscard]] static std::expected<std::unique_ptr<X11RecorderPanelHost>, std::string> create(
        X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock, Log& log,
        std::function<void()> synchroniseViews);
    ~X11RecorderPanelHost() override;

    void setWindowMaker(RecorderPanelWindowMaker maker) override { maker_ = std::move(maker); }
    void show(RecorderPanelEvents events) override;
    void close() override;

private:
    X11RecorderPanelHost(X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock,
                         Log& log, std::function<void()> synchroniseViews, const X11Atoms& atoms);

    X11Atoms atoms_;
    X11WindowManager windowManager_;
    X11RecorderServices services_;
    RecorderPanelWindowMaker maker_;
    std::unique_ptr<X11RecorderPanel> panel_;
    /// What tells that a panel without a window is closed.
    RunLoop::Timer without_;
};

}  // namespace velmorand

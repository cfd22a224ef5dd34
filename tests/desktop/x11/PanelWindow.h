#pragma once

#include "desktop/harness/XConnection.h"
#include "platform/RecorderPanelHost.h"
#include "platform/RunLoop.h"

#include <functional>
#include <string_view>

namespace velmorand::desktop {

/// The window of a recorder panel as views of a toolkit have it, without the toolkit: on another connection than the
/// platform's, a dialog that takes the focus and hears when it is to close.
class PanelWindow final : public RecorderPanelWindow {
public:
    /// Both references must outlive the window. One connection must serve all windows of a test: another one could use
    /// the numbers of the first anew.
    PanelWindow(XConnection& connection, std::string_view title, RunLoop& runLoop);
    ~PanelWindow() override;

    [[nodiscard]] std::uintptr_t handle() const override { return window_; }
    void show(std::function<void()> closed) override;

private:
    void takeInEvents();

    XConnection& connection_;
    RunLoop& runLoop_;
    xcb_window_t window_;
    std::function<void()> closed_;
    RunLoop::Timer listening_;
};

}  // namespace velmorand::desktop

#pragma once

#include "platform/Log.h"
#include "platform/linux/x11/X11Monitors.h"
#include "platform/linux/x11/X11RecorderPanel.h"

#include <expected>
#include <memory>
#include <string>

namespace velmorand {

/// The recorder panel as a window on our own connection to the X server, in the middle of the display where the user
/// works. While it is the key window it has the whole keyboard, unless another client has. The window system on the same
/// connection asks for the root window's events.
class X11RecorderPanelHost final : public RecorderPanelHost {
public:
    /// Everything must outlive the host; the keyboard is that of the connection. Fails when the server does not answer.
    [[nodiscard]] static std::expected<std::unique_ptr<X11RecorderPanelHost>, std::string> create(
        X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock, Log& log,
        RecorderPainter painter);
    ~X11RecorderPanelHost() override;

    void show(RecorderPanelContent content, RecorderPanelEvents events) override;
    void update(RecorderPanelContent content) override;
    void close() override;

private:
    X11RecorderPanelHost(X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock,
                         Log& log, RecorderPainter painter, const X11Atoms& atoms);

    [[nodiscard]] Rect areaForPanel(Deadline deadline);
    [[nodiscard]] Point whereTheUserWorks(Deadline deadline) const;

    X11Connection& connection_;
    X11Atoms atoms_;
    X11WindowManager windowManager_;
    X11Monitors monitors_;
    X11RecorderServices services_;
    std::unique_ptr<X11RecorderPanel> panel_;
};

}  // namespace velmorand

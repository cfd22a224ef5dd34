#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/ProcessWatcher.h"
#include "platform/linux/WindowSystem.h"
#include "platform/linux/x11/X11Applications.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11FrameWriter.h"
#include "platform/linux/x11/X11Monitors.h"
#include "platform/linux/x11/X11WindowManager.h"
#include "platform/linux/x11/X11WindowRegistry.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

class QtRunLoop;

/// An X11 session under a window manager that follows the desktop's conventions (EWMH). One point is one pixel of
/// the root window; the accessibility space begins at the primary monitor's top-left corner.
class X11WindowSystem final : public WindowSystem {
public:
    /// `connection` must outlive it. Fails when the server does not answer.
    [[nodiscard]] static std::expected<std::unique_ptr<X11WindowSystem>, std::string> create(
        X11Connection& connection, QtRunLoop& runLoop, std::optional<std::string> ownIdentifier);
    ~X11WindowSystem() override;

    [[nodiscard]] std::optional<TrustProblem> missingForTrust(Deadline deadline) override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    [[nodiscard]] bool hasApplication(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<std::vector<WindowID>, AXError> windows(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowID, AXError> focusedWindow(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowID, AXError> mainWindow(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowAttributes, AXError> attributes(WindowID window, Reading reading,
                                                                      Deadline deadline) override;
    [[nodiscard]] std::expected<void, AXError> checkMovable(WindowID window, Deadline deadline) override;
    [[nodiscard]] std::expected<Rect, AXError> setFrame(WindowID window, const Rect& frame, Deadline deadline) override;
    [[nodiscard]] std::vector<DisplayDescription> displays() override;
    void setObserver(Observer observer) override { observer_ = std::move(observer); }

private:
    X11WindowSystem(X11Connection& connection, QtRunLoop& runLoop, const X11Atoms& atoms,
                    std::optional<std::string> ownIdentifier);

    [[nodiscard]] std::expected<std::optional<std::uint32_t>, X11Failure> rootItem(X11AtomName property,
                                                                                   std::uint32_t type,
                                                                                   Deadline deadline) const;
    [[nodiscard]] std::expected<std::vector<std::uint32_t>, X11Failure> rootWindows(X11AtomName property,
                                                                                    Deadline deadline) const;
    [[nodiscard]] std::expected<xcb_window_t, X11Failure> activeWindow(Deadline deadline) const;
    [[nodiscard]] std::optional<WindowID> effectiveActiveWindow(Deadline deadline);
    [[nodiscard]] bool isOnCurrentDesktop(xcb_window_t window, const X11WindowFacts& facts, Deadline deadline) const;
    [[nodiscard]] std::expected<X11WindowFacts, AXError> factsOf(WindowID window, Reading reading, Deadline deadline);
    [[nodiscard]] Rect inAccessibilitySpace(const Rect& root, Deadline deadline);
    void handle(const xcb_generic_event_t& event);
    void handleRootProperty(xcb_atom_t property);
    void lookAtWindows();
    void getToKnowWindows(Deadline deadline);
    [[nodiscard]] std::vector<DisplayDescription> displays(Deadline deadline);
    void checkDisplaysSoon();
    void checkDisplaysIn(Duration delay);
    void checkDisplays();

    X11Connection& connection_;
    RunLoop& runLoop_;
    X11Atoms atoms_;
    ProcessWatcher processWatcher_;
    X11WindowRegistry registry_;
    X11Applications applications_;
    X11Monitors monitors_;
    X11WindowManager windowManager_;
    X11FrameWriter writer_;
    bool isNested_ = false;  // the server is a client of a Wayland compositor
    Observer observer_;
    std::vector<DisplayDescription> toldDisplays_;
    RunLoop::Timer displaysCheck_;
    bool checksDisplays_ = false;
    RunLoop::Timer windowsLook_;
    bool looksAtWindows_ = false;
    Subscription handler_;
};

}  // namespace velmorand

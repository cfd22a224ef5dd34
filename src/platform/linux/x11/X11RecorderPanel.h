#pragma once

#include "base/Subscription.h"
#include "platform/Logger.h"
#include "platform/RecorderPanelHost.h"
#include "platform/RunLoop.h"
#include "platform/linux/SessionLock.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11KeyTranslator.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11KeyboardGrab.h"
#include "platform/linux/x11/X11WindowManager.h"

#include <bitset>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace velmorand {

/// What every recorder panel uses.
struct X11RecorderServices {
    X11Connection& connection;
    RunLoop& runLoop;
    const X11Atoms& atoms;
    X11Keyboard& keyboard;
    X11WindowManager& windowManager;
    SessionLock& sessionLock;
    Logger logger;
    /// Returns when the X server has done all that the views have asked of it on their own connection.
    std::function<void()> synchroniseViews;
};

/// One recorder panel, on screen from its making to its end. Its window belongs to the views, on another connection;
/// the keyboard is taken for it here. It is the key window from when it has the focus or is active until it loses that,
/// the desktop changes, it is taken off the screen or the session is locked; then it never is again. All that it tells is
/// told in later turns, and nothing after its end. Main thread only.
class X11RecorderPanel {
public:
    X11RecorderPanel(X11RecorderServices& services, std::unique_ptr<RecorderPanelWindow> window,
                     RecorderPanelEvents events);
    ~X11RecorderPanel();

    X11RecorderPanel(const X11RecorderPanel&) = delete;
    X11RecorderPanel& operator=(const X11RecorderPanel&) = delete;

private:
    using What = std::function<void(const RecorderPanelEvents&)>;

    void handle(const xcb_generic_event_t& event);
    void handleOfWindow(const xcb_generic_event_t& event);
    void handleFocus(const xcb_focus_in_event_t& change, bool isIn);
    void handleProperty(const xcb_property_notify_event_t& change);
    void handlePress(const xcb_key_press_event_t& press);
    void handleModifiers(std::uint32_t mask);
    void takeKeysDown(const xcb_keymap_notify_event_t& keymap);
    [[nodiscard]] const X11KeyTranslator* translator();

    void activate();
    void becomeKey();
    void sayThatItIsNotKey();
    void resignKey();
    void endByUser();
    void lookSoon(bool& isPosted, void (X11RecorderPanel::*look)());
    void lookAtDesktop();
    void lookAtFocus();
    void lookWhetherShown();
    void tell(What what);

    X11RecorderServices& services_;
    X11Connection& connection_;
    std::shared_ptr<RecorderPanelEvents> events_;  // what is on its way to them dies with the panel
    std::unique_ptr<RecorderPanelWindow> window_;  // null when the user has closed it
    xcb_window_t id_;
    X11KeyboardGrab grab_;
    std::optional<X11KeyTranslator> translator_;
    bool translatorIsCurrent_ = false;
    std::bitset<256> keysDown_;
    std::uint64_t toldFlags_ = 0;
    std::optional<std::uint32_t> firstDesktop_;  // the current one when the panel came
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
    bool isKey_ = false;
    bool wasActive_ = false;  // the window manager has said so
    bool hasResigned_ = false;
    bool becomesKey_ = false;
    bool looksAtDesktop_ = false;
    bool looksAtFocus_ = false;
    bool looksWhetherShown_ = false;
    RunLoop::Timer patience_;
    Subscription lock_;
    Subscription handler_;
};

}  // namespace velmorand

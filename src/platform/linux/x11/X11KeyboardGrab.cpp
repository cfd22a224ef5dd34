#include "platform/linux/x11/X11KeyboardGrab.h"

#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr std::chrono::milliseconds askFor{500};
constexpr std::chrono::milliseconds askAgainAfter{25};
/// How long the server may take for one answer.
constexpr std::chrono::milliseconds answerTimeout{100};

}  // namespace

X11KeyboardGrab::X11KeyboardGrab(X11Connection& connection, RunLoop& runLoop, xcb_window_t window, Refusal refused)
    : connection_(connection), runLoop_(runLoop), window_(window), refused_(std::move(refused)) {}

void X11KeyboardGrab::acquire() {
    if (phase_ != Phase::idle) return;
    phase_ = Phase::asking;
    giveUp_ = runLoop_.now() + askFor;
    ask();
}

void X11KeyboardGrab::ask() {
    const auto reply = connection_.reply<xcb_grab_keyboard_reply_t>(
        xcb_grab_keyboard(connection_.raw(), 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        std::chrono::steady_clock::now() + answerTimeout);
    if (reply && (*reply)->status == XCB_GRAB_STATUS_SUCCESS) {
        phase_ = Phase::held;
    } else if (runLoop_.now() < giveUp_ && !connection_.isLost()) {
        again_ = runLoop_.after(askAgainAfter, [this] { ask(); });
    } else {
        phase_ = Phase::refused;
        refused_(reply ? std::optional<int>((*reply)->status) : std::nullopt);
    }
}

/// Also after a refusal: a server that did not answer in time may have given it all the same. Ungrabbing what somebody
/// else has does nothing.
void X11KeyboardGrab::release() {
    again_.cancel();
    const Phase before = std::exchange(phase_, Phase::released);
    if (before == Phase::idle || before == Phase::released) return;
    xcb_ungrab_keyboard(connection_.raw(), XCB_CURRENT_TIME);
    connection_.flush();
}

}  // namespace velmorand

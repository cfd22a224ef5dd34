#include "desktop/harness/Pager.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace velmorand::desktop {

namespace {

/// The "source indication" of the window manager messages: a pager, so the user's own wish.
constexpr std::uint32_t fromPager = 2;
constexpr std::chrono::milliseconds asksAgainAfter{2000};
constexpr std::string_view horizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
constexpr std::string_view vertically = "_NET_WM_STATE_MAXIMIZED_VERT";
constexpr std::string_view fullscreen = "_NET_WM_STATE_FULLSCREEN";

std::string text(const std::optional<PixelRect>& frame) {
    return frame ? frame->text() : "no frame";
}

}  // namespace

Pager::Outcome Pager::activate(xcb_window_t window, std::chrono::milliseconds timeout) {
    auto& connection = observer_.connection();
    const auto hasFocus = [&] {
        const auto focus = connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw()));
        return focus && focus->focus != observer_.connection().root() && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT;
    };
    const auto isActive = [&] { return observer_.activeWindow() == window && hasFocus(); };
    // A window that has just come up may ask for the keyboard once more behind this request.
    for (auto left = timeout; left > left.zero(); left -= asksAgainAfter) {
        connection.sendToWindowManager(window, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0, 0, 0});
        if (observer_.waitUntil(isActive, std::min(left, asksAgainAfter))) return {};
    }
    return std::unexpected(HarnessError{
        fmt::format("window {:#x} was not activated; active is {:#x}", window, observer_.activeWindow().value_or(0))});
}

Pager::Outcome Pager::maximize(xcb_window_t window, std::chrono::milliseconds timeout) {
    changeState(window, Change::add, vertically, horizontally);
    const auto reached = [](const WindowStates& states) {
        return states.maximizedHorizontally && states.maximizedVertically;
    };
    return waitFor("maximised", window, reached, timeout);
}

Pager::Outcome Pager::maximizeVertically(xcb_window_t window, std::chrono::milliseconds timeout) {
    changeState(window, Change::add, vertically);
    const auto reached = [](const WindowStates& states) { return states.maximizedVertically; };
    return waitFor("vertically maximised", window, reached, timeout);
}

Pager::Outcome Pager::unmaximize(xcb_window_t window, std::chrono::milliseconds timeout) {
    changeState(window, Change::remove, vertically, horizontally);
    const auto reached = [](const WindowStates& states) {
        return !states.maximizedHorizontally && !states.maximizedVertically;
    };
    return waitFor("un-maximised", window, reached, timeout);
}

Pager::Outcome Pager::setFullscreen(xcb_window_t window, bool isFullscreen, std::chrono::milliseconds timeout) {
    changeState(window, isFullscreen ? Change::add : Change::remove, fullscreen);
    const auto reached = [=](const WindowStates& states) { return states.fullscreen == isFullscreen; };
    return waitFor(isFullscreen ? "full-screen" : "out of full screen", window, reached, timeout);
}

Pager::Outcome Pager::minimize(xcb_window_t window, std::chrono::milliseconds timeout) {
    constexpr std::uint32_t iconicState = 3;
    observer_.connection().sendToWindowManager(window, "WM_CHANGE_STATE", {iconicState, 0, 0, 0, 0});
    // Some window managers tell it by the hidden state, some by unmapping the window, most by both.
    const auto reached = [&](const WindowStates& states) { return states.hidden || !observer_.isViewable(window); };
    return waitFor("minimised", window, reached, timeout);
}

Pager::Outcome Pager::close(xcb_window_t window, std::chrono::milliseconds timeout) {
    observer_.connection().sendToWindowManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromPager, 0, 0, 0});
    if (observer_.waitUntil([&] { return !observer_.clientRect(window); }, timeout)) return {};
    return std::unexpected(HarnessError{fmt::format("window {:#x} did not close", window)});
}

std::expected<PixelRect, HarnessError> Pager::place(xcb_window_t window, const PixelRect& visibleFrame, int tolerance,
                                                    std::chrono::milliseconds timeout) {
    requestFrame(window, visibleFrame);
    const auto frame = observer_.waitForSettledFrame(window, visibleFrame, tolerance, timeout);
    if (frame && framesAgree(*frame, visibleFrame, tolerance)) return *frame;
    return std::unexpected(
        HarnessError{fmt::format("window {:#x} is at {} instead of {}", window, text(frame), visibleFrame.text())});
}

void Pager::requestFrame(xcb_window_t window, const PixelRect& visibleFrame) {
    const auto outside = observer_.frameExtents(window).value_or(Extents{});
    const auto inside = observer_.clientShadow(window).value_or(Extents{});
    const Extents added{outside.left - inside.left, outside.right - inside.right, outside.top - inside.top,
                        outside.bottom - inside.bottom};
    const PixelRect client{visibleFrame.x + added.left, visibleFrame.y + added.top,
                           visibleFrame.width - added.left - added.right,
                           visibleFrame.height - added.top - added.bottom};
    if (observer_.isSupported("_NET_MOVERESIZE_WINDOW")) {
        requestClientRect(window, client);
    } else {
        configure(window, client, outside);
    }
}

void Pager::requestClientRect(xcb_window_t window, const PixelRect& client) {
    constexpr std::uint32_t allFourFields = 0xf;
    observer_.connection().sendToWindowManager(
        window, "_NET_MOVERESIZE_WINDOW",
        {XCB_GRAVITY_STATIC | allFourFields << 8U | fromPager << 12U, static_cast<std::uint32_t>(client.x),
         static_cast<std::uint32_t>(client.y), static_cast<std::uint32_t>(client.width),
         static_cast<std::uint32_t>(client.height)});
}

void Pager::configure(xcb_window_t window, const PixelRect& client, const Extents& outside) {
    // What the position means is the client's choice: its own corner, or that of its frame.
    const bool isOwnCorner = observer_.gravity(window) == XCB_GRAVITY_STATIC;
    const std::array values{static_cast<std::uint32_t>(client.x - (isOwnCorner ? 0 : outside.left)),
                            static_cast<std::uint32_t>(client.y - (isOwnCorner ? 0 : outside.top)),
                            static_cast<std::uint32_t>(client.width), static_cast<std::uint32_t>(client.height)};
    auto& connection = observer_.connection();
    xcb_configure_window(connection.raw(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    connection.synchronise();
}

void Pager::changeState(xcb_window_t window, Change change, std::string_view first, std::string_view second) {
    auto& connection = observer_.connection();
    const xcb_atom_t secondAtom = second.empty() ? xcb_atom_t{XCB_ATOM_NONE} : connection.atom(second);
    connection.sendToWindowManager(
        window, "_NET_WM_STATE",
        {static_cast<std::uint32_t>(change), connection.atom(first), secondAtom, fromPager, 0});
}

Pager::Outcome Pager::waitFor(std::string_view what, xcb_window_t window,
                              const std::function<bool(const WindowStates&)>& reached,
                              std::chrono::milliseconds timeout) {
    observer_.connection().watch(window);
    if (observer_.waitUntil([&] { return reached(observer_.states(window)); }, timeout)) return {};
    return std::unexpected(HarnessError{
        fmt::format("window {:#x} was not {}; it is at {}", window, what, text(observer_.visibleFrame(window)))});
}

}  // namespace velmorand::desktop

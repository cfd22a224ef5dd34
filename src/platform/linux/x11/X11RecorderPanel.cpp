#include "platform/linux/x11/X11RecorderPanel.h"

#include "platform/linux/x11/X11PropertyReader.h"
#include "platform/linux/x11/X11WindowActivation.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

namespace velmorand {
namespace {

/// Bounds what is asked between two events.
constexpr std::chrono::milliseconds queryTimeout{300};

/// How long the panel may take to become the key window.
constexpr std::chrono::milliseconds becomesKeyWithin{500};

/// Key events and the focus; the keys that are down when the focus comes; what becomes of the window; times.
constexpr std::uint32_t windowEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                       XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEYMAP_STATE |
                                       XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

Deadline queryDeadline() {
    return std::chrono::steady_clock::now() + queryTimeout;
}

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// Whether the focus came to the window itself or left it. The pointer's part in it does not count.
bool concernsWindowItself(const xcb_focus_in_event_t& change) {
    switch (change.detail) {
        case XCB_NOTIFY_DETAIL_ANCESTOR:
        case XCB_NOTIFY_DETAIL_VIRTUAL:
        case XCB_NOTIFY_DETAIL_NONLINEAR:
        case XCB_NOTIFY_DETAIL_NONLINEAR_VIRTUAL: return true;
        default: return false;
    }
}

/// A grab makes the focus seem to come and go.
bool isByGrab(const xcb_focus_in_event_t& change) {
    return change.mode == XCB_NOTIFY_MODE_GRAB || change.mode == XCB_NOTIFY_MODE_UNGRAB;
}

}  // namespace

X11RecorderPanel::X11RecorderPanel(X11RecorderServices& services, std::unique_ptr<RecorderPanelWindow> window,
                                   RecorderPanelEvents events)
    : services_(services),
      connection_(services.connection),
      events_(std::make_shared<RecorderPanelEvents>(std::move(events))),
      window_(std::move(window)),
      id_(static_cast<xcb_window_t>(window_->handle())),
      grab_(services.connection, services.runLoop, id_,
            [this](std::optional<int> status) {
                services_.logger.error(
                    "The recorder does not get the whole keyboard ({}): keys that other programs have for themselves "
                    "do not reach it.",
                    status ? fmt::format("status {}", *status) : "no answer");
            }),
      patience_(services.runLoop.after(becomesKeyWithin, [this] { sayThatItIsNotKey(); })),
      lock_(services.sessionLock.whenLocked([this] { resignKey(); })),
      handler_(connection_.handle([this](const xcb_generic_event_t& event) { handle(event); })) {
    services_.synchroniseViews();
    connection_.requestEvents(id_, windowEvents);
    // The answer comes after the server has taken the wish down: it does not heed the order of two connections.
    const Deadline deadline = queryDeadline();
    firstDesktop_ = decodeFirstItem(readPropertyNow(connection_, connection_.root(),
                                                    services_.atoms[X11AtomName::netCurrentDesktop],
                                                    x11_property_limit::numbers, deadline),
                                    XCB_ATOM_CARDINAL);
    static_cast<void>(translator());  // a key that comes soon finds it ready
    window_->show([this] { endByUser(); });
}

X11RecorderPanel::~X11RecorderPanel() {
    grab_.release();
    services_.keyboard.followModifiers(false);
}

void X11RecorderPanel::handle(const xcb_generic_event_t& event) {
    if (services_.keyboard.tellsOfChange(event)) translatorIsCurrent_ = false;
    if (const auto held = services_.keyboard.heldModifiers(event)) handleModifiers(*held);
    if (window_ && !isSentEvent(event)) handleOfWindow(event);  // nobody else presses keys here
}

void X11RecorderPanel::handleOfWindow(const xcb_generic_event_t& event) {
    switch (eventType(event)) {
        case XCB_KEY_PRESS:
            if (as<xcb_key_press_event_t>(event).event == id_) handlePress(as<xcb_key_press_event_t>(event));
            return;
        case XCB_KEY_RELEASE:
            if (as<xcb_key_release_event_t>(event).event == id_)
                keysDown_.reset(as<xcb_key_release_event_t>(event).detail);
            return;
        case XCB_KEYMAP_NOTIFY: takeKeysDown(as<xcb_keymap_notify_event_t>(event)); return;
        case XCB_FOCUS_IN:
        case XCB_FOCUS_OUT:
            if (as<xcb_focus_in_event_t>(event).event == id_)
                handleFocus(as<xcb_focus_in_event_t>(event), eventType(event) == XCB_FOCUS_IN);
            return;
        case XCB_MAP_NOTIFY:
            if (as<xcb_map_notify_event_t>(event).window == id_) activate();
            return;
        case XCB_UNMAP_NOTIFY:
            if (as<xcb_unmap_notify_event_t>(event).window == id_)
                lookSoon(looksWhetherShown_, &X11RecorderPanel::lookWhetherShown);
            return;
        case XCB_DESTROY_NOTIFY:
            if (as<xcb_destroy_notify_event_t>(event).window == id_) endByUser();
            return;
        case XCB_PROPERTY_NOTIFY: handleProperty(as<xcb_property_notify_event_t>(event)); return;
        default: return;
    }
}

void X11RecorderPanel::handleFocus(const xcb_focus_in_event_t& change, bool isIn) {
    if (isByGrab(change) || !concernsWindowItself(change)) return;
    if (isIn)
        lookSoon(becomesKey_, &X11RecorderPanel::becomeKey);
    else if (isKey_)
        lookSoon(looksAtFocus_, &X11RecorderPanel::lookAtFocus);
}

void X11RecorderPanel::handleProperty(const xcb_property_notify_event_t& change) {
    if (change.window == id_) lastTime_ = change.time;
    const bool concernsDesktop = change.atom == services_.atoms[X11AtomName::netActiveWindow] ||
                                 change.atom == services_.atoms[X11AtomName::netCurrentDesktop];
    if (change.window == connection_.root() && concernsDesktop)
        lookSoon(looksAtDesktop_, &X11RecorderPanel::lookAtDesktop);
}

/// A key that is down already repeats itself, or was pressed for somebody else.
void X11RecorderPanel::handlePress(const xcb_key_press_event_t& press) {
    lastTime_ = press.time;
    if (hasResigned_ || keysDown_.test(press.detail)) return;
    keysDown_.set(press.detail);
    const X11KeyTranslator* meaning = translator();
    const auto key = meaning == nullptr ? std::nullopt : meaning->keyDown(press.detail, press.state);
    if (!key) return;
    tell([key = *key](const RecorderPanelEvents& events) {
        if (events.keyDown) events.keyDown(key);
    });
}

/// The server tells everybody of these, so the panel must have the keyboard.
void X11RecorderPanel::handleModifiers(std::uint32_t mask) {
    const X11KeyTranslator* meaning = translator();
    if (!isKey_ || hasResigned_ || meaning == nullptr) return;
    const std::uint64_t flags = meaning->modifierFlags(mask);
    if (std::exchange(toldFlags_, flags) == flags) return;
    tell([flags](const RecorderPanelEvents& events) {
        if (events.modifiersChanged) events.modifiersChanged(flags);
    });
}

/// Comes with the focus, for only from then on presses and releases are told.
void X11RecorderPanel::takeKeysDown(const xcb_keymap_notify_event_t& keymap) {
    constexpr std::size_t firstKeycode = 8;
    for (std::size_t i = 0; i < std::size(keymap.keys) * 8; ++i)
        keysDown_.set(i + firstKeycode, (std::uint32_t{keymap.keys[i / 8]} >> (i % 8) & 1U) != 0);
}

/// Null while the server does not say what its keys mean.
const X11KeyTranslator* X11RecorderPanel::translator() {
    if (!translatorIsCurrent_) {
        translatorIsCurrent_ = true;  // an event during the reading is handled later and sets it back
        if (auto current = services_.keyboard.describe(queryDeadline())) {
            translator_ = std::move(*current);
            services_.keyboard.followModifiers(true);
        } else {
            translatorIsCurrent_ = false;
        }
    }
    return translator_ ? &*translator_ : nullptr;
}

/// As on the user's behalf; without a window manager it takes the focus itself.
void X11RecorderPanel::activate() {
    if (services_.windowManager.isAlive(queryDeadline()))
        activateWindow(connection_, id_, lastTime_);
    else
        xcb_set_input_focus(connection_.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, id_, XCB_CURRENT_TIME);
    connection_.flush();
}

/// In a turn of its own, when whatever was given up for the recording is free. A keyboard that cannot be read is left to
/// the others: the panel would swallow every key.
void X11RecorderPanel::becomeKey() {
    if (hasResigned_ || std::exchange(isKey_, true)) return;
    if (translator() != nullptr)
        grab_.acquire();
    else
        services_.logger.error("The recorder cannot read the keyboard: the X server does not say what its keys mean.");
}

void X11RecorderPanel::sayThatItIsNotKey() {
    if (isKey_ || hasResigned_) return;
    services_.logger.error("The recorder does not get the whole keyboard: its window has not become the active one.");
}

void X11RecorderPanel::resignKey() {
    grab_.release();
    if (!window_ || std::exchange(hasResigned_, true)) return;
    tell([](const RecorderPanelEvents& events) {
        if (events.resignedKey) events.resignedKey();
    });
}

void X11RecorderPanel::endByUser() {
    grab_.release();
    window_.reset();
    hasResigned_ = true;
    tell([](const RecorderPanelEvents& events) {
        if (events.closed) events.closed();
    });
}

/// Not while events are handled: more of them follow as a rule, and only then the desktop is what they make it.
void X11RecorderPanel::lookSoon(bool& isPosted, void (X11RecorderPanel::*look)()) {
    if (std::exchange(isPosted, true)) return;
    services_.runLoop.post([this, &isPosted, look, alive = std::weak_ptr(events_)] {
        if (alive.expired()) return;
        isPosted = false;
        if (window_ && !hasResigned_) (this->*look)();
    });
}

/// That another window is active says something only once the panel was: until then it has yet to become so.
void X11RecorderPanel::lookAtDesktop() {
    const Deadline deadline = queryDeadline();
    const auto number = [&](X11AtomName property, std::uint32_t type) {
        return decodeFirstItem(readPropertyNow(connection_, connection_.root(), services_.atoms[property],
                                               x11_property_limit::numbers, deadline),
                               type);
    };
    const auto active = number(X11AtomName::netActiveWindow, XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    const auto desktop = number(X11AtomName::netCurrentDesktop, XCB_ATOM_CARDINAL);
    const bool isOtherDesktop = firstDesktop_ && desktop && *desktop != *firstDesktop_;
    const bool isOtherActive = wasActive_ && active != XCB_WINDOW_NONE && active != id_;
    if (isOtherDesktop || isOtherActive) {
        resignKey();
    } else if (active == id_) {
        wasActive_ = true;
        becomeKey();
    }
}

/// Some window managers take the focus for a moment and give it back.
void X11RecorderPanel::lookAtFocus() {
    const auto focus =
        connection_.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection_.raw()), queryDeadline());
    if (!focus || (*focus)->focus != id_) resignKey();
}

/// A window manager that starts or ends takes windows off the screen for a moment; one that was destroyed is gone.
void X11RecorderPanel::lookWhetherShown() {
    const auto attributes = connection_.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(connection_.raw(), id_), queryDeadline());
    if (attributes && (*attributes)->map_state != XCB_MAP_STATE_UNMAPPED) return;
    const bool isGone = !attributes && attributes.error() == X11Failure::error;
    if (isGone)
        endByUser();
    else
        resignKey();
}

void X11RecorderPanel::tell(What what) {
    services_.runLoop.post([what = std::move(what), events = std::weak_ptr(events_)] {
        if (const auto alive = events.lock()) what(*alive);
    });
}

}  // namespace velmorand

#include "platform/linux/x11/X11HotKeyService.h"

#include "platform/linux/x11/X11KeyCodes.h"
#include "platform/linux/x11/X11ModifierMapReader.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

namespace velmorand {
namespace {

constexpr std::chrono::milliseconds requestTimeout{750};
/// How long after the server did not answer it is asked for its keyboard again.
constexpr std::chrono::seconds followAgainAfter{1};

/// Of the input extension, the version with which grabs by keycode came to all devices.
constexpr std::uint16_t wantedMajor = 2;
constexpr std::uint16_t wantedMinor = 2;

Deadline requestDeadline() {
    return std::chrono::steady_clock::now() + requestTimeout;
}

class X11HotKeyEvent final : public HotKeyEvent {
public:
    explicit X11HotKeyEvent(HotKeyID hotKeyID) : hotKeyID_(hotKeyID) {}

    [[nodiscard]] std::expected<HotKeyID, OSStatus> hotKeyID() const override { return hotKeyID_; }

private:
    HotKeyID hotKeyID_;
};

}  // namespace

X11HotKeyService::X11HotKeyService(X11Connection& connection, const X11Keyboard& keyboard, RunLoop& runLoop)
    : connection_(connection),
      keyboard_(keyboard),
      runLoop_(runLoop),
      grabs_(connection),
      handler_(connection.handle([this](const xcb_generic_event_t& event) { handle(event); })) {}

X11HotKeyService::~X11HotKeyService() = default;

/// Asked for again until the server has answered once. Nothing of the extension may be used before.
bool X11HotKeyService::reachInputExtension(Deadline deadline) {
    if (connection_.isLost()) return false;
    if (inputOpcode_) return true;
    const auto* extension = connection_.extension(xcb_input_id, deadline);
    if (extension == nullptr) return false;
    const auto version = connection_.reply<xcb_input_xi_query_version_reply_t>(
        xcb_input_xi_query_version(connection_.raw(), wantedMajor, wantedMinor), deadline);
    if (!version || (*version)->major_version < wantedMajor) return false;
    inputOpcode_ = extension->major_opcode;
    return true;
}

std::expected<HotKeyHandlerReference, OSStatus> X11HotKeyService::installHandler(HotKeyHandler handler) {
    // Without a handler there are no hot keys at all, so a server that is busy at the start gets its time.
    if (!reachInputExtension(std::chrono::steady_clock::now() + X11Connection::startTimeout))
        return std::unexpected(hotKeyInternalError);
    const HotKeyHandlerReference reference{++lastReference_};
    handlers_.emplace(reference, std::move(handler));
    return reference;
}

void X11HotKeyService::removeHandler(HotKeyHandlerReference reference) {
    handlers_.erase(reference);
}

HotKeyRegistration X11HotKeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID hotKeyID) {
    const Deadline deadline = requestDeadline();
    if (!reachInputExtension(deadline) || !refreshKeyboard(deadline)) return {hotKeyInternalError, std::nullopt};
    const auto combination = combinationFor(keyCode, modifiers);
    if (!combination) return {hotKeyParameterError, std::nullopt};
    if (registrationOf(*combination) != nullptr) return {hotKeyAlreadyTaken, std::nullopt};
    if (const OSStatus status = grabs_.acquire(*combination, deadline); status != noError)
        return {status, std::nullopt};
    const HotKeyReference reference{++lastReference_};
    registrations_.emplace(reference, Registration{keyCode, modifiers, hotKeyID, combination});
    return {noError, reference};
}

OSStatus X11HotKeyService::unregisterHotKey(HotKeyReference reference) {
    if (registrations_.erase(reference) == 0) return hotKeyParameterError;
    postOnce(releasePosted_, &X11HotKeyService::keepOnlyRegistered);
    return noError;
}

void X11HotKeyService::keepOnlyRegistered() {
    std::set<X11KeyCombination> registered;
    for (const auto& [reference, registration] : registrations_) {
        if (registration.combination) registered.insert(*registration.combination);
    }
    grabs_.keepOnly(registered);
    connection_.flush();
}

void X11HotKeyService::postOnce(bool& isPosted, void (X11HotKeyService::*task)()) {
    if (std::exchange(isPosted, true)) return;
    runLoop_.post([this, &isPosted, task, alive = std::weak_ptr(alive_)] {
        if (alive.expired()) return;
        isPosted = false;
        (this->*task)();
    });
}

std::optional<X11KeyCombination> X11HotKeyService::combinationFor(std::uint32_t keyCode,
                                                                  std::uint32_t modifiers) const {
    const auto keycode = xKeycodeFor(keyCode);
    const auto mask = modifiers_ ? modifiers_->maskFor(modifiers) : std::nullopt;
    if (!keycode || !mask) return std::nullopt;
    return X11KeyCombination{*keycode, *mask};
}

/// Of two that a change of the keyboard has made equal, the older one.
const X11HotKeyService::Registration* X11HotKeyService::registrationOf(const X11KeyCombination& combination) const {
    const auto found = std::ranges::find_if(registrations_,
                                            [&](const auto& entry) { return entry.second.combination == combination; });
    return found == registrations_.end() ? nullptr : &found->second;
}

/// Keys are grabbed by their place, so another layout changes nothing; where the modifiers and locks went matters. The
/// server tells of a change also when only another device takes its turn, so an equal map must cost nothing more.
bool X11HotKeyService::refreshKeyboard(Deadline deadline) {
    if (keyboardIsCurrent_) return true;
    const auto now = readModifierMap(connection_, deadline);
    if (!now) return false;
    if (now != modifiers_ || !grabsAreComplete_) moveTo(*now, deadline);
    keyboardIsCurrent_ = grabsAreComplete_;
    return keyboardIsCurrent_;
}

void X11HotKeyService::moveTo(const X11ModifierMap& modifiers, Deadline deadline) {
    modifiers_ = modifiers;
    for (auto& [reference, registration] : registrations_)
        registration.combination = combinationFor(registration.keyCode, registration.modifiers);
    keepOnlyRegistered();
    grabs_.setLockCombinations(modifiers.lockCombinations());
    grabsAreComplete_ = true;
    for (const auto& [reference, registration] : registrations_) {
        if (!registration.combination) continue;
        if (grabs_.acquire(*registration.combination, deadline) == hotKeyInternalError) grabsAreComplete_ = false;
    }
}

void X11HotKeyService::followKeyboard() {
    if (refreshKeyboard(requestDeadline()) || connection_.isLost()) return;
    followAgain_ = runLoop_.after(followAgainAfter, [this] { followKeyboard(); });
}

void X11HotKeyService::handle(const xcb_generic_event_t& event) {
    if (keyboard_.tellsOfChange(event)) {
        keyboardIsCurrent_ = false;
        // Not now: more of these follow as a rule, and the presses among them were made by the grabs as they are.
        if (modifiers_) postOnce(followPosted_, &X11HotKeyService::followKeyboard);
    } else if (eventType(event) == XCB_GE_GENERIC) {
        handlePress(event);
    }
}

void X11HotKeyService::handlePress(const xcb_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != inputOpcode_ || generic.event_type != XCB_INPUT_KEY_PRESS || !modifiers_) return;
    const auto& press = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    if ((press.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0) return;
    const auto* registration =
        registrationOf({static_cast<std::uint8_t>(press.detail), press.mods.effective & ~modifiers_->locks()});
    if (registration != nullptr) deliver(registration->hotKeyID);
}

void X11HotKeyService::deliver(HotKeyID hotKeyID) {
    const X11HotKeyEvent event(hotKeyID);
    const auto handlers = handlers_;
    for (const auto& [reference, handler] : handlers) handler(&event);
}

}  // namespace velmorand

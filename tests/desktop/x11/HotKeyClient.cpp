#include "desktop/x11/HotKeyClient.h"

#include "desktop/harness/Deadline.h"
#include "platform/linux/x11/X11KeyCodes.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr std::uint32_t signature = 0x54455354;

bool isRepeat(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_GE_GENERIC) return false;
    const auto& press = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
    return press.event_type == XCB_INPUT_KEY_PRESS && (press.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
}

}  // namespace

std::uint32_t virtualKeyCode(Key key) {
    const auto row = std::ranges::find(x11KeyCodes, std::to_underlying(key), &X11KeyCodeRow::xKeycode);
    if (row == x11KeyCodes.end()) throw std::invalid_argument("a key without a virtual key code");
    return row->virtualKeyCode;
}

HotKeyClient::HotKeyClient(QtRunLoop& runLoop) : runLoop_(runLoop) {
    auto connection = X11Connection::open();
    if (!connection) throw std::runtime_error(connection.error());
    connection_ = std::move(*connection);
    keyboard_ = std::make_unique<X11Keyboard>(*connection_);
    service_ = std::make_unique<X11HotKeyService>(*connection_, *keyboard_, runLoop);
    repeatCounter_ = connection_->listen([this](const xcb_generic_event_t& event) {
        if (isRepeat(event)) ++repeats_;
    });
    readable_ = runLoop.watch(connection_->file(), [this] { handleConnection(); });
    sleeping_ = runLoop.beforeSleeping([this] { handleConnection(); });
}

HotKeyClient::~HotKeyClient() = default;

OSStatus HotKeyClient::install() {
    const auto installed = service_->installHandler([this](const HotKeyEvent* event) -> OSStatus {
        pressed_.push_back(event->hotKeyID().value_or(HotKeyID{}).id);
        return noError;
    });
    return installed ? noError : installed.error();
}

OSStatus HotKeyClient::add(Key key, std::uint32_t modifiers, std::uint32_t id) {
    const auto [status, reference] = service_->registerHotKey(virtualKeyCode(key), modifiers, {signature, id});
    if (reference) added_.push_back(*reference);
    return status;
}

void HotKeyClient::giveAllBack() {
    for (const HotKeyReference reference : std::exchange(added_, {})) service_->unregisterHotKey(reference);
}

void HotKeyClient::handleEverythingSent() {
    // What the server sent before its answer has arrived with the answer.
    if (!connection_->check({}, std::chrono::steady_clock::now() + patience))
        throw std::runtime_error("the X server does not answer");
    while (connection_->handleEvents()) {}
}

void HotKeyClient::handleConnection() {
    const bool hasMore = !connection_->isLost() && connection_->handleEvents();
    if (hasMore) {
        runLoop_.post([this, alive = std::weak_ptr(alive_)] {
            if (!alive.expired()) handleConnection();
        });
    }
    if (connection_->isLost()) readable_.cancel();
}

}  // namespace velmorand::desktop

#pragma once

#include "desktop/harness/TestKeyboard.h"
#include "platform/linux/QtRunLoop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HotKeyService.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace velmorand::desktop {

/// Hot-key modifiers of the platform.
namespace modifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace modifier

/// The virtual key code of the key at this place.
[[nodiscard]] std::uint32_t virtualKeyCode(Key key);

/// A program with hot keys, on a connection of its own to the display that the environment names. It notes the id of
/// every press.
class HotKeyClient {
public:
    explicit HotKeyClient(QtRunLoop& runLoop);
    ~HotKeyClient();

    HotKeyClient(const HotKeyClient&) = delete;
    HotKeyClient& operator=(const HotKeyClient&) = delete;

    [[nodiscard]] X11HotKeyService& service() { return *service_; }
    [[nodiscard]] X11Connection& connection() { return *connection_; }
    [[nodiscard]] X11Keyboard& keyboard() { return *keyboard_; }

    /// Installs the handler that notes the presses; answers the status.
    OSStatus install();
    /// Registers the combination under `id` and remembers it when that succeeds; answers the status.
    OSStatus add(Key key, std::uint32_t modifiers, std::uint32_t id);
    /// Gives back everything that was added.
    void giveAllBack();
    /// The service ends, the connection stays.
    void endService() { service_.reset(); }

    /// Takes in what the server has sent so far and handles it, as turns of the loop would.
    void handleEverythingSent();

    /// The ids pressed since this was asked last.
    [[nodiscard]] std::vector<std::uint32_t> takePressed() { return std::exchange(pressed_, {}); }
    [[nodiscard]] const std::vector<std::uint32_t>& pressed() const { return pressed_; }
    /// How often the server has said that a held key repeats.
    [[nodiscard]] int repeats() const { return repeats_; }

    /// The number of the next request, which counts as one itself.
    [[nodiscard]] unsigned int requestNumber() { return xcb_no_operation(connection_->raw()).sequence; }

private:
    void handleConnection();

    QtRunLoop& runLoop_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11Keyboard> keyboard_;
    std::unique_ptr<X11HotKeyService> service_;
    std::vector<HotKeyReference> added_;
    std::vector<std::uint32_t> pressed_;
    int repeats_ = 0;
    Subscription repeatCounter_;
    Subscription readable_;
    Subscription sleeping_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace velmorand::desktop

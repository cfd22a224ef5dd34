#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>

namespace velmorand {

/// A platform status; 0 is success (`OSStatus`).
using OSStatus = std::int32_t;

inline constexpr OSStatus noError = 0;
/// No key or no modifier of the keyboard corresponds to the request, or one modifier to two of it.
inline constexpr OSStatus hotKeyParameterError = -50;
/// The combination could not be asked for: no connection to the window system, or it refused.
inline constexpr OSStatus hotKeyInternalError = -9868;
/// Somebody, perhaps this program, holds the combination already.
inline constexpr OSStatus hotKeyAlreadyTaken = -9878;

/// How a hot key is told apart: who registered it and under which number (`EventHotKeyID`).
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const HotKeyID&) const = default;
};

/// One press of a registered hot key, alive for the duration of the handler's call.
class HotKeyEvent {
public:
    virtual ~HotKeyEvent() = default;
    HotKeyEvent(const HotKeyEvent&) = delete;
    HotKeyEvent& operator=(const HotKeyEvent&) = delete;

    /// Which hot key was pressed; fails with a status when the event does not carry it.
    [[nodiscard]] virtual std::expected<HotKeyID, OSStatus> hotKeyID() const = 0;

protected:
    HotKeyEvent() = default;
};

/// Called for each press, once however long the key is held. The event may be missing. Answers whether the press
/// was handled, as a status.
using HotKeyHandler = std::function<OSStatus(const HotKeyEvent* event)>;

enum class HotKeyHandlerReference : std::uint64_t {};
enum class HotKeyReference : std::uint64_t {};

/// The answer to a registration. Success without a reference is possible and means that there is nothing to
/// unregister.
struct HotKeyRegistration {
    OSStatus status = noError;
    std::optional<HotKeyReference> reference;

    bool operator==(const HotKeyRegistration&) const = default;
};

/// System-wide hot keys (Carbon Event Manager). Main thread only; presses arrive on the main loop.
class HotKeyService {
public:
    virtual ~HotKeyService() = default;
    HotKeyService(const HotKeyService&) = delete;
    HotKeyService& operator=(const HotKeyService&) = delete;

    /// Installs a handler for presses of every hot key of this process (`InstallEventHandler`).
    [[nodiscard]] virtual std::expected<HotKeyHandlerReference, OSStatus> installHandler(HotKeyHandler handler) = 0;

    /// Removes an installed handler; one that is not installed is ignored (`RemoveEventHandler`).
    virtual void removeHandler(HotKeyHandlerReference reference) = 0;

    /// Asks for a combination (`RegisterEventHotKey`). `keyCode` is a virtual key code (a physical position),
    /// `modifiers` a mask of the platform's hot-key modifiers.
    [[nodiscard]] virtual HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                            HotKeyID hotKeyID) = 0;

    /// Gives a combination back (`UnregisterEventHotKey`): no press of it is reported from now on, not even one that is
    /// on its way. Other programs can have it at the end of the turn at the latest, unless it is registered again
    /// before; then a press in between is reported under the new id. Fails with a status for an unknown reference.
    virtual OSStatus unregisterHotKey(HotKeyReference reference) = 0;

protected:
    HotKeyService() = default;
};

}  // namespace velmorand

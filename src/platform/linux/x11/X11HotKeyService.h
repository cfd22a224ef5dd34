#pragma once

#include "base/Subscription.h"
#include "platform/HotKeyService.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11ModifierMap.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace velmorand {

/// Hot keys as passive grabs of the X server's input extension (XI2), one for each combination with the locks. These
/// grabs tell auto-repeat from presses and see the grabs of other clients of their kind, but not core grabs; so a
/// core grab is tried too before a combination counts as free.
class X11HotKeyService final : public HotKeyService {
public:
    explicit X11HotKeyService(X11Connection& connection);
    ~X11HotKeyService() override;

    [[nodiscard]] std::expected<HotKeyHandlerReference, OSStatus> installHandler(HotKeyHandler handler) override;
    void removeHandler(HotKeyHandlerReference reference) override;
    [[nodiscard]] HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    HotKeyID hotKeyID) override;
    OSStatus unregisterHotKey(HotKeyReference reference) override;

private:
    /// A key with its X modifiers, without the locks.
    struct Combination {
        std::uint8_t keycode = 0;
        std::uint32_t mask = 0;

        bool operator==(const Combination&) const = default;
    };
    /// What is grabbed for a combination: the key with each of these masks, which differ in the locks.
    struct Grab {
        std::uint8_t keycode = 0;
        std::vector<std::uint32_t> masks;
    };
    /// What was asked for, and what stands for it on the keyboard as it is now.
    struct Registration {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        HotKeyID hotKeyID;
        std::optional<Combination> combination;  ///< absent while the keyboard has no such key or modifier
        Grab grab;
    };

    [[nodiscard]] std::optional<X11ModifierMap> readModifierMap(Deadline deadline);
    [[nodiscard]] OSStatus probeCoreGrab(const Grab& grab, Deadline deadline);
    [[nodiscard]] OSStatus establish(const Grab& grab, Deadline deadline);
    void release(const Grab& grab);
    [[nodiscard]] std::optional<Combination> combinationFor(std::uint32_t keyCode, std::uint32_t modifiers) const;
    [[nodiscard]] Grab grabFor(const Combination& combination) const;
    void followKeyboard();
    void handle(const xcb_generic_event_t& event);
    void deliver(HotKeyID hotKeyID);

    X11Connection& connection_;
    bool hasInputExtension_ = false;
    std::uint8_t inputOpcode_ = 0;
    std::optional<X11ModifierMap> modifiers_;
    std::map<HotKeyHandlerReference, HotKeyHandler> handlers_;
    std::map<HotKeyReference, Registration> registrations_;
    std::uint64_t lastReference_ = 0;
    Subscription handler_;
};

}  // namespace velmorand

#pragma once

#include "base/Subscription.h"
#include "platform/HotKeyService.h"
#include "platform/RunLoop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11KeyGrabs.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11ModifierMap.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace velmorand {

/// Hot keys as grabs on the root window. A combination that is given back stays grabbed until the end of the turn: when
/// all are given back and registered again, no press is missed and the server hears nothing of it.
class X11HotKeyService final : public HotKeyService {
public:
    /// All must outlive the service; the keyboard is that of the connection.
    X11HotKeyService(X11Connection& connection, const X11Keyboard& keyboard, RunLoop& runLoop);
    ~X11HotKeyService() override;

    [[nodiscard]] std::expected<HotKeyHandlerReference, OSStatus> installHandler(HotKeyHandler handler) override;
    void removeHandler(HotKeyHandlerReference reference) override;
    [[nodiscard]] HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    HotKeyID hotKeyID) override;
    OSStatus unregisterHotKey(HotKeyReference reference) override;

private:
    /// What was asked for, and what stands for it on the keyboard as it is now.
    struct Registration {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        HotKeyID hotKeyID;
        std::optional<X11KeyCombination> combination;  ///< absent while the keyboard has no such key or modifiers
    };

    [[nodiscard]] bool reachInputExtension(Deadline deadline);
    [[nodiscard]] bool refreshKeyboard(Deadline deadline);
    void moveTo(const X11ModifierMap& modifiers, Deadline deadline);
    void followKeyboard();
    [[nodiscard]] std::optional<X11KeyCombination> combinationFor(std::uint32_t keyCode, std::uint32_t modifiers) const;
    [[nodiscard]] const Registration* registrationOf(const X11KeyCombination& combination) const;
    void keepOnlyRegistered();
    void postOnce(bool& isPosted, void (X11HotKeyService::*task)());
    void handle(const xcb_generic_event_t& event);
    void handlePress(const xcb_generic_event_t& event);
    void deliver(HotKeyID hotKeyID);

    X11Connection& connection_;
    const X11Keyboard& keyboard_;
    RunLoop& runLoop_;
    X11KeyGrabs grabs_;
    std::optional<std::uint8_t> inputOpcode_;  // once the server has said that it has the extension
    std::optional<X11ModifierMap> modifiers_;
    bool keyboardIsCurrent_ = false;
    bool grabsAreComplete_ = true;  // false when the server did not answer to one
    std::map<HotKeyHandlerReference, HotKeyHandler> handlers_;
    std::map<HotKeyReference, Registration> registrations_;
    std::uint64_t lastReference_ = 0;
    bool releasePosted_ = false;
    bool followPosted_ = false;
    RunLoop::Timer followAgain_;
    Subscription handler_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace velmorand

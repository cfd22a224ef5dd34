#pragma once

#include "platform/HotKeyService.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

namespace velmorand {

/// Hot keys of a simulated keyboard. Another program can hold combinations, operations can be made to fail, and
/// a test presses the keys.
class SimulatedHotKeyService final : public HotKeyService {
public:
    [[nodiscard]] std::expected<HotKeyHandlerReference, OSStatus> installHandler(HotKeyHandler handler) override;
    void removeHandler(HotKeyHandlerReference reference) override;
    [[nodiscard]] HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    HotKeyID hotKeyID) override;
    OSStatus unregisterHotKey(HotKeyReference reference) override;

    /// Presses the combination: every handler is called when it is registered. Answers whether it was.
    bool press(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Delivers a press of a hot key that somebody registered under `hotKeyID`.
    void deliver(HotKeyID hotKeyID);
    /// Delivers a press whose event does not carry the id of its hot key.
    void deliverWithoutHotKeyID();
    /// Calls the handlers without an event. Answers the status of the last one.
    OSStatus deliverWithoutEvent();

    /// Another program takes the combination, or gives it back.
    void setTaken(std::uint32_t keyCode, std::uint32_t modifiers, bool taken);

    /// Every later installation fails with this status; `noError` lets it succeed again.
    void failInstallations(OSStatus status) { installationStatus_ = status; }
    /// Every later registration fails with this status; `noError` lets it succeed again.
    void failRegistrations(OSStatus status) { registrationStatus_ = status; }
    /// Later registrations succeed without a reference.
    void withholdReferences(bool withhold) { withholdsReferences_ = withhold; }

    [[nodiscard]] std::size_t handlerCount() const { return handlers_.size(); }
    [[nodiscard]] std::size_t registrationCount() const { return registrations_.size(); }
    [[nodiscard]] bool isRegistered(std::uint32_t keyCode, std::uint32_t modifiers) const;
    /// The id under which the combination is registered; absent when it is not.
    [[nodiscard]] std::optional<HotKeyID> registeredID(std::uint32_t keyCode, std::uint32_t modifiers) const;

private:
    using Combination = std::pair<std::uint32_t, std::uint32_t>;
    struct Registration {
        Combination combination;
        HotKeyID hotKeyID;
    };

    OSStatus deliver(const HotKeyEvent* event);

    std::map<HotKeyHandlerReference, HotKeyHandler> handlers_;
    std::map<HotKeyReference, Registration> registrations_;
    std::set<Combination> takenElsewhere_;
    OSStatus installationStatus_ = noError;
    OSStatus registrationStatus_ = noError;
    bool withholdsReferences_ = false;
    std::uint64_t lastReference_ = 0;
};

}  // namespace velmorand

#include "platform/simulated/SimulatedHotKeyService.h"

#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

/// A keyboard has no key beyond the virtual key codes.
constexpr std::uint32_t largestKeyCode = 127;
/// Command, shift, option and control.
constexpr std::uint32_t knownModifiers = 0x1B00;

class SimulatedHotKeyEvent final : public HotKeyEvent {
public:
    explicit SimulatedHotKeyEvent(std::expected<HotKeyID, OSStatus> hotKeyID) : hotKeyID_(std::move(hotKeyID)) {}

    [[nodiscard]] std::expected<HotKeyID, OSStatus> hotKeyID() const override { return hotKeyID_; }

private:
    std::expected<HotKeyID, OSStatus> hotKeyID_;
};

}  // namespace

std::expected<HotKeyHandlerReference, OSStatus> SimulatedHotKeyService::installHandler(HotKeyHandler handler) {
    if (installationStatus_ != noError) return std::unexpected(installationStatus_);
    const HotKeyHandlerReference reference{++lastReference_};
    handlers_.emplace(reference, std::move(handler));
    return reference;
}

void SimulatedHotKeyService::removeHandler(HotKeyHandlerReference reference) {
    handlers_.erase(reference);
}

HotKeyRegistration SimulatedHotKeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                          HotKeyID hotKeyID) {
    if (registrationStatus_ != noError) return {registrationStatus_, std::nullopt};
    if (keyCode > largestKeyCode || (modifiers & ~knownModifiers) != 0) return {hotKeyParameterError, std::nullopt};
    if (takenElsewhere_.contains({keyCode, modifiers}) || isRegistered(keyCode, modifiers))
        return {hotKeyAlreadyTaken, std::nullopt};
    if (withholdsReferences_) return {noError, std::nullopt};
    const HotKeyReference reference{++lastReference_};
    registrations_.emplace(reference, Registration{{keyCode, modifiers}, hotKeyID});
    return {noError, reference};
}

OSStatus SimulatedHotKeyService::unregisterHotKey(HotKeyReference reference) {
    return registrations_.erase(reference) > 0 ? noError : hotKeyParameterError;
}

bool SimulatedHotKeyService::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    const auto id = registeredID(keyCode, modifiers);
    if (id) deliver(*id);
    return id.has_value();
}

void SimulatedHotKeyService::deliver(HotKeyID hotKeyID) {
    const SimulatedHotKeyEvent event(hotKeyID);
    deliver(&event);
}

void SimulatedHotKeyService::deliverWithoutHotKeyID() {
    constexpr OSStatus parameterNotFound = -9870;  // eventParameterNotFoundErr
    const SimulatedHotKeyEvent event{std::unexpected(parameterNotFound)};
    deliver(&event);
}

OSStatus SimulatedHotKeyService::deliverWithoutEvent() {
    return deliver(nullptr);
}

OSStatus SimulatedHotKeyService::deliver(const HotKeyEvent* event) {
    OSStatus status = noError;
    const auto handlers = handlers_;
    for (const auto& [reference, handler] : handlers) status = handler(event);
    return status;
}

void SimulatedHotKeyService::setTaken(std::uint32_t keyCode, std::uint32_t modifiers, bool taken) {
    if (taken)
        takenElsewhere_.insert({keyCode, modifiers});
    else
        takenElsewhere_.erase({keyCode, modifiers});
}

bool SimulatedHotKeyService::isRegistered(std::uint32_t keyCode, std::uint32_t modifiers) const {
    return registeredID(keyCode, modifiers).has_value();
}

std::optional<HotKeyID> SimulatedHotKeyService::registeredID(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto found = std::ranges::find_if(
        registrations_, [&](const auto& entry) { return entry.second.combination == Combination{keyCode, modifiers}; });
    return found == registrations_.end() ? std::nullopt : std::optional(found->second.hotKeyID);
}

}  // namespace velmorand

#pragma once

#include "platform/Accessibility.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "simulation/Tape.h"

#include <functional>

namespace velmorand::simulation {

/// The element as the simulated desktop knows it.
[[nodiscard]] Element elementBehind(const AXElement& element);

/// Passes every call on to the simulated desktop and tapes it. Something can be made to happen in the middle: just
/// before a later call.
class WatchedAccessibility final : public Accessibility {
public:
    /// All must outlive it.
    WatchedAccessibility(SimulatedAccessibility& watched, SimulatedRunLoop& runLoop, Tape& tape)
        : watched_(watched), runLoop_(runLoop), tape_(tape) {}

    [[nodiscard]] bool isProcessTrusted() override;
    [[nodiscard]] bool isProcessTrustedWithPrompt() override;
    [[nodiscard]] AXElement createApplication(std::int32_t pid) override { return watched_.createApplication(pid); }
    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyAttributeValue(const AXElement& element,
                                                                              std::string_view attribute) override;
    [[nodiscard]] std::expected<void, AXError> setAttributeValue(const AXElement& element, std::string_view attribute,
                                                                 const AXBoxedValue& value) override;
    [[nodiscard]] std::expected<bool, AXError> isAttributeSettable(const AXElement& element,
                                                                   std::string_view attribute) override;
    void setMessagingTimeout(const AXElement& element, double seconds) override {
        watched_.setMessagingTimeout(element, seconds);
    }
    [[nodiscard]] std::optional<AXBoxedValue> createValue(std::variant<Point, Size> value) override {
        return watched_.createValue(value);
    }

    /// Runs `interruption` once, before the call that follows `callsBefore` others from now.
    void interruptAfter(std::uint32_t callsBefore, std::function<void()> interruption);

private:
    [[nodiscard]] Moment now() const { return {runLoop_.now(), runLoop_.date()}; }
    [[nodiscard]] TapedCall begin(CallKind kind);
    [[nodiscard]] TapedCall begin(CallKind kind, const AXElement& element, std::string_view attribute);
    void end(TapedCall call);

    SimulatedAccessibility& watched_;
    SimulatedRunLoop& runLoop_;
    Tape& tape_;
    std::uint32_t callsBeforeInterruption_ = 0;
    std::function<void()> interruption_;
};

}  // namespace velmorand::simulation

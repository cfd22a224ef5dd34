#pragma once

#include "platform/Accessibility.h"
#include "platform/simulated/SimulatedDesktop.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace velmorand {

class SimulatedRunLoop;

/// One frame or part of a frame that reached a window.
struct SimulatedWrite {
    SimulatedWindowID window{};
    std::optional<Point> position;
    std::optional<Size> size;

    bool operator==(const SimulatedWrite&) const = default;
};

/// The accessibility interface of a simulated desktop, with the same joined writes as a real one.
class SimulatedAccessibility final : public Accessibility {
public:
    SimulatedAccessibility(SimulatedDesktop& desktop, SimulatedRunLoop& runLoop);

    [[nodiscard]] bool isProcessTrusted() override;
    [[nodiscard]] bool isProcessTrustedWithPrompt() override;
    [[nodiscard]] AXElement createApplication(std::int32_t pid) override;
    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyAttributeValue(const AXElement& element,
                                                                              std::string_view attribute) override;
    [[nodiscard]] std::expected<void, AXError> setAttributeValue(const AXElement& element, std::string_view attribute,
                                                                 const AXBoxedValue& value) override;
    [[nodiscard]] std::expected<bool, AXError> isAttributeSettable(const AXElement& element,
                                                                   std::string_view attribute) override;
    void setMessagingTimeout(const AXElement& element, double seconds) override;
    [[nodiscard]] std::optional<AXBoxedValue> createValue(std::variant<Point, Size> value) override;

    /// The element of a window, as the desktop would answer it.
    [[nodiscard]] AXElement elementOf(SimulatedWindowID id) const;

    /// Everything that reached a window, in order.
    [[nodiscard]] const std::vector<SimulatedWrite>& writes() const { return writes_; }
    void clearWrites() { writes_.clear(); }

    /// Lets `createValue` fail.
    void failBoxing(bool fail) { boxingFails_ = fail; }

    /// The timeout last set on this element; absent when none was.
    [[nodiscard]] std::optional<double> messagingTimeout(const AXElement& element) const;

private:
    struct HeldPosition {
        SimulatedWindowID window{};
        Point position;
    };

    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyFromApplication(std::int32_t pid,
                                                                               std::string_view attribute);
    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyFromWindow(SimulatedWindowID id,
                                                                          std::string_view attribute);
    void holdPosition(SimulatedWindowID id, Point position);
    void applyFrame(SimulatedWindowID id, Size size);
    void flushHeldPosition();
    [[nodiscard]] std::optional<AXError> waitForAnswer(const AXElement& element, const SimulatedProcess* process,
                                                       double workSeconds = 0);

    SimulatedDesktop& desktop_;
    SimulatedRunLoop& runLoop_;
    std::optional<HeldPosition> held_;
    std::vector<SimulatedWrite> writes_;
    std::unordered_map<AXElement, double> timeouts_;
    bool boxingFails_ = false;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // for tasks that outlive this object
};

}  // namespace velmorand

#pragma once

#include "platform/Accessibility.h"
#include "platform/Logger.h"
#include "platform/linux/WindowSystem.h"

#include <memory>
#include <optional>
#include <unordered_map>

namespace velmorand {

class RunLoop;
class TrustPrompt;

/// Answers the attribute-style accessibility interface from a window system that works in whole frames: position
/// and size writes that belong together reach it as one.
class LinuxAccessibility final : public Accessibility {
public:
    /// All must outlive it.
    LinuxAccessibility(WindowSystem& windowSystem, RunLoop& runLoop, TrustPrompt& trustPrompt, Log& log);

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

private:
    struct HeldPosition {
        WindowID window;
        Point position;
        double timeout;  ///< seconds, of the element that was written to
    };

    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyFromApplication(std::int32_t pid,
                                                                               std::string_view attribute,
                                                                               Deadline deadline);
    [[nodiscard]] std::expected<AXAttributeValue, AXError> copyFromWindow(WindowID window, std::string_view attribute,
                                                                          Deadline deadline);
    [[nodiscard]] std::expected<void, AXError> holdPosition(WindowID window, const AXBoxedValue& value, double timeout,
                                                            Deadline deadline);
    [[nodiscard]] std::expected<void, AXError> writeSize(WindowID window, const AXBoxedValue& value, Deadline deadline);
    [[nodiscard]] bool holds(WindowID window) const;
    /// Sends the held position, if any, within the call that ends at `deadline`.
    void flushHeldPosition(Deadline deadline);
    void flushHeldPositionAtEndOfTurn();
    [[nodiscard]] double timeoutOf(const AXElement& element) const;

    WindowSystem& windowSystem_;
    RunLoop& runLoop_;
    TrustPrompt& trustPrompt_;
    Logger logger_;
    std::optional<HeldPosition> held_;
    std::unordered_map<AXElement, double> timeouts_;                          // only those that are not the default
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // for tasks that outlive this object
};

}  // namespace velmorand

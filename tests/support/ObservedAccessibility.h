#pragma once

#include "platform/Accessibility.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmorand {

/// Passes every call on to another accessibility interface, records it as a text, and can interrupt: something can
/// happen to the desktop just before a certain call, as when a user closes a window between a read and a write.
///
/// The texts are "trusted", "prompt", "application 501", "copy AXRole of window", "set AXSize of window",
/// "settable AXPosition of window", "timeout 0.75 of window" and "box"; "window" stands for the element's name.
class ObservedAccessibility final : public Accessibility {
public:
    explicit ObservedAccessibility(Accessibility& observed) : observed_(observed) {}

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

    /// How the element appears in the texts. An element without a name appears as "?".
    void setName(const AXElement& element, std::string name) { names_.insert_or_assign(element, std::move(name)); }

    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }
    void clearCalls() { calls_.clear(); }
    /// How often this call was made.
    [[nodiscard]] std::ptrdiff_t count(std::string_view call) const;

    /// Runs `interruption` just before the call with this text is made for the `occurrence`-th time from now on,
    /// counted from 1.
    void interruptBefore(std::string call, int occurrence, std::function<void()> interruption);

private:
    struct Interruption {
        std::string call;
        int callsLeft = 1;
        std::function<void()> action;
    };

    void note(std::string call);
    [[nodiscard]] std::string nameOf(const AXElement& element) const;

    Accessibility& observed_;
    std::unordered_map<AXElement, std::string> names_;
    std::vector<std::string> calls_;
    std::vector<Interruption> interruptions_;
};

}  // namespace velmorand

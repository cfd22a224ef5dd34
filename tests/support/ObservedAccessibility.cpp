#include "support/ObservedAccessibility.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace velmorand {

bool ObservedAccessibility::isProcessTrusted() {
    note("trusted");
    return observed_.isProcessTrusted();
}

bool ObservedAccessibility::isProcessTrustedWithPrompt() {
    note("prompt");
    return observed_.isProcessTrustedWithPrompt();
}

AXElement ObservedAccessibility::createApplication(std::int32_t pid) {
    note(fmt::format("application {}", pid));
    return observed_.createApplication(pid);
}

std::expected<AXAttributeValue, AXError> ObservedAccessibility::copyAttributeValue(const AXElement& element,
                                                                                   std::string_view attribute) {
    note(fmt::format("copy {} of {}", attribute, nameOf(element)));
    return observed_.copyAttributeValue(element, attribute);
}

std::expected<void, AXError> ObservedAccessibility::setAttributeValue(const AXElement& element,
                                                                      std::string_view attribute,
                                                                      const AXBoxedValue& value) {
    note(fmt::format("set {} of {}", attribute, nameOf(element)));
    return observed_.setAttributeValue(element, attribute, value);
}

std::expected<bool, AXError> ObservedAccessibility::isAttributeSettable(const AXElement& element,
                                                                        std::string_view attribute) {
    note(fmt::format("settable {} of {}", attribute, nameOf(element)));
    return observed_.isAttributeSettable(element, attribute);
}

void ObservedAccessibility::setMessagingTimeout(const AXElement& element, double seconds) {
    note(fmt::format("timeout {} of {}", seconds, nameOf(element)));
    observed_.setMessagingTimeout(element, seconds);
}

std::optional<AXBoxedValue> ObservedAccessibility::createValue(std::variant<Point, Size> value) {
    note("box");
    return observed_.createValue(value);
}

std::ptrdiff_t ObservedAccessibility::count(std::string_view call) const {
    return std::ranges::count(calls_, call);
}

void ObservedAccessibility::interruptBefore(std::string call, int occurrence, std::function<void()> interruption) {
    interruptions_.push_back({std::move(call), occurrence, std::move(interruption)});
}

void ObservedAccessibility::note(std::string call) {
    for (Interruption& interruption : interruptions_) {
        if (interruption.call == call && --interruption.callsLeft == 0) interruption.action();
    }
    calls_.push_back(std::move(call));
}

std::string ObservedAccessibility::nameOf(const AXElement& element) const {
    const auto found = names_.find(element);
    return found == names_.end() ? "?" : found->second;
}

}  // namespace velmorand

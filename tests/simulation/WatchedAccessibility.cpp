#include "simulation/WatchedAccessibility.h"

#include "platform/IdentityElementBody.h"

#include <utility>

namespace velmorand::simulation {

Element elementBehind(const AXElement& element) {
    if (const auto* window = IdentityElementBody<SimulatedWindowID>::identityOf(element)) return *window;
    return *IdentityElementBody<std::int32_t>::identityOf(element);
}

void WatchedAccessibility::interruptAfter(std::uint32_t callsBefore, std::function<void()> interruption) {
    callsBeforeInterruption_ = callsBefore;
    interruption_ = std::move(interruption);
}

TapedCall WatchedAccessibility::begin(CallKind kind) {
    if (interruption_ && callsBeforeInterruption_-- == 0) {
        tape_.emplace_back(TapedInterruption{});
        std::exchange(interruption_, nullptr)();
    }
    return {.kind = kind, .begin = now()};
}

TapedCall WatchedAccessibility::begin(CallKind kind, const AXElement& element, std::string_view attribute) {
    TapedCall call = begin(kind);
    call.element = elementBehind(element);
    call.attribute = attribute;
    return call;
}

void WatchedAccessibility::end(TapedCall call) {
    call.end = now();
    tape_.emplace_back(std::move(call));
}

bool WatchedAccessibility::isProcessTrusted() {
    TapedCall call = begin(CallKind::trusted);
    call.yes = watched_.isProcessTrusted();
    const bool answer = call.yes;
    end(std::move(call));
    return answer;
}

bool WatchedAccessibility::isProcessTrustedWithPrompt() {
    TapedCall call = begin(CallKind::prompt);
    call.yes = watched_.isProcessTrustedWithPrompt();
    const bool answer = call.yes;
    end(std::move(call));
    return answer;
}

std::expected<AXAttributeValue, AXError> WatchedAccessibility::copyAttributeValue(const AXElement& element,
                                                                                  std::string_view attribute) {
    TapedCall call = begin(CallKind::copy, element, attribute);
    auto answer = watched_.copyAttributeValue(element, attribute);
    if (answer)
        call.answer = *answer;
    else
        call.error = answer.error();
    end(std::move(call));
    return answer;
}

std::expected<void, AXError> WatchedAccessibility::setAttributeValue(const AXElement& element,
                                                                     std::string_view attribute,
                                                                     const AXBoxedValue& value) {
    TapedCall call = begin(CallKind::write, element, attribute);
    call.written = value;
    const auto answer = watched_.setAttributeValue(element, attribute, value);
    if (!answer) call.error = answer.error();
    end(std::move(call));
    return answer;
}

std::expected<bool, AXError> WatchedAccessibility::isAttributeSettable(const AXElement& element,
                                                                       std::string_view attribute) {
    TapedCall call = begin(CallKind::settable, element, attribute);
    const auto answer = watched_.isAttributeSettable(element, attribute);
    if (answer)
        call.yes = *answer;
    else
        call.error = answer.error();
    end(std::move(call));
    return answer;
}

}  // namespace velmorand::simulation

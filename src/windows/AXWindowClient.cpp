#include "windows/AXWindowClient.h"

#include "windows/FrameTolerance.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view windowRole = "AXWindow";
constexpr std::string_view standardWindowSubrole = "AXStandardWindow";

std::string failureMessage(AXError error, std::string_view verb) {
    if (error == AXError::cannotComplete) return "The target app did not respond to Accessibility requests.";
    return fmt::format("Could not {} the focused window (AX error {}).", verb, error.code);
}

std::string describe(const std::expected<Rect, WindowOperationError>& frame) {
    return frame ? velmorand::describe(*frame) : "unknown";
}

bool landed(const std::expected<Rect, WindowOperationError>& frame, const Rect& requested) {
    return frame && framesMatch(*frame, requested);
}

}  // namespace

std::expected<AXElement, WindowOperationError> AXWindowClient::elementAttribute(std::string_view attribute,
                                                                                const AXElement& element) const {
    const auto value = accessibility_.copyAttributeValue(element, attribute);
    if (!value || !std::holds_alternative<AXElement>(*value))
        return std::unexpected(WindowOperationError::noFocusedWindow);
    return std::get<AXElement>(*value);
}

std::optional<std::string> AXWindowClient::stringAttribute(std::string_view attribute, const AXElement& element) const {
    const auto value = accessibility_.copyAttributeValue(element, attribute);
    if (!value || !std::holds_alternative<std::string>(*value)) return std::nullopt;
    return std::get<std::string>(*value);
}

bool AXWindowClient::booleanAttribute(std::string_view attribute, const AXElement& element, bool defaultValue) const {
    const auto value = accessibility_.copyAttributeValue(element, attribute);
    if (!value || !std::holds_alternative<bool>(*value)) return defaultValue;
    return std::get<bool>(*value);
}

std::expected<AXBoxedValue, WindowOperationError> AXWindowClient::valueAttribute(std::string_view attribute,
                                                                                 AXValueType type,
                                                                                 const AXElement& element) const {
    const auto value = accessibility_.copyAttributeValue(element, attribute);
    const AXBoxedValue* boxed = value ? std::get_if<AXBoxedValue>(&*value) : nullptr;
    if (boxed == nullptr || boxed->type != type) return std::unexpected(WindowOperationError::missingWindowFrame);
    return *boxed;
}

std::vector<AXElement> AXWindowClient::windowList(const AXElement& application) const {
    const auto value = accessibility_.copyAttributeValue(application, ax_attribute::windows);
    if (!value) {
        logger_.error("read windows failed AXError {}", value.error().code);
        return {};
    }
    const auto* windows = std::get_if<std::vector<AXElement>>(&*value);
    return windows == nullptr ? std::vector<AXElement>{} : *windows;
}

bool AXWindowClient::isSettable(std::string_view attribute, const AXElement& element) const {
    return accessibility_.isAttributeSettable(element, attribute).value_or(false);
}

bool AXWindowClient::isEligibleWindow(const AXElement& window) const {
    return stringAttribute(ax_attribute::role, window) == windowRole &&
           !booleanAttribute(ax_attribute::minimized, window) && !booleanAttribute(ax_attribute::fullScreen, window) &&
           canSetFrame(window);
}

bool AXWindowClient::canSetFrame(const AXElement& window) const {
    return isSettable(ax_attribute::position, window) && isSettable(ax_attribute::size, window);
}

std::expected<AXElement, WindowOperationError> AXWindowClient::focusedWindow(const AXElement& application) const {
    if (auto focused = eligible(ax_attribute::focusedWindow, application)) return *focused;
    if (auto main = eligible(ax_attribute::mainWindow, application)) return *main;
    return windowFromList(application);
}

std::optional<AXElement> AXWindowClient::eligible(std::string_view attribute, const AXElement& application) const {
    const auto window = elementAttribute(attribute, application);
    if (!window) return std::nullopt;
    accessibility_.setMessagingTimeout(*window, accessibilityMessagingTimeout);
    if (!isEligibleWindow(*window)) return std::nullopt;
    return *window;
}

std::expected<AXElement, WindowOperationError> AXWindowClient::windowFromList(const AXElement& application) const {
    const std::vector<AXElement> windows = windowList(application);
    logger_.info("falling back to window list, count {}", windows.size());

    for (const AXElement& window : windows) {
        accessibility_.setMessagingTimeout(window, accessibilityMessagingTimeout);
        if (stringAttribute(ax_attribute::subrole, window) != standardWindowSubrole) continue;
        if (isEligibleWindow(window)) return window;
    }

    std::vector<AXElement> candidates;
    for (const AXElement& window : windows) {
        accessibility_.setMessagingTimeout(window, accessibilityMessagingTimeout);
        if (isEligibleWindow(window)) candidates.push_back(window);
    }
    if (candidates.empty()) return std::unexpected(WindowOperationError::noFocusedWindow);
    if (candidates.size() == 1) return candidates.front();
    std::vector<double> areas;  // each is read once, as every read may take its whole timeout
    for (const AXElement& window : candidates) areas.push_back(area(window));
    // max_element answers the first of equals.
    return candidates[static_cast<std::size_t>(std::ranges::max_element(areas) - areas.begin())];
}

double AXWindowClient::area(const AXElement& window) const {
    const auto frame = readFrame(window);
    return frame ? frame->width * frame->height : 0;
}

std::expected<Rect, WindowOperationError> AXWindowClient::readFrame(const AXElement& window) const {
    const auto position = valueAttribute(ax_attribute::position, AXValueType::point, window);
    if (!position) return std::unexpected(position.error());
    const auto size = valueAttribute(ax_attribute::size, AXValueType::size, window);
    if (!size) return std::unexpected(size.error());
    const auto* point = std::get_if<Point>(&position->value);
    const auto* extent = std::get_if<Size>(&size->value);
    if (point == nullptr || extent == nullptr || !(extent->width > 0) || !(extent->height > 0))
        return std::unexpected(WindowOperationError::missingWindowFrame);
    return Rect{point->x, point->y, extent->width, extent->height};
}

std::expected<void, WindowOperationError> AXWindowClient::setPosition(const AXElement& window, Point position) const {
    return write(window, ax_attribute::position, position, "position", "move");
}

std::expected<void, WindowOperationError> AXWindowClient::setSize(const AXElement& window, Size size) const {
    return write(window, ax_attribute::size, size, "size", "resize");
}

std::expected<void, WindowOperationError> AXWindowClient::write(const AXElement& window, std::string_view attribute,
                                                                std::variant<Point, Size> value, std::string_view noun,
                                                                std::string_view verb) const {
    const auto boxed = accessibility_.createValue(value);
    if (!boxed) return std::unexpected(WindowOperationError::missingWindowFrame);
    const auto written = accessibility_.setAttributeValue(window, attribute, *boxed);
    if (written) return {};
    logger_.error("set {} failed AXError {}", noun, written.error().code);
    return std::unexpected(WindowOperationError::accessibility(failureMessage(written.error(), verb)));
}

std::expected<void, WindowOperationError> AXWindowClient::writeFrame(const AXElement& window, const Rect& frame) const {
    if (auto moved = setPosition(window, frame.origin()); !moved) return moved;
    return setSize(window, frame.size());
}

std::expected<FrameOutcome, WindowOperationError> AXWindowClient::setFrame(const AXElement& window,
                                                                           const Rect& frame) const {
    if (auto written = writeFrame(window, frame); !written) return std::unexpected(written.error());
    if (const auto achieved = readFrame(window); !landed(achieved, frame)) {
        logger_.info("retrying, achieved {}", describe(achieved));
        if (auto written = writeFrame(window, frame); !written) return std::unexpected(written.error());
    }
    const auto final = readFrame(window);
    logger_.info("final frame {}", describe(final));
    return FrameOutcome{frame, final ? std::optional(*final) : std::nullopt, landed(final, frame)};
}

}  // namespace velmorand

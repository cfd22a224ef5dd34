#include "platform/linux/LinuxAccessibility.h"

#include "platform/IdentityElementBody.h"
#include "platform/RunLoop.h"
#include "platform/linux/TrustPrompt.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmorand {
namespace {

constexpr double defaultMessagingTimeout = 0.75;

using ApplicationBody = IdentityElementBody<std::int32_t>;
using WindowBody = IdentityElementBody<WindowID>;

Deadline deadlineAfter(double seconds) {
    return std::chrono::steady_clock::now() +
           std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(seconds));
}

std::expected<AXAttributeValue, AXError> asElement(const std::expected<WindowID, AXError>& window) {
    if (!window) return std::unexpected(window.error());
    return AXAttributeValue(WindowBody::makeElement(*window));
}

template <typename Value>
std::expected<Value, AXError> finiteValue(const AXBoxedValue& boxed, double Value::* first, double Value::* second) {
    const auto* value = std::get_if<Value>(&boxed.value);
    if (value == nullptr || !std::isfinite(value->*first) || !std::isfinite(value->*second))
        return std::unexpected(AXError::illegalArgument);
    return *value;
}

}  // namespace

LinuxAccessibility::LinuxAccessibility(WindowSystem& windowSystem, RunLoop& runLoop, TrustPrompt& trustPrompt, Log& log)
    : windowSystem_(windowSystem), runLoop_(runLoop), trustPrompt_(trustPrompt), logger_(log, "ax") {}

bool LinuxAccessibility::isProcessTrusted() {
    const Deadline deadline = deadlineAfter(defaultMessagingTimeout);
    flushHeldPosition(deadline);
    return !windowSystem_.missingForTrust(deadline);
}

bool LinuxAccessibility::isProcessTrustedWithPrompt() {
    const Deadline deadline = deadlineAfter(defaultMessagingTimeout);
    flushHeldPosition(deadline);
    const auto problem = windowSystem_.missingForTrust(deadline);
    if (problem) trustPrompt_.show(problem->sentence);
    return !problem;
}

AXElement LinuxAccessibility::createApplication(std::int32_t pid) {
    return ApplicationBody::makeElement(pid);
}

void LinuxAccessibility::setMessagingTimeout(const AXElement& element, double seconds) {
    if (seconds == defaultMessagingTimeout || !std::isfinite(seconds) || seconds <= 0)
        timeouts_.erase(element);
    else
        timeouts_.insert_or_assign(element, seconds);
}

double LinuxAccessibility::timeoutOf(const AXElement& element) const {
    const auto found = timeouts_.find(element);
    return found == timeouts_.end() ? defaultMessagingTimeout : found->second;
}

std::optional<AXBoxedValue> LinuxAccessibility::createValue(std::variant<Point, Size> value) {
    if (const auto* point = std::get_if<Point>(&value)) return AXBoxedValue{AXValueType::point, *point};
    return AXBoxedValue{AXValueType::size, std::get<Size>(value)};
}

std::expected<AXAttributeValue, AXError> LinuxAccessibility::copyAttributeValue(const AXElement& element,
                                                                                std::string_view attribute) {
    const Deadline deadline = deadlineAfter(timeoutOf(element));
    if (const auto* pid = ApplicationBody::identityOf(element)) {
        flushHeldPosition(deadline);
        return copyFromApplication(*pid, attribute, deadline);
    }
    const auto* window = WindowBody::identityOf(element);
    if (window == nullptr) return std::unexpected(AXError::invalidElement);
    if (holds(*window)) flushHeldPosition(deadline);
    return copyFromWindow(*window, attribute, deadline);
}

std::expected<AXAttributeValue, AXError> LinuxAccessibility::copyFromApplication(std::int32_t pid,
                                                                                 std::string_view attribute,
                                                                                 Deadline deadline) {
    if (const auto problem = windowSystem_.missingForTrust(deadline)) return std::unexpected(problem->error);
    if (!windowSystem_.hasApplication(pid, deadline)) return std::unexpected(AXError::invalidElement);
    if (attribute == ax_attribute::focusedWindow) return asElement(windowSystem_.focusedWindow(pid, deadline));
    if (attribute == ax_attribute::mainWindow) return asElement(windowSystem_.mainWindow(pid, deadline));
    if (attribute != ax_attribute::windows) return std::unexpected(AXError::attributeUnsupported);
    const auto windows = windowSystem_.windows(pid, deadline);
    if (!windows) return std::unexpected(windows.error());
    std::vector<AXElement> elements;
    for (const WindowID window : *windows) elements.push_back(WindowBody::makeElement(window));
    return elements;
}

std::expected<AXAttributeValue, AXError> LinuxAccessibility::copyFromWindow(WindowID window, std::string_view attribute,
                                                                            Deadline deadline) {
    if (const auto problem = windowSystem_.missingForTrust(deadline)) return std::unexpected(problem->error);
    const auto attributes = windowSystem_.attributes(window, Reading::settled, deadline);
    if (!attributes) return std::unexpected(attributes.error());
    if (attribute == ax_attribute::role) return attributes->role;
    if (attribute == ax_attribute::minimized) return attributes->minimized;
    if (attribute == ax_attribute::fullScreen) return attributes->fullScreen;
    if (attribute == ax_attribute::position) return AXBoxedValue{AXValueType::point, attributes->frame.origin()};
    if (attribute == ax_attribute::size) return AXBoxedValue{AXValueType::size, attributes->frame.size()};
    if (attribute != ax_attribute::subrole) return std::unexpected(AXError::attributeUnsupported);
    const auto& subrole = attributes->subrole;
    if (!subrole) return std::unexpected(AXError::noValue);
    return *subrole;
}

std::expected<bool, AXError> LinuxAccessibility::isAttributeSettable(const AXElement& element,
                                                                     std::string_view attribute) {
    const Deadline deadline = deadlineAfter(timeoutOf(element));
    flushHeldPosition(deadline);
    const auto* window = WindowBody::identityOf(element);
    if (window == nullptr) return false;
    if (const auto problem = windowSystem_.missingForTrust(deadline)) return std::unexpected(problem->error);
    const auto attributes = windowSystem_.attributes(*window, Reading::settled, deadline);
    if (!attributes) return std::unexpected(attributes.error());
    if (attribute == ax_attribute::position) return attributes->positionSettable;
    if (attribute == ax_attribute::size) return attributes->sizeSettable;
    return false;
}

std::expected<void, AXError> LinuxAccessibility::setAttributeValue(const AXElement& element, std::string_view attribute,
                                                                   const AXBoxedValue& value) {
    const auto* window = WindowBody::identityOf(element);
    if (window == nullptr) return std::unexpected(AXError::attributeUnsupported);
    const bool completesHeldPosition = attribute == ax_attribute::size && holds(*window);
    const Deadline deadline = deadlineAfter(timeoutOf(element));
    if (!completesHeldPosition) flushHeldPosition(deadline);
    if (attribute == ax_attribute::position) return holdPosition(*window, value, timeoutOf(element), deadline);
    if (attribute == ax_attribute::size) return writeSize(*window, value, deadline);
    return std::unexpected(AXError::attributeUnsupported);
}

std::expected<void, AXError> LinuxAccessibility::holdPosition(WindowID window, const AXBoxedValue& value,
                                                              double timeout, Deadline deadline) {
    const auto position = finiteValue<Point>(value, &Point::x, &Point::y);
    if (!position) return std::unexpected(position.error());
    if (auto movable = windowSystem_.checkMovable(window, deadline); !movable) return movable;
    held_ = HeldPosition{window, *position, timeout};
    flushHeldPositionAtEndOfTurn();
    return {};
}

std::expected<void, AXError> LinuxAccessibility::writeSize(WindowID window, const AXBoxedValue& value,
                                                           Deadline deadline) {
    const auto held = std::exchange(held_, std::nullopt);  // whatever fails from here on drops it
    const auto size = finiteValue<Size>(value, &Size::width, &Size::height);
    if (!size) return std::unexpected(size.error());
    const auto attributes = windowSystem_.attributes(window, Reading::atOnce, deadline);
    if (!attributes) return std::unexpected(attributes.error());
    if (!attributes->sizeSettable) return std::unexpected(AXError::attributeUnsupported);
    const Point origin = held ? held->position : attributes->frame.origin();
    const auto settled = windowSystem_.setFrame(window, {origin.x, origin.y, size->width, size->height}, deadline);
    if (!settled) return std::unexpected(settled.error());
    return {};
}

bool LinuxAccessibility::holds(WindowID window) const {
    return held_.has_value() && held_->window == window;
}

void LinuxAccessibility::flushHeldPosition(Deadline deadline) {
    const auto held = std::exchange(held_, std::nullopt);
    if (!held) return;
    deadline = std::min(deadline, deadlineAfter(held->timeout));
    const auto attributes = windowSystem_.attributes(held->window, Reading::atOnce, deadline);
    const auto moved = attributes ? windowSystem_.setFrame(held->window,
                                                           {held->position.x, held->position.y, attributes->frame.width,
                                                            attributes->frame.height},
                                                           deadline)
                                  : std::expected<Rect, AXError>(std::unexpected(attributes.error()));
    // The write was already reported as done, so only the log can tell that it was not.
    if (!moved) logger_.error("late position write failed AXError {}", moved.error().code);
}

void LinuxAccessibility::flushHeldPositionAtEndOfTurn() {
    runLoop_.post([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) flushHeldPosition(Deadline::max());
    });
}

}  // namespace velmorand

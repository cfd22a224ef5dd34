#include "platform/simulated/SimulatedAccessibility.h"

#include "platform/IdentityElementBody.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <chrono>
#include <cmath>
#include <utility>

namespace velmorand {
namespace {

constexpr double defaultMessagingTimeout = 0.75;

using ApplicationBody = IdentityElementBody<std::int32_t>;
using WindowBody = IdentityElementBody<SimulatedWindowID>;

Duration spanOf(double value) {
    return std::chrono::duration_cast<Duration>(std::chrono::duration<double>(value));
}

AXBoxedValue boxed(Point point) {
    return {AXValueType::point, point};
}

AXBoxedValue boxed(Size size) {
    return {AXValueType::size, size};
}

bool isFinite(Point point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool isFinite(Size size) {
    return std::isfinite(size.width) && std::isfinite(size.height);
}

std::expected<AXAttributeValue, AXError> textOrUnsupported(const std::optional<std::string>& text) {
    if (!text) return std::unexpected(AXError::attributeUnsupported);
    return AXAttributeValue(*text);
}

}  // namespace

SimulatedAccessibility::SimulatedAccessibility(SimulatedDesktop& desktop, SimulatedRunLoop& runLoop)
    : desktop_(desktop), runLoop_(runLoop) {}

bool SimulatedAccessibility::isProcessTrusted() {
    return desktop_.trusted;
}

bool SimulatedAccessibility::isProcessTrustedWithPrompt() {
    if (desktop_.trusted) return true;
    ++desktop_.promptCount;
    desktop_.trusted = desktop_.trustedAfterPrompt;
    return desktop_.trusted;
}

AXElement SimulatedAccessibility::createApplication(std::int32_t pid) {
    return ApplicationBody::makeElement(pid);
}

AXElement SimulatedAccessibility::elementOf(SimulatedWindowID id) const {
    return WindowBody::makeElement(id);
}

void SimulatedAccessibility::setMessagingTimeout(const AXElement& element, double seconds) {
    timeouts_.insert_or_assign(element, seconds);
}

std::optional<double> SimulatedAccessibility::messagingTimeout(const AXElement& element) const {
    const auto found = timeouts_.find(element);
    return found == timeouts_.end() ? std::nullopt : std::optional(found->second);
}

/// `workSeconds`: what the application has to do for this call, besides answering. The caller gives up at the messaging
/// timeout.
std::optional<AXError> SimulatedAccessibility::waitForAnswer(const AXElement& element, const SimulatedProcess* process,
                                                             double workSeconds) {
    if (!desktop_.trusted) return AXError::apiDisabled;
    if (process == nullptr) return AXError::invalidElement;
    const double seconds = process->answerSeconds + workSeconds;
    if (!process->frozen && seconds <= 0) return std::nullopt;
    const double timeout = messagingTimeout(element).value_or(defaultMessagingTimeout);
    const bool isTooLong = process->frozen || seconds > timeout;
    runLoop_.block(spanOf(isTooLong ? timeout : seconds));
    return isTooLong ? std::optional(AXError::cannotComplete) : std::nullopt;
}

std::expected<AXAttributeValue, AXError> SimulatedAccessibility::copyAttributeValue(const AXElement& element,
                                                                                    std::string_view attribute) {
    flushHeldPosition();
    if (const auto* pid = ApplicationBody::identityOf(element)) {
        if (const auto error = waitForAnswer(element, desktop_.findProcess(*pid))) return std::unexpected(*error);
        return copyFromApplication(*pid, attribute);
    }
    const SimulatedWindowID id = *WindowBody::identityOf(element);
    if (const auto error = waitForAnswer(element, desktop_.ownerOf(id))) return std::unexpected(*error);
    return copyFromWindow(id, attribute);
}

std::expected<AXAttributeValue, AXError> SimulatedAccessibility::copyFromApplication(std::int32_t pid,
                                                                                     std::string_view attribute) {
    const SimulatedProcess& process = desktop_.process(pid);
    const auto windowOrNone = [this](std::optional<SimulatedWindowID> id) -> std::expected<AXAttributeValue, AXError> {
        if (!id) return std::unexpected(AXError::noValue);
        return elementOf(*id);
    };
    if (attribute == ax_attribute::focusedWindow) return windowOrNone(process.focusedWindow);
    if (attribute == ax_attribute::mainWindow) return windowOrNone(process.mainWindow);
    if (attribute != ax_attribute::windows) return std::unexpected(AXError::attributeUnsupported);
    if (process.windowListError) return std::unexpected(*process.windowListError);
    std::vector<AXElement> windows;
    for (const SimulatedWindowID id : process.windows) windows.push_back(elementOf(id));
    return windows;
}

std::expected<AXAttributeValue, AXError> SimulatedAccessibility::copyFromWindow(SimulatedWindowID id,
                                                                                std::string_view attribute) {
    const SimulatedWindow& window = desktop_.window(id);
    if (const auto error = window.readErrors.find(attribute); error != window.readErrors.end())
        return std::unexpected(error->second);
    if (const auto value = window.readOverrides.find(attribute); value != window.readOverrides.end())
        return value->second;
    if (attribute == ax_attribute::role) return textOrUnsupported(window.role);
    if (attribute == ax_attribute::subrole) return textOrUnsupported(window.subrole);
    if (attribute == ax_attribute::minimized) return window.minimized;
    if (attribute == ax_attribute::fullScreen) return window.fullScreen;
    if (attribute == ax_attribute::position) return boxed(window.frame.origin());
    if (attribute == ax_attribute::size) return boxed(window.frame.size());
    return std::unexpected(AXError::attributeUnsupported);
}

std::expected<bool, AXError> SimulatedAccessibility::isAttributeSettable(const AXElement& element,
                                                                         std::string_view attribute) {
    flushHeldPosition();
    const auto* window = WindowBody::identityOf(element);
    if (window == nullptr) return false;
    if (const auto error = waitForAnswer(element, desktop_.ownerOf(*window))) return std::unexpected(*error);
    const SimulatedWindow& state = desktop_.window(*window);
    if (attribute == ax_attribute::position) return state.positionSettable && !state.fullScreen;
    if (attribute == ax_attribute::size) return state.sizeSettable && !state.fullScreen;
    return false;
}

std::optional<AXBoxedValue> SimulatedAccessibility::createValue(std::variant<Point, Size> value) {
    if (boxingFails_) return std::nullopt;
    return std::visit([](const auto& content) { return boxed(content); }, value);
}

std::expected<void, AXError> SimulatedAccessibility::setAttributeValue(const AXElement& element,
                                                                       std::string_view attribute,
                                                                       const AXBoxedValue& value) {
    const auto* window = WindowBody::identityOf(element);
    if (window == nullptr) return std::unexpected(AXError::attributeUnsupported);
    const SimulatedWindowID id = *window;
    const auto* point = std::get_if<Point>(&value.value);
    const auto* size = std::get_if<Size>(&value.value);
    const bool writesPosition = attribute == ax_attribute::position;
    const bool writesSize = attribute == ax_attribute::size;

    if (held_ && (held_->window != id || !writesSize)) flushHeldPosition();
    const auto fail = [this](AXError error) {
        held_.reset();
        return std::unexpected(error);
    };
    const SimulatedWindow* written = desktop_.findWindow(id);
    const double workSeconds = written == nullptr ? 0 : written->writeSeconds;
    if (const auto error = waitForAnswer(element, desktop_.ownerOf(id), workSeconds)) return fail(*error);
    if (!writesPosition && !writesSize) return fail(AXError::attributeUnsupported);
    if (writesPosition && !(point != nullptr && isFinite(*point))) return fail(AXError::illegalArgument);
    if (writesSize && !(size != nullptr && isFinite(*size))) return fail(AXError::illegalArgument);

    SimulatedWindow& state = desktop_.window(id);
    const bool settable = writesPosition ? state.positionSettable : state.sizeSettable;
    if (!settable || state.fullScreen) return fail(AXError::attributeUnsupported);
    const bool failsForOnce = (state.failingWrites & 1U) != 0;
    state.failingWrites >>= 1U;
    if (failsForOnce) return fail(AXError::cannotComplete);
    if (writesPosition && state.positionWriteError) return fail(*state.positionWriteError);
    if (writesSize && state.sizeWriteError) return fail(*state.sizeWriteError);
    writesPosition ? holdPosition(id, *point) : applyFrame(id, *size);
    return {};
}

void SimulatedAccessibility::holdPosition(SimulatedWindowID id, Point position) {
    held_ = HeldPosition{id, position};
    runLoop_.post([this, alive = std::weak_ptr(alive_)] {  // the end of the turn
        if (!alive.expired()) flushHeldPosition();
    });
}

void SimulatedAccessibility::applyFrame(SimulatedWindowID id, Size size) {
    const auto held = std::exchange(held_, std::nullopt);
    const auto position = held ? std::optional(held->position) : std::nullopt;
    if (position) desktop_.applyPosition(id, *position);
    desktop_.applySize(id, size);
    writes_.push_back({id, position, size});
}

void SimulatedAccessibility::flushHeldPosition() {
    const auto held = std::exchange(held_, std::nullopt);
    if (!held || desktop_.findWindow(held->window) == nullptr) return;
    desktop_.applyPosition(held->window, held->position);
    writes_.push_back({held->window, held->position, std::nullopt});
}

}  // namespace velmorand

#include "simulation/WindowModel.h"

#include "simulation/Broken.h"
#include "simulation/GeometryModel.h"
#include "simulation/WatchedAccessibility.h"

#include <fmt/format.h>

#include <cmath>
#include <vector>

namespace velmorand::simulation {
namespace {

std::optional<SimulatedWindowID> readWindow(TapeReader& tape, std::int32_t pid, std::string_view attribute) {
    const TapedCall& call = tape.takeCall(CallKind::copy, pid, attribute);
    const auto* window = call.error ? nullptr : std::get_if<AXElement>(&call.answer);
    return window == nullptr ? std::nullopt : std::optional(std::get<SimulatedWindowID>(elementBehind(*window)));
}

bool readsAs(TapeReader& tape, SimulatedWindowID window, std::string_view attribute, std::string_view wanted) {
    const TapedCall& call = tape.takeCall(CallKind::copy, window, attribute);
    const auto* text = call.error ? nullptr : std::get_if<std::string>(&call.answer);
    return text != nullptr && *text == wanted;
}

bool readsTrue(TapeReader& tape, SimulatedWindowID window, std::string_view attribute) {
    const TapedCall& call = tape.takeCall(CallKind::copy, window, attribute);
    const auto* flag = call.error ? nullptr : std::get_if<bool>(&call.answer);
    return flag != nullptr && *flag;
}

bool readsSettable(TapeReader& tape, SimulatedWindowID window, std::string_view attribute) {
    const TapedCall& call = tape.takeCall(CallKind::settable, window, attribute);
    return !call.error && call.yes;
}

bool readEligible(TapeReader& tape, SimulatedWindowID window) {
    if (!readsAs(tape, window, "AXRole", "AXWindow")) return false;
    if (readsTrue(tape, window, "AXMinimized")) return false;
    if (readsTrue(tape, window, "AXFullScreen")) return false;
    return readCanSetFrame(tape, window);
}

std::vector<SimulatedWindowID> readWindows(TapeReader& tape, std::int32_t pid) {
    const TapedCall& call = tape.takeCall(CallKind::copy, pid, "AXWindows");
    const auto* elements = call.error ? nullptr : std::get_if<std::vector<AXElement>>(&call.answer);
    std::vector<SimulatedWindowID> windows;
    if (elements == nullptr) return windows;
    for (const AXElement& element : *elements) windows.push_back(std::get<SimulatedWindowID>(elementBehind(element)));
    return windows;
}

SimulatedWindowID readLargest(TapeReader& tape, const std::vector<SimulatedWindowID>& windows) {
    double largest = -1;
    SimulatedWindowID found{};
    for (const SimulatedWindowID window : windows) {
        const auto frame = readFrame(tape, window);
        const double area = frame ? frame->width * frame->height : 0;
        if (area <= largest) continue;
        largest = area;
        found = window;
    }
    return found;
}

const AXBoxedValue* boxed(const TapedCall& call, AXValueType type) {
    const auto* value = call.error ? nullptr : std::get_if<AXBoxedValue>(&call.answer);
    return value != nullptr && value->type == type ? value : nullptr;
}

/// Far below anything that a user could see, and above the rounding of the last bits.
bool same(double one, double other) {
    return std::abs(one - other) < 1e-6;
}

std::optional<std::string> failureOf(const TapedCall& call, std::string_view verb) {
    if (!call.error) return std::nullopt;
    if (call.error->code == -25204) return "The target app did not respond to Accessibility requests.";
    return fmt::format("Could not {} the focused window (AX error {}).", verb, call.error->code);
}

}  // namespace

std::optional<SimulatedWindowID> readFocusedWindow(TapeReader& tape, std::int32_t pid) {
    for (const std::string_view attribute : {"AXFocusedWindow", "AXMainWindow"}) {
        const auto window = readWindow(tape, pid, attribute);
        if (window && readEligible(tape, *window)) return window;
    }
    const auto windows = readWindows(tape, pid);
    for (const SimulatedWindowID window : windows) {
        if (readsAs(tape, window, "AXSubrole", "AXStandardWindow") && readEligible(tape, window)) return window;
    }
    std::vector<SimulatedWindowID> candidates;
    for (const SimulatedWindowID window : windows) {
        if (readEligible(tape, window)) candidates.push_back(window);
    }
    if (candidates.empty()) return std::nullopt;
    return candidates.size() == 1 ? candidates[0] : readLargest(tape, candidates);
}

std::optional<Rect> readFrame(TapeReader& tape, SimulatedWindowID window) {
    const auto* position = boxed(tape.takeCall(CallKind::copy, window, "AXPosition"), AXValueType::point);
    if (position == nullptr) return std::nullopt;
    const auto* size = boxed(tape.takeCall(CallKind::copy, window, "AXSize"), AXValueType::size);
    if (size == nullptr) return std::nullopt;
    const Point origin = std::get<Point>(position->value);
    const Size extent = std::get<Size>(size->value);
    if (!(extent.width > 0 && extent.height > 0)) return std::nullopt;
    return Rect{origin.x, origin.y, extent.width, extent.height};
}

bool readCanSetFrame(TapeReader& tape, SimulatedWindowID window) {
    return readsSettable(tape, window, "AXPosition") && readsSettable(tape, window, "AXSize");
}

std::optional<std::string> readWrite(TapeReader& tape, SimulatedWindowID window, const Rect& frame) {
    const TapedCall& move = tape.takeCall(CallKind::write, window, "AXPosition");
    const auto* point = std::get_if<Point>(&move.written.value);
    if (point == nullptr || !same(point->x, frame.x) || !same(point->y, frame.y))
        throw Broken{"targets", fmt::format("{}, but the target is {}", describe(move), describe(frame))};
    if (auto failure = failureOf(move, "move")) return failure;
    const TapedCall& resize = tape.takeCall(CallKind::write, window, "AXSize");
    const auto* size = std::get_if<Size>(&resize.written.value);
    if (size == nullptr || !same(size->width, frame.width) || !same(size->height, frame.height))
        throw Broken{"targets", fmt::format("{}, but the target is {}", describe(resize), describe(frame))};
    return failureOf(resize, "resize");
}

ModelWrite readVerifiedWrite(TapeReader& tape, SimulatedWindowID window, const Rect& frame) {
    if (auto failure = readWrite(tape, window, frame)) return {.failure = failure};
    const auto achieved = readFrame(tape, window);
    if (!achieved || !modelSame(*achieved, frame)) {
        if (auto failure = readWrite(tape, window, frame)) return {.failure = failure};
    }
    const auto final = readFrame(tape, window);
    return {.failure = std::nullopt, .final = final, .landed = final && modelSame(*final, frame)};
}

}  // namespace velmorand::simulation

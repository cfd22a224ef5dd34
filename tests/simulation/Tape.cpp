#include "simulation/Tape.h"

#include <fmt/format.h>

#include <type_traits>
#include <utility>

namespace velmorand::simulation {
namespace {

std::string describeBoxed(const AXBoxedValue& value) {
    if (const auto* point = std::get_if<Point>(&value.value)) return fmt::format("({}, {})", point->x, point->y);
    if (const auto* size = std::get_if<Size>(&value.value)) return fmt::format("{} x {}", size->width, size->height);
    return "?";
}

std::string describeValue(const AXAttributeValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
    if (const auto* boxed = std::get_if<AXBoxedValue>(&value)) return describeBoxed(*boxed);
    if (const auto* windows = std::get_if<std::vector<AXElement>>(&value))
        return fmt::format("{} windows", windows->size());
    return std::holds_alternative<AXElement>(value) ? "a window" : "nothing";
}

std::string_view nameOf(CallKind kind) {
    switch (kind) {
        case CallKind::trusted: return "trusted";
        case CallKind::prompt: return "prompt";
        case CallKind::copy: return "copy";
        case CallKind::write: return "write";
        case CallKind::settable: return "settable";
    }
    std::unreachable();
}

std::string describeCall(const TapedCall& call) {
    const double seconds = std::chrono::duration<double>(call.end.time - call.begin.time).count();
    std::string text(nameOf(call.kind));
    if (!call.attribute.empty()) text += fmt::format(" {} of {}", call.attribute, describe(call.element));
    if (call.kind == CallKind::write) text += " " + describeBoxed(call.written);
    if (call.error)
        text += fmt::format(" -> error {}", call.error->code);
    else if (call.kind == CallKind::copy)
        text += " -> " + describeValue(call.answer);
    else if (call.kind != CallKind::write)
        text += call.yes ? " -> yes" : " -> no";
    if (seconds > 0) text += fmt::format(" ({:.3f} s)", seconds);
    return text;
}

}  // namespace

std::string describe(const Element& element) {
    if (const auto* pid = std::get_if<std::int32_t>(&element)) return fmt::format("application {}", *pid);
    return fmt::format("window {}", std::to_underlying(std::get<SimulatedWindowID>(element)));
}

std::string describe(const TapedEvent& event) {
    return std::visit(
        [](const auto& content) -> std::string {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, TapedCall>) return describeCall(content);
            if constexpr (std::is_same_v<Content, TapedPerform>) return "perform " + content.rawValue;
            if constexpr (std::is_same_v<Content, TapedFrontmost>)
                return content.application ? fmt::format("frontmost is {}", content.application->pid)
                                           : "nothing is frontmost";
            if constexpr (std::is_same_v<Content, TapedReduceMotion>)
                return content.reduces ? "motion is reduced" : "motion is not reduced";
            if constexpr (std::is_same_v<Content, TapedFailure>) return fmt::format(R"(tells "{}")", content.message);
            if constexpr (std::is_same_v<Content, TapedOutcome>)
                return content.refusal ? "refused: " + *content.refusal : "accepted";
            if constexpr (std::is_same_v<Content, TapedTermination>)
                return fmt::format("application {} has ended", content.pid);
            if constexpr (std::is_same_v<Content, TapedScreenChange>) return "the displays have changed";
            if constexpr (std::is_same_v<Content, TapedInterruption>) return "something happens meanwhile";
            return {};
        },
        event);
}

}  // namespace velmorand::simulation

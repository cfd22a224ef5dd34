#include "simulation/CallJudge.h"

#include "simulation/Broken.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace velmorand::simulation {
namespace {

constexpr Duration messagingTimeout = std::chrono::milliseconds(750);

bool isAboutIn(SimulatedWindowID window, const Tape& tape) {
    return std::ranges::any_of(tape, [window](const TapedEvent& event) {
        const auto* call = std::get_if<TapedCall>(&event);
        return call != nullptr && call->kind == CallKind::write && call->element == Element(window);
    });
}

}  // namespace

void judgeCalls(const Tape& tape) {
    for (const TapedEvent& event : tape) {
        const auto* call = std::get_if<TapedCall>(&event);
        if (call != nullptr && call->end.time - call->begin.time > messagingTimeout)
            throw Broken{"time", describe(event)};
    }
}

void judgeWrites(std::span<const SimulatedWrite> writes, const Tape& tape) {
    for (const SimulatedWrite& write : writes) {
        if (!write.position || !write.size)
            throw Broken{"writes", fmt::format("{} got half a frame", describe(Element(write.window)))};
        if (!isAboutIn(write.window, tape))
            throw Broken{"writes", fmt::format("{} got a frame from nowhere", describe(Element(write.window)))};
    }
}

/// Only actions whose end is on the tape are looked at, as ticks of animations follow the others.
void judgeEffort(const Tape& tape, std::size_t remembered) {
    const TapedPerform* performing = nullptr;
    std::size_t calls = 0;
    for (const TapedEvent& event : tape) {
        if (const auto* perform = std::get_if<TapedPerform>(&event)) {
            performing = perform;
            calls = 0;
        }
        if (std::holds_alternative<TapedCall>(event)) ++calls;
        if (performing == nullptr || !std::holds_alternative<TapedOutcome>(event)) continue;
        const std::size_t most = remembered + 13 * performing->frames.size() + 27;
        if (calls > most)
            throw Broken{"effort", fmt::format("{} makes {} calls, more than {}", performing->rawValue, calls, most)};
    }
}

}  // namespace velmorand::simulation

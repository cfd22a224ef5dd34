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

std::size_t mostCalls(std::size_t remembered, std::size_t windows) {
    return remembered + 13 * windows + 27;
}

}  // namespace velmorand::simulation

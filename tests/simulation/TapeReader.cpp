#include "simulation/TapeReader.h"

#include "simulation/Broken.h"

#include <fmt/format.h>

#include <array>

namespace velmorand::simulation {

void TapeReader::skipInterruption() {
    while (!atEnd() && std::holds_alternative<TapedInterruption>(next())) {
        sawInterruption_ = true;
        ++position_;
    }
}

const TapedCall* TapeReader::nextCall(CallKind kind) {
    skipInterruption();
    const auto* call = atEnd() ? nullptr : std::get_if<TapedCall>(&next());
    return call != nullptr && call->kind == kind ? call : nullptr;
}

const TapedCall& TapeReader::takeCall(CallKind kind) {
    const TapedCall* call = nextCall(kind);
    if (call == nullptr) fail(kind == CallKind::trusted ? "a question for trust" : "a request for trust");
    ++position_;
    now_ = call->end;
    return *call;
}

const TapedCall& TapeReader::takeCall(CallKind kind, const Element& element, std::string_view attribute) {
    const TapedCall* call = nextCall(kind);
    if (call == nullptr || call->element != element || call->attribute != attribute) {
        constexpr auto verbs =
            std::to_array<std::string_view>({"", "", "a read of ", "a write to ", "whether one can set "});
        fail(fmt::format("{}{} of {}", verbs[static_cast<std::size_t>(kind)], attribute, describe(element)));
    }
    ++position_;
    now_ = call->end;
    return *call;
}

void TapeReader::fail(std::string_view expected) const {
    throw Broken{"calls",
                 fmt::format("expected {}, but there is: {}", expected, atEnd() ? "nothing more" : describe(next()))};
}

}  // namespace velmorand::simulation

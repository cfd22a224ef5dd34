#pragma once

#include "simulation/Tape.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

namespace velmorand::simulation {

/// Reads a tape from its start and insists on what has to come next. Where something else comes, the invariant "calls"
/// is broken.
class TapeReader {
public:
    /// `now`: the moment before the first event.
    TapeReader(std::span<const TapedEvent> tape, Moment now) : tape_(tape), now_(now) {}

    [[nodiscard]] bool atEnd() const { return position_ == tape_.size(); }
    /// The event that comes next; there is one.
    [[nodiscard]] const TapedEvent& next() const { return tape_[position_]; }
    /// Not before the end of the last call that was read.
    [[nodiscard]] Moment now() const { return now_; }

    /// The next event if it is of this kind, which it is past then.
    template <typename Event>
    const Event* takeIf() {
        skipInterruption();
        const auto* event = atEnd() ? nullptr : std::get_if<Event>(&next());
        if (event == nullptr) return nullptr;
        if constexpr (std::is_same_v<Event, TapedPerform>) now_ = event->at;
        ++position_;
        return event;
    }

    /// The next event, which must be of this kind.
    template <typename Event>
    const Event& take(std::string_view expected) {
        const auto* event = takeIf<Event>();
        if (event == nullptr) fail(expected);
        return *event;
    }

    const TapedCall& takeCall(CallKind kind);
    const TapedCall& takeCall(CallKind kind, const Element& element, std::string_view attribute);

    /// Whether the next event is a call of this kind.
    [[nodiscard]] const TapedCall* nextCall(CallKind kind);

    /// Whether the desktop changed in the middle of a call so far.
    [[nodiscard]] bool sawInterruption() const { return sawInterruption_; }

    /// Breaks the invariant "calls".
    [[noreturn]] void fail(std::string_view expected) const;

private:
    void skipInterruption();

    std::span<const TapedEvent> tape_;
    std::size_t position_ = 0;
    Moment now_;
    bool sawInterruption_ = false;
};

}  // namespace velmorand::simulation

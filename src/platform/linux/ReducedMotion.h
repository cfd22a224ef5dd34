#pragma once

#include <optional>
#include <vector>

namespace velmorand {

/// One of the places where a Linux session keeps whether the user wants little motion on screen.
class MotionSource {
public:
    virtual ~MotionSource() = default;
    MotionSource(const MotionSource&) = delete;
    MotionSource& operator=(const MotionSource&) = delete;

    /// Whether the user wants as little motion as possible; absent when this place does not say. Answered from memory:
    /// never waits for another program.
    [[nodiscard]] virtual std::optional<bool> reducesMotion() = 0;

protected:
    MotionSource() = default;
};

/// Whether the user wants as little motion on screen as possible, by the first place that says.
class ReducedMotion {
public:
    /// The sources must outlive it; the first counts most.
    explicit ReducedMotion(std::vector<MotionSource*> sources);

    /// False when no place says.
    [[nodiscard]] bool isWanted() const;

private:
    std::vector<MotionSource*> sources_;
};

}  // namespace velmorand

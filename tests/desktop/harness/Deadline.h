#pragma once

#include <chrono>

namespace velmorand::desktop {

/// A moment on the steady clock after which waiting stops.
class Deadline {
public:
    /// The moment \p timeout from now; a timeout of zero or less has passed at once.
    explicit Deadline(std::chrono::milliseconds timeout) : end_(std::chrono::steady_clock::now() + timeout) {}

    /// What is left, never negative.
    [[nodiscard]] std::chrono::milliseconds remaining() const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
        return left.count() > 0 ? left : std::chrono::milliseconds::zero();
    }

    [[nodiscard]] bool passed() const { return std::chrono::steady_clock::now() >= end_; }

private:
    std::chrono::steady_clock::time_point end_;
};

/// Long enough for anything on a desktop to happen on a loaded machine: reaching it means that it will not happen.
inline constexpr std::chrono::milliseconds patience{15'000};

}  // namespace velmorand::desktop

#pragma once

#include <functional>
#include <utility>

namespace velmorand {

/// A registration that ends when the object dies: an observer of a published value, a timer. Move-only; a
/// default-made one stands for nothing. It may outlive what it was registered with; ending it then does nothing.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;

    /// `end` is called once, when the subscription ends.
    explicit Subscription(std::move_only_function<void()> end) : end_(std::move(end)) {}

    ~Subscription() { cancel(); }

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }

    /// Ends the registration now; later calls do nothing.
    void cancel() {
        if (auto end = std::exchange(end_, nullptr)) end();
    }

private:
    std::move_only_function<void()> end_;
};

}  // namespace velmorand

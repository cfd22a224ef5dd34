#pragma once

#include "base/Subscription.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmorand {

/// A value that tells its subscribers after each change. Main thread only.
///
/// Every `set` and every `modify` is one publication, also when the value stays equal. Subscribers are told in
/// the order of subscription; a new one is not told the current value. A change made inside a notification is
/// delivered after the running round, so everyone sees every value in order. A subscription that ends during a
/// round is not called again, also not in that round.
template <typename T>
class Published {
public:
    using Callback = std::function<void(const T&)>;

    explicit Published(T initial = {}) : state_(std::make_shared<State>(std::move(initial))) {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;
    ~Published() = default;

    /// The current value. During a round it may already be newer than the value being delivered.
    [[nodiscard]] const T& value() const { return state_->value; }

    /// Replaces the value and publishes it.
    void set(T value) {
        state_->value = std::move(value);
        publish();
    }

    /// Lets `change` alter the value in place and publishes the result once.
    template <typename Change>
    void modify(Change&& change) {
        std::forward<Change>(change)(state_->value);
        publish();
    }

    /// Calls `callback` after each later change until the returned subscription ends.
    [[nodiscard]] Subscription subscribe(Callback callback) const {
        auto subscriber = std::make_shared<Subscriber>(std::move(callback), state_->publications);
        state_->subscribers.push_back(subscriber);
        return Subscription([state = std::weak_ptr<State>(state_), subscriber] {
            subscriber->active = false;
            if (auto alive = state.lock()) std::erase(alive->subscribers, subscriber);
        });
    }

private:
    struct Subscriber {
        Subscriber(Callback told, std::uint64_t since) : callback(std::move(told)), subscribedAt(since) {}

        Callback callback;
        std::uint64_t subscribedAt;  // publications up to this one happened before the subscription
        bool active = true;
    };

    struct Publication {
        std::uint64_t number;
        T value;
    };

    struct State {
        explicit State(T initial) : value(std::move(initial)) {}

        T value;
        std::uint64_t publications = 0;
        std::vector<std::shared_ptr<Subscriber>> subscribers;
        std::deque<Publication> pending;
        bool delivering = false;
    };

    void publish() {
        const std::shared_ptr<State> state = state_;  // outlives this object if a subscriber destroys it
        state->pending.push_back({++state->publications, state->value});
        if (state->delivering) return;
        state->delivering = true;
        while (!state->pending.empty()) {
            const Publication publication = std::move(state->pending.front());
            state->pending.pop_front();
            const auto round = state->subscribers;
            for (const auto& subscriber : round) {
                if (subscriber->active && subscriber->subscribedAt < publication.number)
                    subscriber->callback(publication.value);
            }
        }
        state->delivering = false;
    }

    std::shared_ptr<State> state_;
};

}  // namespace velmorand

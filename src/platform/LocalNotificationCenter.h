#pragma once

#include "platform/NotificationCenter.h"

#include <memory>
#include <vector>

namespace velmorand {

/// A notification centre that delivers what this process posts to it, for platforms without one of their own.
/// Observers are told in the order in which they were added.
class LocalNotificationCenter final : public NotificationCenter {
public:
    [[nodiscard]] ObserverID addObserver(NotificationName name, Callback callback) override;
    void removeObserver(ObserverID id) override;

    /// Tells the observers that are there now, one after the other.
    void post(const Notification& notification);

private:
    struct Observer {
        ObserverID id{};
        NotificationName name{};
        Callback callback;
        bool active = true;
    };

    std::vector<std::shared_ptr<Observer>> observers_;
    std::uint64_t lastID_ = 0;
};

}  // namespace velmorand

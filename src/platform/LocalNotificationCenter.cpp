#include "platform/LocalNotificationCenter.h"

#include <utility>

namespace velmorand {

ObserverID LocalNotificationCenter::addObserver(NotificationName name, Callback callback) {
    const ObserverID id{++lastID_};
    observers_.push_back(std::make_shared<Observer>(Observer{id, name, std::move(callback)}));
    return id;
}

void LocalNotificationCenter::removeObserver(ObserverID id) {
    std::erase_if(observers_, [id](const auto& observer) {
        if (observer->id != id) return false;
        observer->active = false;
        return true;
    });
}

void LocalNotificationCenter::post(const Notification& notification) {
    const auto round = observers_;
    for (const auto& observer : round) {
        if (observer->active && observer->name == notification.name) observer->callback(notification);
    }
}

}  // namespace velmorand

#pragma once

#include "platform/NotificationCenter.h"

namespace velmorand {

/// Owns one observation and removes it from its notification centre when released. Owners keep it in an optional
/// field and stop observing by clearing that field. The centre must outlive the token.
class NotificationToken {
public:
    NotificationToken(NotificationCenter& center, ObserverID token) : center_(center), token_(token) {}
    ~NotificationToken() { center_.removeObserver(token_); }

    NotificationToken(const NotificationToken&) = delete;
    NotificationToken& operator=(const NotificationToken&) = delete;

private:
    NotificationCenter& center_;
    ObserverID token_;
};

}  // namespace velmorand

#include "windows/NotificationToken.h"

#include "platform/LocalNotificationCenter.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmorand {
namespace {

constexpr Notification terminated{NotificationName::applicationTerminated, 501};

TEST(NotificationToken, StopsTheObservationAtOnceWhenReleased) {
    LocalNotificationCenter center;
    int calls = 0;
    std::optional<NotificationToken> token;
    token.emplace(center, center.addObserver(NotificationName::applicationTerminated,
                                             [&calls](const Notification&) { ++calls; }));
    center.post(terminated);
    ASSERT_EQ(calls, 1);

    token.reset();
    center.post(terminated);

    EXPECT_EQ(calls, 1);
}

TEST(NotificationToken, StopsAlsoTheDeliveryThatIsRunning) {
    LocalNotificationCenter center;
    int calls = 0;
    std::optional<NotificationToken> token;
    NotificationToken first(center, center.addObserver(NotificationName::applicationTerminated,
                                                       [&token](const Notification&) { token.reset(); }));
    token.emplace(center, center.addObserver(NotificationName::applicationTerminated,
                                             [&calls](const Notification&) { ++calls; }));

    center.post(terminated);

    EXPECT_EQ(calls, 0);
}

TEST(NotificationToken, LeavesOtherObservationsOfTheSameCentreAlone) {
    LocalNotificationCenter center;
    int calls = 0;
    std::optional<NotificationToken> token;
    token.emplace(center, center.addObserver(NotificationName::applicationTerminated, [](const Notification&) {}));
    const NotificationToken other(center, center.addObserver(NotificationName::applicationTerminated,
                                                             [&calls](const Notification&) { ++calls; }));

    token.reset();
    center.post(terminated);

    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace velmorand

#include "platform/LocalNotificationCenter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum NotificationName;

class LocalNotificationCenterTest : public testing::Test {
protected:
    /// An observer that notes its name and the pid.
    [[nodiscard]] NotificationCenter::Callback note(const std::string& name) {
        return [this, name](const Notification& notification) {
            told.push_back(name + std::to_string(notification.pid.value_or(0)));
        };
    }

    /// Adds an observer that is never removed.
    void observe(NotificationName name, NotificationCenter::Callback callback) {
        [[maybe_unused]] const ObserverID id = center.addObserver(name, std::move(callback));
    }

    std::vector<std::string> told;
    LocalNotificationCenter center;
};

TEST_F(LocalNotificationCenterTest, TellsTheObserversOfTheNameInTheOrderInWhichTheyWereAdded) {
    observe(applicationTerminated, note("a"));
    observe(screenParametersChanged, note("b"));
    observe(applicationTerminated, note("c"));

    center.post({applicationTerminated, 7});

    EXPECT_THAT(told, ElementsAre("a7", "c7"));
}

TEST_F(LocalNotificationCenterTest, HandsTheNotificationOnAsItIs) {
    std::vector<Notification> received;
    observe(screenParametersChanged, [&](const Notification& notification) { received.push_back(notification); });

    center.post({screenParametersChanged, std::nullopt});

    EXPECT_EQ(received, (std::vector<Notification>{{screenParametersChanged, std::nullopt}}));
}

TEST_F(LocalNotificationCenterTest, GivesEveryObserverAnIdOfItsOwn) {
    const ObserverID first = center.addObserver(applicationTerminated, note("a"));
    center.removeObserver(first);

    EXPECT_NE(center.addObserver(applicationTerminated, note("b")), first);
}

TEST_F(LocalNotificationCenterTest, DoesNotTellAnObserverThatWasRemoved) {
    const ObserverID first = center.addObserver(applicationTerminated, note("a"));
    observe(applicationTerminated, note("b"));

    center.removeObserver(first);
    center.post({applicationTerminated, 7});

    EXPECT_THAT(told, ElementsAre("b7"));
}

TEST_F(LocalNotificationCenterTest, DoesNotTellAnObserverThatIsRemovedDuringTheDelivery) {
    ObserverID second{};
    observe(applicationTerminated, [&](const Notification&) { center.removeObserver(second); });
    second = center.addObserver(applicationTerminated, note("b"));

    center.post({applicationTerminated, 7});

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(LocalNotificationCenterTest, LetsAnObserverRemoveItself) {
    ObserverID first{};
    first = center.addObserver(applicationTerminated, [&](const Notification&) {
        told.emplace_back("a");
        center.removeObserver(first);
    });

    center.post({applicationTerminated, 7});
    center.post({applicationTerminated, 8});

    EXPECT_THAT(told, ElementsAre("a"));
}

TEST_F(LocalNotificationCenterTest, TellsAnObserverAddedDuringADeliveryOnlyLaterNotifications) {
    const ObserverID first = center.addObserver(
        applicationTerminated, [&](const Notification&) { observe(applicationTerminated, note("late")); });

    center.post({applicationTerminated, 7});
    EXPECT_THAT(told, IsEmpty());

    center.removeObserver(first);
    center.post({applicationTerminated, 8});
    EXPECT_THAT(told, ElementsAre("late8"));
}

TEST_F(LocalNotificationCenterTest, IgnoresAnUnknownId) {
    observe(applicationTerminated, note("a"));

    center.removeObserver(ObserverID{999});
    center.post({applicationTerminated, 7});

    EXPECT_THAT(told, ElementsAre("a7"));
}

TEST_F(LocalNotificationCenterTest, DeliversToNobody) {
    center.post({applicationTerminated, 7});

    EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace velmorand

#include "platform/NotificationCenter.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(NotificationCenterContract, TellsOfAnApplicationThatEndedInATurnOfTheLoop) {
    std::vector<Notification> told;
    const ContractWindow window = desktop->openWindow({});
    const std::int32_t pid = desktop->pidOf(window);
    const ObserverID id = desktop->platform().workspaceNotificationCenter().addObserver(
        NotificationName::applicationTerminated,
        [&](const Notification& notification) { told.push_back(notification); });

    desktop->endApplicationOf(window);
    EXPECT_THAT(told, IsEmpty());

    EXPECT_TRUE(desktop->runUntil([&] { return !told.empty(); }, deadline));
    EXPECT_THAT(told, ElementsAre(Notification{NotificationName::applicationTerminated, pid}));
    desktop->platform().workspaceNotificationCenter().removeObserver(id);
}

TEST_P(NotificationCenterContract, DoesNotTellAnObserverThatWasRemoved) {
    std::vector<Notification> removed;
    std::vector<Notification> told;
    const ContractWindow window = desktop->openWindow({});
    NotificationCenter& center = desktop->platform().workspaceNotificationCenter();
    const ObserverID first =
        center.addObserver(NotificationName::applicationTerminated,
                           [&](const Notification& notification) { removed.push_back(notification); });
    const ObserverID second =
        center.addObserver(NotificationName::applicationTerminated,
                           [&](const Notification& notification) { told.push_back(notification); });

    center.removeObserver(first);
    desktop->endApplicationOf(window);
    EXPECT_TRUE(desktop->runUntil([&] { return !told.empty(); }, deadline));

    EXPECT_THAT(removed, IsEmpty());
    center.removeObserver(second);
}

TEST_P(NotificationCenterContract, AnObserverThatRemovesItselfIsNotToldAgain) {
    int calls = 0;
    int laterCalls = 0;
    const ContractWindow first = desktop->openWindow({});
    const ContractWindow second = desktop->openWindow({.applicationIdentifier = "org.example.Viewer"});
    NotificationCenter& center = desktop->platform().workspaceNotificationCenter();
    ObserverID id{};
    id = center.addObserver(NotificationName::applicationTerminated, [&](const Notification&) {
        ++calls;
        center.removeObserver(id);
    });
    const ObserverID other =
        center.addObserver(NotificationName::applicationTerminated, [&](const Notification&) { ++laterCalls; });

    desktop->endApplicationOf(first);
    desktop->endApplicationOf(second);
    EXPECT_TRUE(desktop->runUntil([&] { return laterCalls == 2; }, deadline));

    EXPECT_EQ(calls, 1);
    center.removeObserver(other);
}

TEST_P(NotificationCenterContract, IgnoresAnUnknownId) {
    std::vector<Notification> told;
    const ContractWindow window = desktop->openWindow({});
    NotificationCenter& center = desktop->platform().workspaceNotificationCenter();
    const ObserverID id = center.addObserver(NotificationName::applicationTerminated,
                                             [&](const Notification& notification) { told.push_back(notification); });

    center.removeObserver(ObserverID{0xFFFF'FFFF});
    desktop->endApplicationOf(window);

    EXPECT_TRUE(desktop->runUntil([&] { return !told.empty(); }, deadline));
    center.removeObserver(id);
}

TEST_P(NotificationCenterContract, TellsOfChangedDisplaysOnTheDefaultCentreOnly) {
    VELMORAND_NEEDS(Ability::changeDisplays);
    std::vector<Notification> told;
    std::vector<Notification> elsewhere;
    desktop->setDisplays({{0, 0, 800, 600}});
    finishTurn();
    NotificationCenter& center = desktop->platform().defaultNotificationCenter();
    NotificationCenter& workspaceCenter = desktop->platform().workspaceNotificationCenter();
    const ObserverID id = center.addObserver(NotificationName::screenParametersChanged,
                                             [&](const Notification& notification) { told.push_back(notification); });
    const ObserverID other =
        workspaceCenter.addObserver(NotificationName::screenParametersChanged,
                                    [&](const Notification& notification) { elsewhere.push_back(notification); });

    desktop->setDisplays({{0, 0, 800, 600}, {-800, 0, 800, 600}});

    EXPECT_TRUE(desktop->runUntil([&] { return !told.empty(); }, deadline));
    EXPECT_EQ(told.front(), (Notification{NotificationName::screenParametersChanged, std::nullopt}));
    EXPECT_THAT(elsewhere, IsEmpty());
    center.removeObserver(id);
    workspaceCenter.removeObserver(other);
}

TEST_P(NotificationCenterContract, TellsThatThisProgramBecameActiveOnTheDefaultCentre) {
    std::vector<Notification> told;
    NotificationCenter& center = desktop->platform().defaultNotificationCenter();
    const ObserverID id = center.addObserver(NotificationName::applicationBecameActive,
                                             [&](const Notification& notification) { told.push_back(notification); });

    desktop->activateProgram();
    EXPECT_THAT(told, IsEmpty());

    EXPECT_TRUE(desktop->runUntil([&] { return !told.empty(); }, deadline));
    EXPECT_THAT(told, ElementsAre(Notification{NotificationName::applicationBecameActive, std::nullopt}));
    center.removeObserver(id);
}

}  // namespace velmorand

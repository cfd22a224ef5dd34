#include "platform/simulated/SimulatedUserNotificationCenter.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Added = std::expected<void, UserNotificationError>;

class SimulatedUserNotificationCenterTest : public testing::Test {
protected:
    /// The answer, absent when none has come.
    [[nodiscard]] std::optional<NotificationAuthorization> settings() {
        std::optional<NotificationAuthorization> answer;
        center->notificationSettings([&](NotificationAuthorization authorization) { answer = authorization; });
        EXPECT_EQ(answer, std::nullopt);
        runLoop.runPending();
        return answer;
    }
    [[nodiscard]] std::optional<bool> request(NotificationAuthorizationOptions options = {}) {
        std::optional<bool> answer;
        center->requestAuthorization(options, [&](bool granted) { answer = granted; });
        EXPECT_EQ(answer, std::nullopt);
        runLoop.runPending();
        return answer;
    }
    [[nodiscard]] std::optional<Added> add(UserNotificationRequest request) {
        std::optional<Added> result;
        center->add(std::move(request), [&](const Added& outcome) { result = outcome; });
        EXPECT_FALSE(result.has_value());
        runLoop.runPending();
        return result;
    }

    SimulatedRunLoop runLoop;
    std::unique_ptr<SimulatedUserNotificationCenter> center =
        std::make_unique<SimulatedUserNotificationCenter>(runLoop);
};

TEST_F(SimulatedUserNotificationCenterTest, NobodyHasBeenAskedAtFirst) {
    EXPECT_EQ(settings(), NotificationAuthorization::notDetermined);
}

TEST_F(SimulatedUserNotificationCenterTest, TheUsersAnswerSettlesTheAuthorization) {
    EXPECT_EQ(request({.alert = true, .sound = true}), true);
    EXPECT_EQ(settings(), NotificationAuthorization::authorized);

    EXPECT_THAT(center->authorizationRequests(),
                ElementsAre(NotificationAuthorizationOptions{.alert = true, .sound = true}));
}

TEST_F(SimulatedUserNotificationCenterTest, TheUserMayRefuse) {
    center->setAnswer(false);

    EXPECT_EQ(request(), false);
    EXPECT_EQ(settings(), NotificationAuthorization::denied);
}

TEST_F(SimulatedUserNotificationCenterTest, TheUserIsAskedOnlyOnce) {
    ASSERT_EQ(request(), true);
    center->setAnswer(false);

    EXPECT_EQ(request(), true);

    center->setAuthorization(NotificationAuthorization::denied);
    center->setAnswer(true);
    EXPECT_EQ(request(), false);
}

TEST_F(SimulatedUserNotificationCenterTest, TheSettingsCountAsTheyAreNow) {
    for (const auto authorization : {NotificationAuthorization::denied, NotificationAuthorization::authorized,
                                     NotificationAuthorization::provisional, NotificationAuthorization::other}) {
        center->setAuthorization(authorization);
        EXPECT_EQ(settings(), authorization);
    }
}

TEST_F(SimulatedUserNotificationCenterTest, ShowsTheLastRequestUnderEachIdentifier) {
    center->setAuthorization(NotificationAuthorization::authorized);

    EXPECT_EQ(add({"first", {"Title", "One", false}}), Added());
    EXPECT_EQ(add({"second", {"Title", "Two", true}}), Added());
    EXPECT_EQ(add({"first", {"Title", "Three", false}}), Added());

    EXPECT_THAT(center->shown(), ElementsAre(Pair("first", UserNotificationContent{"Title", "Three", false}),
                                             Pair("second", UserNotificationContent{"Title", "Two", true})));
    EXPECT_THAT(center->added(), ElementsAre(UserNotificationRequest{"first", {"Title", "One", false}},
                                             UserNotificationRequest{"second", {"Title", "Two", true}},
                                             UserNotificationRequest{"first", {"Title", "Three", false}}));
}

TEST_F(SimulatedUserNotificationCenterTest, ADismissedNotificationIsNotSeenAnyMore) {
    center->setAuthorization(NotificationAuthorization::provisional);
    ASSERT_EQ(add({"first", {"Title", "One", false}}), Added());

    center->dismiss("first");

    EXPECT_THAT(center->shown(), IsEmpty());
}

TEST_F(SimulatedUserNotificationCenterTest, NothingIsShownWithoutAuthorization) {
    const Added refused = std::unexpected(UserNotificationError{"Notifications are not allowed for this application."});

    EXPECT_EQ(add({"first", {}}), refused);
    center->setAuthorization(NotificationAuthorization::denied);
    EXPECT_EQ(add({"second", {}}), refused);

    EXPECT_THAT(center->shown(), IsEmpty());
    EXPECT_THAT(center->added(),
                ElementsAre(UserNotificationRequest{"first", {}}, UserNotificationRequest{"second", {}}));
}

TEST_F(SimulatedUserNotificationCenterTest, FailsAsItIsTold) {
    center->setAuthorization(NotificationAuthorization::authorized);
    center->setAddError(UserNotificationError{"Out of paper."});
    EXPECT_EQ(add({"first", {}}), Added(std::unexpected(UserNotificationError{"Out of paper."})));
    EXPECT_THAT(center->shown(), IsEmpty());

    center->setAddError(std::nullopt);
    EXPECT_EQ(add({"first", {}}), Added());
}

TEST_F(SimulatedUserNotificationCenterTest, RequestsTakeEffectInTheirOrder) {
    std::vector<int> told;
    center->requestAuthorization({}, [&](bool) { told.push_back(1); });
    center->add({"first", {}}, [&](const Added& added) { told.push_back(added ? 2 : -2); });
    center->notificationSettings([&](NotificationAuthorization) { told.push_back(3); });

    runLoop.runPending();

    EXPECT_THAT(told, ElementsAre(1, 2, 3));
}

TEST_F(SimulatedUserNotificationCenterTest, NobodyIsToldAfterItsEnd) {
    bool told = false;
    center->notificationSettings([&](NotificationAuthorization) { told = true; });
    center->requestAuthorization({}, [&](bool) { told = true; });
    center->add({"first", {}}, [&](const Added&) { told = true; });

    center.reset();
    runLoop.runPending();

    EXPECT_FALSE(told);
}

TEST_F(SimulatedUserNotificationCenterTest, ACompletionMayEndIt) {
    bool told = false;
    center->notificationSettings([&](NotificationAuthorization) { center.reset(); });
    center->requestAuthorization({}, [&](bool) { told = true; });

    runLoop.runPending();

    EXPECT_EQ(center, nullptr);
    EXPECT_FALSE(told);
}

}  // namespace
}  // namespace velmorand

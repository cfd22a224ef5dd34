#include "platform/linux/TrustPrompt.h"

#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedUserNotificationCenter.h"
#include "support/SimulatedPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class TrustPromptTest : public testing::Test {
protected:
    TrustPromptTest() { center.setAuthorization(NotificationAuthorization::authorized); }

    static UserNotificationContent content(const std::string& sentence) { return {"Velmorand", sentence, false}; }

    SimulatedRunLoop runLoop;
    SimulatedLog log;
    SimulatedUserNotificationCenter center{runLoop};
    std::unique_ptr<TrustPrompt> prompt = std::make_unique<TrustPrompt>(center, log, "app.velmorand.Velmorand");
};

TEST_F(TrustPromptTest, IsALineInTheLogAndThenANotification) {
    prompt->show("No window manager is running.");
    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "No window manager is running."}));
    EXPECT_THAT(center.added(), IsEmpty());

    runLoop.runPending();

    EXPECT_THAT(center.shown(),
                ElementsAre(Pair("app.velmorand.Velmorand.trust", content("No window manager is running."))));
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(center.authorizationRequests(), IsEmpty());
}

TEST_F(TrustPromptTest, ALaterOneTakesThePlaceOfTheEarlier) {
    prompt->show("One is missing.");
    runLoop.runPending();
    prompt->show("Another is missing.");
    runLoop.runPending();

    EXPECT_THAT(center.shown(), ElementsAre(Pair("app.velmorand.Velmorand.trust", content("Another is missing."))));
}

TEST_F(TrustPromptTest, WhatIsSaidBeforeTheAnswerIsShownOnceAndLoggedEachTime) {
    prompt->show("One is missing.");
    prompt->show("Another is missing.");
    runLoop.runPending();

    EXPECT_THAT(center.added(),
                ElementsAre(UserNotificationRequest{"app.velmorand.Velmorand.trust", content("Another is missing.")}));
    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "One is missing."},
                                         LogLine{LogLevel::error, "ax", "Another is missing."}));
}

TEST_F(TrustPromptTest, IsOnlyALineWhereNotificationsAreDenied) {
    center.setAuthorization(NotificationAuthorization::denied);

    prompt->show("One is missing.");
    runLoop.runPending();

    EXPECT_THAT(center.added(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "One is missing."}));
}

TEST_F(TrustPromptTest, IsTriedAnewAfterADenial) {
    center.setAuthorization(NotificationAuthorization::denied);
    prompt->show("One is missing.");
    runLoop.runPending();

    center.setAuthorization(NotificationAuthorization::authorized);
    prompt->show("Another is missing.");
    runLoop.runPending();

    EXPECT_THAT(center.shown(), ElementsAre(Pair("app.velmorand.Velmorand.trust", content("Another is missing."))));
}

TEST_F(TrustPromptTest, LogsWhyItCouldNotBeShown) {
    center.setAddError(UserNotificationError{"{} is full."});

    prompt->show("One is missing.");
    runLoop.runPending();

    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "One is missing."},
                                         LogLine{LogLevel::error, "ax", "{} is full."}));
}

TEST_F(TrustPromptTest, MayEndBeforeTheAnswers) {
    prompt->show("One is missing.");
    prompt.reset();
    runLoop.runPending();

    EXPECT_THAT(center.added(), IsEmpty());
}

}  // namespace
}  // namespace velmorand

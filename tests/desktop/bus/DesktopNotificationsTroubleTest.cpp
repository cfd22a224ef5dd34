#include "desktop/bus/DesktopNotificationsFixture.h"
#include "platform/linux/support/RedirectedStandardError.h"

#include <QDBusConnectionInterface>
#include <QMetaObject>

namespace velmorand::desktop {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString service = QStringLiteral("org.freedesktop.Notifications");

/// Servers that refuse, talk nonsense, hang or end. Whatever happens, each request ends once, and none is lost silently.
class DesktopNotificationsTroubleTest : public DesktopNotificationsFixture {
protected:
    /// Ends the server in the next turn, before anything that it sends now can arrive, and starts another one.
    void replaceServerInNextTurn() {
        QMetaObject::invokeMethod(&context_, [this] { replaceServer(); }, Qt::QueuedConnection);
    }
    void stopServerInNextTurn() {
        QMetaObject::invokeMethod(&context_, [this] { stopServer(); }, Qt::QueuedConnection);
    }
    void replaceServer() {
        stopServer();
        startServer();
    }

private:
    QObject context_;
};

TEST_F(DesktopNotificationsTroubleTest, ARefusalIsToldWithItsReason) {
    startServer();
    server().setAnswerToNotify([](const QDBusMessage& call) {
        return call.createErrorReply(QStringLiteral("org.example.Full"), QStringLiteral("No room\n  left"));
    });
    startCenter();

    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: The notification could not be shown: No room left"));
    EXPECT_THAT(server().received(), SizeIs(1));
}

TEST_F(DesktopNotificationsTroubleTest, ARefusalWithoutAReasonIsToldByItsName) {
    startServer();
    server().setAnswerToNotify(
        [](const QDBusMessage& call) { return call.createErrorReply(QStringLiteral("org.example.Full"), QString()); });
    startCenter();

    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: The notification could not be shown: org.example.Full"));
}

TEST_F(DesktopNotificationsTroubleTest, AnswersOfOtherTypesAreErrors) {
    startServer();
    startCenter();
    const std::string nonsense = "first: The notification server gave an answer that makes no sense.";

    for (const QVariantList& arguments :
         {QVariantList{}, QVariantList{QStringLiteral("1")}, QVariantList{1}, QVariantList{quint32{1}, quint32{2}},
          QVariantList{QStringList{QStringLiteral("1")}}}) {
        server().setAnswerToNotify([&](const QDBusMessage& call) { return call.createReply(arguments); });
        add("first", "one");
        ASSERT_TRUE(waitForOutcomes(1));
        EXPECT_EQ(outcomes().back(), nonsense);
        forgetOutcomes();
    }
}

TEST_F(DesktopNotificationsTroubleTest, CapabilitiesOfOtherTypesAreErrorsAndAskedForAgain) {
    startServer();
    startCenter();
    const std::string nonsense = "first: The notification server gave an answer that makes no sense.";

    for (const QVariantList& arguments :
         {QVariantList{}, QVariantList{QStringLiteral("body")}, QVariantList{quint32{1}}}) {
        server().setAnswerToCapabilities([&](const QDBusMessage& call) { return call.createReply(arguments); });
        add("first", "one");
        ASSERT_TRUE(waitForOutcomes(1));
        EXPECT_EQ(outcomes().back(), nonsense);
        forgetOutcomes();
    }
    server().setAnswerToCapabilities({});
    show("first", "one");
}

TEST_F(DesktopNotificationsTroubleTest, AServerThatNeverAnswersIsGivenUp) {
    startServer();
    server().setAnswerToNotify([](const QDBusMessage&) { return std::nullopt; });
    startCenter({.answer = moment});

    add("first", "one");
    add("second", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(), ElementsAre("first: The notification server does not answer.",
                                        "second: The notification server does not answer."));
    EXPECT_THAT(server().received(), SizeIs(2)) << "what may have been shown is not sent again";
}

TEST_F(DesktopNotificationsTroubleTest, AServerThatDoesNotTellItsCapabilitiesIsGivenUp) {
    startServer();
    server().setAnswerToCapabilities([](const QDBusMessage&) { return std::nullopt; });
    startCenter({.answer = moment});

    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: The notification server does not answer."));
    EXPECT_THAT(server().received(), IsEmpty());
}

TEST_F(DesktopNotificationsTroubleTest, AnAnswerThatComesTooLateDoesNoHarm) {
    startServer();
    std::optional<QDBusMessage> late;
    server().setAnswerToNotify([&](const QDBusMessage& call) {
        late = call.createReply(quint32{41});
        return std::nullopt;
    });
    startCenter({.answer = moment});
    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    server().bus().send(*late);
    waitForTheBus();
    server().setAnswerToNotify({});
    add("first", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(), ElementsAre("first: The notification server does not answer.", "first: shown"));
    EXPECT_EQ(server().received().back().replaces, 0U);
}

TEST_F(DesktopNotificationsTroubleTest, WithoutAServerEachRequestFailsAtOnce) {
    startCenter();

    add("first", "one");
    add("second", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(),
                ElementsAre("first: No notification server is running.", "second: No notification server is running."));
}

TEST_F(DesktopNotificationsTroubleTest, AServerThatComesLaterIsUsed) {
    startCenter();
    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    startServer();
    add("first", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_EQ(outcomes().back(), "first: shown");
}

TEST_F(DesktopNotificationsTroubleTest, AnotherServerKnowsNothingOfTheNumbersOfTheFirst) {
    startServer({QStringLiteral("body-markup")});
    server().setNextNumber(41);
    startCenter();
    show("first", "<one>");
    ASSERT_EQ(server().received().at(0).body, "&lt;one&gt;");

    replaceServer();
    show("first", "<two>");
    show("first", "<three>");

    ASSERT_THAT(server().received(), SizeIs(2));
    EXPECT_EQ(server().received()[0].replaces, 0U);
    EXPECT_EQ(server().received()[0].body, "<two>");
    EXPECT_EQ(server().received()[1].replaces, 1U);
    EXPECT_EQ(server().capabilityQuestions(), 1);
}

TEST_F(DesktopNotificationsTroubleTest, AServerThatTakesTheNameFromARunningOneIsUsedInItsPlace) {
    startServer();
    startCenter();
    show("first", "one");

    FakeNotificationServer successor(connectToBus());
    waitForTheBus();
    show("first", "two");

    ASSERT_THAT(successor.received(), SizeIs(1));
    EXPECT_EQ(successor.received()[0].replaces, 0U);
    EXPECT_THAT(server().received(), SizeIs(1));
}

TEST_F(DesktopNotificationsTroubleTest, WhatAServerSaysAfterItHasLostTheNameCountsNoMore) {
    startServer();
    std::optional<QDBusMessage> late;
    server().setAnswerToCapabilities([&](const QDBusMessage& call) {
        late = call.createReply(QStringList{QStringLiteral("body")});
        return std::nullopt;
    });
    startCenter();
    add("first", "one");
    ASSERT_TRUE(runUntil([&] { return late.has_value(); }));

    FakeNotificationServer successor(connectToBus());
    waitForTheBus();
    server().bus().send(*late);
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown"));
    EXPECT_THAT(successor.received(), SizeIs(1));
    EXPECT_THAT(server().received(), IsEmpty());
}

TEST_F(DesktopNotificationsTroubleTest, WhenItEndsAfterItsCapabilitiesTheNextServerShowsTheRequest) {
    startServer();
    server().setAnswerToCapabilities([this](const QDBusMessage& call) {
        replaceServerInNextTurn();
        return call.createReply(QStringList{QStringLiteral("body-markup")});
    });
    startCenter();

    show("first", "<one>");
    show("first", "<two>");

    ASSERT_THAT(server().received(), SizeIs(2));
    EXPECT_EQ(server().received()[0].body, "<one>") << "escaped as the first server wanted it";
    EXPECT_EQ(server().received()[1].replaces, 1U);
}

TEST_F(DesktopNotificationsTroubleTest, WhenItEndsAfterItsCapabilitiesForGoodTheRequestFails) {
    startServer();
    server().setAnswerToCapabilities([this](const QDBusMessage& call) {
        stopServerInNextTurn();
        return call.createReply(QStringList());
    });
    startCenter();

    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: No notification server is running."));
}

TEST_F(DesktopNotificationsTroubleTest, WhenItEndsInsteadOfAnsweringTheNextServerShowsTheRequest) {
    startServer();
    server().setAnswerToNotify([this](const QDBusMessage&) {
        replaceServerInNextTurn();
        return std::nullopt;
    });
    startCenter();

    add("first", "one");
    add("first", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown", "first: shown"));
    ASSERT_THAT(server().received(), SizeIs(2));
    EXPECT_EQ(server().received()[0].replaces, 0U);
    EXPECT_EQ(server().received()[1].replaces, 1U);
}

TEST_F(DesktopNotificationsTroubleTest, AServerThatEndsEachTimeIsNotTriedForEver) {
    startServer();
    startCenter();
    int ends = 0;
    const auto endAndComeBack = [&](const QDBusMessage&) -> std::optional<QDBusMessage> {
        ++ends;
        replaceServerInNextTurn();
        return std::nullopt;
    };
    server().setAnswerToNotify(endAndComeBack);
    add("first", "one");
    ASSERT_TRUE(runUntil([&] { return ends == 1 && server().received().empty(); }));
    server().setAnswerToNotify(endAndComeBack);
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_EQ(ends, 2);
    EXPECT_THAT(outcomes(), ElementsAre(AnyOf("first: No notification server is running.",
                                              "first: The notification server does not answer.")));
}

TEST_F(DesktopNotificationsTroubleTest, AServiceThatCannotBeStartedIsToldWithTheReason) {
    offerService(service, "/bin/false");
    startCenter();

    add("first", "one");
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre(testing::StartsWith("first: The notification could not be shown: ")));
}

TEST_F(DesktopNotificationsTroubleTest, AServiceThatIsBeingStartedMayTakeLongerThanAnAnswer) {
    offerService(service, "/bin/sleep 5");
    startCenter({.answer = moment});
    const MonotonicTime before = runLoop.now();

    add("first", "one");
    const RunLoop::Timer wakeUp = runLoop.every(moment, [] {});
    ASSERT_TRUE(runUntil([&] { return runLoop.now() - before > 3 * moment; }));
    EXPECT_THAT(outcomes(), IsEmpty());
    startServer();
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown"));
}

TEST_F(DesktopNotificationsTroubleTest, WithoutABusEachRequestFailsAndNothingIsWritten) {
    const RedirectedStandardError errors;
    ownBus_ = QDBusConnection(QStringLiteral("none"));
    startCenter();

    add("first", "one");
    add("first", "two");
    EXPECT_THAT(outcomes(), IsEmpty());
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(), ElementsAre("first: There is no session bus to show notifications through.",
                                        "first: There is no session bus to show notifications through."));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(DesktopNotificationsTroubleTest, ABusThatEndsTakesTheRequestsWithItEachWithAnError) {
    startServer();
    server().setAnswerToNotify([](const QDBusMessage&) { return std::nullopt; });
    startCenter({.answer = patience});
    const MonotonicTime before = runLoop.now();
    add("first", "one");
    add("second", "two");
    ASSERT_TRUE(runUntil([this] { return server().received().size() == 1; }));

    bus().process().terminate();
    ASSERT_TRUE(waitForOutcomes(2));
    add("third", "three");
    ASSERT_TRUE(waitForOutcomes(3));
    runPosted();

    EXPECT_THAT(outcomes(), SizeIs(3));
    EXPECT_EQ(outcomes().back(), "third: There is no session bus to show notifications through.");
    EXPECT_LT(runLoop.now() - before, patience / 2);
}

/// No call waits for the bus, not even the first.
TEST_F(DesktopNotificationsTroubleTest, NobodyWaitsForABusThatDoesNotAnswer) {
    startServer();
    bus().process().freeze();
    const MonotonicTime before = runLoop.now();

    startCenter();
    add("first", "one");
    askForSettings();
    runPosted();

    EXPECT_LT(runLoop.now() - before, std::chrono::seconds(2));
    bus().process().thaw();
    ASSERT_TRUE(waitForOutcomes(1) && waitForSettings(1));
    EXPECT_THAT(outcomes(), ElementsAre("first: shown"));
    EXPECT_THAT(settings(), ElementsAre(NotificationAuthorization::authorized));
}

}  // namespace
}  // namespace velmorand::desktop

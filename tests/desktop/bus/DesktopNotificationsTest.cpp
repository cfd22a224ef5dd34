#include "platform/linux/DesktopNotifications.h"

#include "desktop/bus/DesktopNotificationsFixture.h"
#include "platform/linux/NotificationText.h"

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QStringList withMarkup{QStringLiteral("actions"), QStringLiteral("body"), QStringLiteral("body-markup")};

/// What goes over the bus, and in which order.
class DesktopNotificationsTest : public DesktopNotificationsFixture {
protected:
    [[nodiscard]] std::vector<std::string> receivedBodies() {
        std::vector<std::string> bodies;
        for (const auto& notification : server().received()) bodies.push_back(notification.body.toStdString());
        return bodies;
    }
    [[nodiscard]] std::vector<quint32> replacedNumbers() {
        std::vector<quint32> numbers;
        for (const auto& notification : server().received()) numbers.push_back(notification.replaces);
        return numbers;
    }
};

TEST_F(DesktopNotificationsTest, EveryArgumentIsWhatTheServiceWants) {
    startServer();
    startCenter();

    add("first", {"A title", "A body\nof two lines", true});
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown"));
    ASSERT_THAT(server().received(), SizeIs(1));
    EXPECT_EQ(server().lastSignature(), "susssasa{sv}i");
    const ReceivedNotification& notification = server().received().front();
    EXPECT_EQ(notification.applicationName, "Velmorand");
    EXPECT_EQ(notification.replaces, 0U);
    EXPECT_EQ(notification.icon, "org.example.Program");
    EXPECT_EQ(notification.summary, "A title");
    EXPECT_EQ(notification.body, "A body\nof two lines");
    EXPECT_EQ(notification.actions, QStringList());
    EXPECT_EQ(notification.expireTimeout, -1);
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("org.example.Program")},
                            {QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
    EXPECT_EQ(notification.hints, hints);
}

TEST_F(DesktopNotificationsTest, WithoutASoundNoneIsNamed) {
    startServer();
    startCenter();

    show("first", "quiet");

    const QVariantMap& hints = server().received().at(0).hints;
    EXPECT_EQ(hints.keys(), QStringList({QStringLiteral("desktop-entry"), QStringLiteral("urgency")}));
    EXPECT_EQ(hints.value(QStringLiteral("urgency")).metaType(), QMetaType::fromType<uchar>());
}

TEST_F(DesktopNotificationsTest, TheBodyIsEscapedForAServerThatReadsMarkup) {
    startServer(withMarkup);
    startCenter();

    add("first", {"<b>Salt & \"Pepper\"</b>", "<b>Salt & \"Pepper\"</b> &amp;", false});
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_EQ(server().received().at(0).summary, "<b>Salt & \"Pepper\"</b>");
    EXPECT_EQ(server().received().at(0).body, "&lt;b&gt;Salt &amp; \"Pepper\"&lt;/b&gt; &amp;amp;");
}

TEST_F(DesktopNotificationsTest, TheBodyIsSentAsItIsToAServerThatReadsNone) {
    startServer();
    startCenter();

    add("first", {"<b>Salt & Pepper</b>", "<b>Salt & Pepper</b>", false});
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_EQ(server().received().at(0).summary, "<b>Salt & Pepper</b>");
    EXPECT_EQ(server().received().at(0).body, "<b>Salt & Pepper</b>");
}

TEST_F(DesktopNotificationsTest, AServerIsAskedForItsCapabilitiesOnce) {
    startServer();
    startCenter();

    show("first", "one");
    show("second", "two");
    show("first", "three");

    EXPECT_EQ(server().capabilityQuestions(), 1);
}

TEST_F(DesktopNotificationsTest, ALaterOneReplacesTheEarlierUnderTheSameIdentifier) {
    startServer();
    server().setNextNumber(41);
    startCenter();

    show("first", "one");
    show("second", "two");
    show("first", "three");
    show("second", "four");

    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 0, 41, 42));
    EXPECT_THAT(server().shown(), SizeIs(2));
}

TEST_F(DesktopNotificationsTest, InQuickSuccessionTheOrderStaysAndTheLaterReplacesTheEarlier) {
    startServer();
    server().setNextNumber(41);
    startCenter();

    add("first", "one");
    add("second", "two");
    add("first", "three");
    add("first", "four");
    EXPECT_THAT(outcomes(), IsEmpty());
    ASSERT_TRUE(waitForOutcomes(4));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown", "second: shown", "first: shown", "first: shown"));
    EXPECT_THAT(receivedBodies(), ElementsAre("one", "two", "three", "four"));
    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 0, 41, 41));
}

TEST_F(DesktopNotificationsTest, AnIdentifierMayBeAnyText) {
    startServer();
    startCenter();
    const std::string strange("a\0b\n\xff", 5);

    for (const std::string& identifier : {std::string(), strange, std::string("a")}) {
        show(identifier, "one");
        show(identifier, "two");
    }

    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 1, 0, 2, 0, 3));
}

TEST_F(DesktopNotificationsTest, TextsThatTheBusRefusesAreMended) {
    startServer();
    startCenter();

    add("first", {std::string("A\0B\xff\x1b[1mC\r\n", 11), std::string("\xed\xa0\x80\0\tD\x7f", 7), false});
    add("second", std::string(1'000'000, 'x'));
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown", "second: shown"));
    EXPECT_TRUE(ownBus_.isConnected());
    EXPECT_EQ(server().received().at(0).summary, QStringLiteral("AB\uFFFD[1mC\n"));
    EXPECT_EQ(server().received().at(0).body, QStringLiteral("\uFFFD\uFFFD\uFFFD\tD"));
    EXPECT_EQ(server().received().at(1).body.size(), longestNotificationBody);
}

TEST_F(DesktopNotificationsTest, AClosedOneIsNotReplacedButShownAnew) {
    startServer();
    server().setNextNumber(41);
    startCenter();
    show("first", "one");
    show("second", "two");

    server().close(41);
    waitForTheBus();
    show("first", "three");
    show("second", "four");

    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 0, 0, 42));
}

TEST_F(DesktopNotificationsTest, OnlyTheServerSaysWhatIsClosed) {
    startServer();
    startCenter();
    show("first", "one");

    FakeNotificationServer::tellClosed(connectToBus(), {quint32{1}, quint32{2}});
    FakeNotificationServer::tellClosed(server().bus(), {});
    FakeNotificationServer::tellClosed(server().bus(), {quint32{1}});
    FakeNotificationServer::tellClosed(server().bus(), {QStringLiteral("1"), quint32{2}});
    FakeNotificationServer::tellClosed(server().bus(), {quint32{7}, quint32{2}});
    waitForTheBus();
    show("first", "two");

    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 1));
}

TEST_F(DesktopNotificationsTest, AServerThatNumbersNothingIsNeverAskedToReplace) {
    startServer();
    server().setAnswerToNotify([](const QDBusMessage& call) { return call.createReply(quint32{0}); });
    startCenter();

    show("first", "one");
    show("first", "two");

    EXPECT_THAT(replacedNumbers(), ElementsAre(0, 0));
}

TEST_F(DesktopNotificationsTest, WhatACompletionAddsComesAfterWhatWaits) {
    startServer();
    startCenter();

    center().add({"first", {"Title", "one", false}},
                 [this](const std::expected<void, UserNotificationError>&) { add("first", "three"); });
    add("first", "two");
    ASSERT_TRUE(waitForOutcomes(2));

    EXPECT_THAT(receivedBodies(), ElementsAre("one", "two", "three"));
}

TEST_F(DesktopNotificationsTest, ACompletionMayEndTheService) {
    startServer();
    startCenter();

    center().add({"first", {"Title", "one", false}},
                 [this](const std::expected<void, UserNotificationError>&) { stopCenter(); });
    add("second", "two");

    ASSERT_TRUE(runUntil([this] { return server().received().size() == 2; }));
    waitForTheBus();
    EXPECT_THAT(outcomes(), IsEmpty());
}

TEST_F(DesktopNotificationsTest, NobodyIsToldAfterItsEnd) {
    startServer();
    startCenter();
    askForSettings();
    add("first", "one");
    ASSERT_TRUE(runUntil([this] { return server().received().size() == 1; }));

    stopCenter();
    waitForTheBus();

    EXPECT_THAT(outcomes(), IsEmpty());
}

}  // namespace
}  // namespace velmorand::desktop

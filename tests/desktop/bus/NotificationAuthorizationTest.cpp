#include "desktop/bus/DesktopNotificationsFixture.h"
#include "platform/linux/support/RedirectedStandardError.h"

namespace velmorand::desktop {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using enum NotificationAuthorization;

const QString service = QStringLiteral("org.freedesktop.Notifications");

/// Whether notifications can be shown, in a session that is complete and in one that still comes up.
class NotificationAuthorizationTest : public DesktopNotificationsFixture {
protected:
    /// A session that has been up for long.
    static constexpr NotificationPatience over{.start = std::chrono::milliseconds{0}};

    /// Waits until the time in which a no is held back is over.
    void letTheStartEnd() {
        bool ended = false;
        const auto timer = runLoop.after(std::chrono::milliseconds{1}, [&] { ended = true; });
        ASSERT_TRUE(runUntil([&] { return ended; }));
    }
};

TEST_F(NotificationAuthorizationTest, AServerThatRunsMeansYes) {
    startServer();
    startCenter();

    askForSettings();
    EXPECT_THAT(settings(), IsEmpty());
    ASSERT_TRUE(waitForSettings(1));

    EXPECT_THAT(settings(), ElementsAre(authorized));
    EXPECT_EQ(requestAuthorization(), true);
    EXPECT_EQ(server().capabilityQuestions(), 0) << "it is not bothered";
}

TEST_F(NotificationAuthorizationTest, AServerThatTheBusCanStartMeansYesAndIsNotStarted) {
    offerService(service, "/bin/touch " + (folder() / "started").string());
    startCenter(over);

    askForSettings();
    ASSERT_TRUE(waitForSettings(1));

    EXPECT_THAT(settings(), ElementsAre(authorized));
    EXPECT_EQ(requestAuthorization(), true);
    waitForTheBus();
    EXPECT_FALSE(std::filesystem::exists(folder() / "started"));
}

TEST_F(NotificationAuthorizationTest, NoServerMeansNoOnceTheSessionIsComplete) {
    startCenter(over);
    letTheStartEnd();

    askForSettings();
    ASSERT_TRUE(waitForSettings(1));

    EXPECT_THAT(settings(), ElementsAre(denied));
    EXPECT_EQ(requestAuthorization(), false);
}

TEST_F(NotificationAuthorizationTest, AtFirstAServerIsWaitedFor) {
    startCenter();
    askForSettings();
    askForSettings();
    waitForTheBus();
    waitForTheBus();
    EXPECT_THAT(settings(), IsEmpty());

    startServer();
    ASSERT_TRUE(waitForSettings(2));

    EXPECT_THAT(settings(), ElementsAre(authorized, authorized));
    EXPECT_EQ(requestAuthorization(), true);
}

TEST_F(NotificationAuthorizationTest, WhenNoneHasComeInTimeTheAnswerIsNo) {
    startCenter({.start = moment});
    const MonotonicTime before = runLoop.now();
    askForSettings();
    ASSERT_TRUE(waitForSettings(1));

    EXPECT_THAT(settings(), ElementsAre(denied));
    EXPECT_GE(runLoop.now() - before, moment - std::chrono::milliseconds{1});
    waitForTheBus();
    EXPECT_THAT(settings(), SizeIs(1));
}

TEST_F(NotificationAuthorizationTest, OneThatComesLateCountsFromThenOn) {
    startCenter(over);
    letTheStartEnd();
    askForSettings();
    ASSERT_TRUE(waitForSettings(1));

    startServer();
    askForSettings();
    ASSERT_TRUE(waitForSettings(2));
    stopServer();
    askForSettings();
    ASSERT_TRUE(waitForSettings(3));

    EXPECT_THAT(settings(), ElementsAre(denied, authorized, denied));
}

TEST_F(NotificationAuthorizationTest, OneThatHasComeAndGoneIsWaitedForAtFirst) {
    startServer();
    startCenter();
    askForSettings();
    ASSERT_TRUE(waitForSettings(1));
    stopServer();

    askForSettings();
    waitForTheBus();
    waitForTheBus();
    ASSERT_THAT(settings(), SizeIs(1));
    startServer();
    ASSERT_TRUE(waitForSettings(2));

    EXPECT_THAT(settings(), Each(authorized));
}

TEST_F(NotificationAuthorizationTest, WithoutABusTheAnswerIsNoAtOnceAndNothingIsWritten) {
    const RedirectedStandardError errors;
    ownBus_ = QDBusConnection(QStringLiteral("none"));
    startCenter();

    askForSettings();
    EXPECT_THAT(settings(), IsEmpty());
    ASSERT_TRUE(waitForSettings(1));

    EXPECT_THAT(settings(), ElementsAre(denied));
    EXPECT_EQ(requestAuthorization(), false);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(NotificationAuthorizationTest, ABusThatEndsMeanwhileMeansNo) {
    startCenter();
    askForSettings();
    askForSettings();
    waitForTheBus();
    waitForTheBus();
    ASSERT_THAT(settings(), IsEmpty());

    bus().process().terminate();
    ASSERT_TRUE(waitForSettings(2));
    askForSettings();
    ASSERT_TRUE(waitForSettings(3));
    runPosted();

    EXPECT_THAT(settings(), ElementsAre(denied, denied, denied));
}

TEST_F(NotificationAuthorizationTest, NobodyIsToldAfterItsEnd) {
    startCenter();
    askForSettings();
    waitForTheBus();

    stopCenter();
    startServer();
    waitForTheBus();

    EXPECT_THAT(settings(), IsEmpty());
}

}  // namespace
}  // namespace velmorand::desktop

#include "desktop/bus/DesktopNotificationsFixture.h"
#include "desktop/harness/DesktopSettings.h"
#include "desktop/harness/DisplayServer.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <fstream>
#include <optional>
#include <stdexcept>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

/// Title and body are told apart in what it lays out, and nothing goes away by itself.
constexpr std::string_view dunstSettings = R"([global]
    format = "%s|%b"
    markup = full
    stack_duplicates = false
[urgency_normal]
    timeout = 0
)";

/// A notification in the server's history.
struct ClosedNotification {
    int number = 0;
    std::string message;  // what is laid out, as markup
    std::string application;
};

template <typename Outcome>
auto require(Outcome outcome) {
    if (!outcome) throw std::runtime_error(outcome.error().message);
    return std::move(*outcome);
}

/// Against a notification server as people use it, on a display of its own.
class DunstTest : public DesktopNotificationsFixture {
protected:
    DunstTest() {
        environment_ = require(makeSession(folder()));
        display_ = require(
            DisplayServer::start({.width = 800, .height = 600, .environment = environment_, .folder = folder()}));
        environment_.insert_or_assign("DISPLAY", display_->displayName());
        environment_.insert_or_assign("DBUS_SESSION_BUS_ADDRESS", bus().address());
        std::ofstream(folder() / "dunstrc") << dunstSettings;
    }

    void startDunst() {
        dunst_ = require(ChildProcess::start({.arguments = {"dunst", "-config", (folder() / "dunstrc").string()},
                                              .environment = environment_,
                                              .logFile = folder() / "dunst.log"}));
    }
    void stopDunst() { dunst_->terminate(); }
    /// The bus starts it when it is needed.
    void offerDunst() {
        offerService(service, "/usr/bin/env DISPLAY=" + display_->displayName() + " HOME=" +
                                  (folder() / "home").string() + " dunst -config " + (folder() / "dunstrc").string());
    }
    /// A new service of ours, once the server has come.
    [[nodiscard]] bool waitForServer() {
        startCenter();
        return requestAuthorization() == true;
    }

    /// How many notifications are on the display.
    [[nodiscard]] int displayed() {
        const QDBusMessage reply = ask(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                       {QStringLiteral("org.dunstproject.cmd0"), QStringLiteral("displayedLength")});
        return reply.arguments().value(0).value<QDBusVariant>().variant().toInt();
    }
    [[nodiscard]] bool comesToDisplay(int count) {
        const RunLoop::Timer again = runLoop.every(moment, [] {});
        return runUntil([&] { return displayed() == count; });
    }
    /// Takes all away from the display and tells what they were, the latest first.
    [[nodiscard]] std::vector<ClosedNotification> closeAll() {
        const QString commands = QStringLiteral("org.dunstproject.cmd0");
        ask(commands, QStringLiteral("NotificationCloseAll"), {});
        const QDBusMessage reply = ask(commands, QStringLiteral("NotificationListHistory"), {});
        std::vector<ClosedNotification> closed;
        for (const QVariantMap& entry : qdbus_cast<QList<QVariantMap>>(reply.arguments().value(0)))
            closed.push_back({.number = entry.value(QStringLiteral("id")).toInt(),
                              .message = entry.value(QStringLiteral("message")).toString().toStdString(),
                              .application = entry.value(QStringLiteral("appname")).toString().toStdString()});
        return closed;
    }

private:
    QDBusMessage ask(const QString& interface, const QString& member, const QVariantList& arguments) {
        QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, member);
        question.setArguments(arguments);
        return userBus_.call(question);
    }

    QDBusConnection userBus_ = connectToBus();
    Environment environment_;
    std::optional<DisplayServer> display_;
    std::optional<ChildProcess> dunst_;
};

TEST_F(DunstTest, TheTextsAreShownAsTheyAreWritten) {
    startDunst();
    ASSERT_TRUE(waitForServer());

    add("first", {"Salt & <b>Pepper</b>", "<i>Größe</i> & &lt;\nsecond line", true});
    ASSERT_TRUE(waitForOutcomes(1));

    EXPECT_THAT(outcomes(), ElementsAre("first: shown"));
    EXPECT_TRUE(comesToDisplay(1));
    const auto closed = closeAll();
    ASSERT_THAT(closed, SizeIs(1));
    EXPECT_EQ(closed[0].message,
              "Salt &amp; &lt;b&gt;Pepper&lt;/b&gt;|&lt;i&gt;Größe&lt;/i&gt; &amp; &amp;lt;\nsecond line");
    EXPECT_EQ(closed[0].application, "Velmorand");
}

TEST_F(DunstTest, ALaterOneTakesThePlaceOfTheEarlier) {
    startDunst();
    ASSERT_TRUE(waitForServer());

    add("first", "one");
    add("second", "two");
    add("first", "three");
    ASSERT_TRUE(waitForOutcomes(3));

    EXPECT_TRUE(comesToDisplay(2));
    const auto closed = closeAll();
    ASSERT_THAT(closed, SizeIs(2));
    EXPECT_NE(closed[0].number, closed[1].number);
    EXPECT_THAT((std::vector{closed[0].message, closed[1].message}),
                testing::UnorderedElementsAre("Title|two", "Title|three"));
}

TEST_F(DunstTest, OneThatWasTakenAwayIsShownAnew) {
    startDunst();
    ASSERT_TRUE(waitForServer());
    show("first", "one");
    ASSERT_TRUE(comesToDisplay(1));
    ASSERT_THAT(closeAll(), SizeIs(1));
    waitForTheBus();

    show("first", "two");

    EXPECT_TRUE(comesToDisplay(1));
    EXPECT_THAT(closeAll(), SizeIs(2));
}

TEST_F(DunstTest, AnotherRunOfItShowsWhatComesThen) {
    startDunst();
    ASSERT_TRUE(waitForServer());
    show("first", "one");

    stopDunst();
    startDunst();
    ASSERT_EQ(requestAuthorization(), true);
    show("first", "two");

    EXPECT_TRUE(comesToDisplay(1));
}

TEST_F(DunstTest, TheBusStartsItForTheFirstNotification) {
    offerDunst();
    startCenter();

    show("first", "one");

    EXPECT_TRUE(comesToDisplay(1));
}

}  // namespace
}  // namespace velmorand::desktop

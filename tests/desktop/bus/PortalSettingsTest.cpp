#include "platform/linux/PortalSettings.h"

#include "desktop/bus/BusTest.h"
#include "platform/linux/support/RedirectedStandardError.h"

#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <map>
#include <memory>
#include <utility>

namespace velmorand::desktop {
namespace {

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString reducedMotion = QStringLiteral("reduced-motion");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QVariant wantsLess(quint32{1});
const QVariant noPreference(quint32{0});

/// The settings part of a portal. It goes when the object dies.
class FakePortal final : public QDBusVirtualObject {
public:
    using Values = std::map<std::pair<QString, QString>, QVariant>;

    FakePortal(const QDBusConnection& bus, Values values) : bus_(bus), values_(std::move(values)) {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(service);
    }
    ~FakePortal() override {
        bus_.unregisterService(service);
        bus_.unregisterObject(path);
    }

    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    /// Changes a setting and tells so.
    void set(const QString& group, const QString& key, const QVariant& value) {
        values_[{group, key}] = value;
        sendSignal(bus_, {group, key, QVariant::fromValue(QDBusVariant(value))});
    }
    /// What anybody on the bus may send.
    static void sendSignal(const QDBusConnection& bus, const QVariantList& arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
        signal.setArguments(arguments);
        bus.send(signal);
    }

    [[nodiscard]] int questions() const { return questions_; }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() != interface || message.member() != QStringLiteral("Read")) return false;
        ++questions_;
        const auto found = values_.find({message.arguments()[0].toString(), message.arguments()[1].toString()});
        if (found == values_.end())
            return connection.send(message.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                                            QStringLiteral("Requested setting not found")));
        const QVariant boxed = QVariant::fromValue(QDBusVariant(found->second));
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(boxed))));
    }

private:
    QDBusConnection bus_;
    Values values_;
    int questions_ = 0;
};

class PortalSettingsTest : public BusTest {
protected:
    ~PortalSettingsTest() override {
        settings_.reset();
        portal_.reset();
    }

    void startPortal(FakePortal::Values values) {
        portal_.reset();
        portal_ = std::make_unique<FakePortal>(portalBus_, std::move(values));
    }
    void follow() { settings_ = std::make_unique<PortalSettings>(ownBus_); }

    [[nodiscard]] std::optional<bool> reducesMotion() { return settings_->reducesMotion(); }
    /// Waits until the platform has heard of it.
    [[nodiscard]] bool comesToReduce(std::optional<bool> expected) {
        return runUntil([&] { return reducesMotion() == expected; });
    }
    /// Waits until everything asked so far is answered, and the answers have arrived.
    void waitForAnswers(int questions) {
        ASSERT_TRUE(runUntil([&] { return portal_->questions() >= questions; }));
        bool arrived = false;
        QDBusMessage ping = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Peer"),
                                                           QStringLiteral("Ping"));
        QDBusPendingCallWatcher answer(ownBus_.asyncCall(ping));
        QObject::connect(&answer, &QDBusPendingCallWatcher::finished, [&] { arrived = true; });
        ASSERT_TRUE(runUntil([&] { return arrived; }));
    }

    QDBusConnection portalBus_ = connectToBus();
    QDBusConnection ownBus_ = connectToBus();
    std::unique_ptr<FakePortal> portal_;
    std::unique_ptr<PortalSettings> settings_;
};

TEST_F(PortalSettingsTest, NothingIsSaidBeforeAnAnswerHasCome) {
    startPortal({{{appearance, reducedMotion}, wantsLess}});
    follow();
    EXPECT_EQ(reducesMotion(), std::nullopt);

    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(PortalSettingsTest, EitherSettingReducesMotion) {
    startPortal({{{appearance, reducedMotion}, wantsLess}, {{gnome, animations}, true}});
    follow();
    EXPECT_TRUE(comesToReduce(true));

    startPortal({{{appearance, reducedMotion}, noPreference}, {{gnome, animations}, false}});
    follow();
    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(PortalSettingsTest, AnimationsThatAreOnMeanThatMotionIsWelcome) {
    startPortal({{{gnome, animations}, true}});
    follow();
    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(PortalSettingsTest, NoPreferenceLeavesItOpen) {
    startPortal({{{appearance, reducedMotion}, noPreference}});
    follow();
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), std::nullopt);
}

TEST_F(PortalSettingsTest, ValuesOfOtherTypesSayNothing) {
    startPortal({{{appearance, reducedMotion}, QStringLiteral("1")}, {{gnome, animations}, 0}});
    follow();
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), std::nullopt);
}

TEST_F(PortalSettingsTest, APortalThatKnowsNeitherSettingSaysNothing) {
    startPortal({});
    follow();
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), std::nullopt);
}

TEST_F(PortalSettingsTest, ChangesAreFollowed) {
    startPortal({{{gnome, animations}, true}});
    follow();
    ASSERT_TRUE(comesToReduce(false));

    portal_->set(gnome, animations, false);
    EXPECT_TRUE(comesToReduce(true));

    portal_->set(gnome, animations, true);
    EXPECT_TRUE(comesToReduce(false));

    portal_->set(appearance, reducedMotion, wantsLess);
    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(PortalSettingsTest, ChangesOfOtherSettingsDoNotMatter) {
    startPortal({{{gnome, animations}, true}});
    follow();
    ASSERT_TRUE(comesToReduce(false));

    portal_->set(appearance, QStringLiteral("color-scheme"), wantsLess);
    portal_->set(gnome, reducedMotion, wantsLess);
    portal_->set(QStringLiteral("org.example"), animations, false);
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), false);
}

TEST_F(PortalSettingsTest, SignalsThatAreNotAsTheyShouldBeDoNotMatter) {
    startPortal({{{gnome, animations}, true}});
    follow();
    ASSERT_TRUE(comesToReduce(false));

    FakePortal::sendSignal(portalBus_, {});
    FakePortal::sendSignal(portalBus_, {gnome, animations});
    FakePortal::sendSignal(portalBus_, {gnome, animations, QVariant::fromValue(QDBusVariant(false)), 1});
    FakePortal::sendSignal(portalBus_, {1, 2, QVariant::fromValue(QDBusVariant(false))});
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), false);
}

TEST_F(PortalSettingsTest, SignalsOfOtherProgramsDoNotMatter) {
    startPortal({{{gnome, animations}, true}});
    follow();
    ASSERT_TRUE(comesToReduce(false));
    QDBusConnection other = connectToBus();

    FakePortal::sendSignal(other, {gnome, animations, QVariant::fromValue(QDBusVariant(false))});
    other.interface()->isServiceRegistered(service);  // answered: the signal has been passed on
    waitForAnswers(2);

    EXPECT_EQ(reducesMotion(), false);
}

TEST_F(PortalSettingsTest, APortalThatComesLaterIsAskedThen) {
    follow();
    ASSERT_EQ(reducesMotion(), std::nullopt);

    startPortal({{{gnome, animations}, false}});
    EXPECT_TRUE(comesToReduce(true));

    portal_->set(gnome, animations, true);
    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(PortalSettingsTest, APortalThatGoesTakesItsSettingsWithIt) {
    startPortal({{{gnome, animations}, false}});
    follow();
    ASSERT_TRUE(comesToReduce(true));

    portal_.reset();
    EXPECT_TRUE(comesToReduce(std::nullopt));

    startPortal({{{gnome, animations}, true}});
    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(PortalSettingsTest, APortalThatTakesTheNameFromAnotherIsFollowed) {
    QDBusConnectionInterface& first = *portalBus_.interface();
    startPortal({{{gnome, animations}, false}});
    first.unregisterService(service);
    first.registerService(service, QDBusConnectionInterface::DontQueueService,
                          QDBusConnectionInterface::AllowReplacement);
    follow();
    ASSERT_TRUE(comesToReduce(true));

    const QDBusConnection otherBus = connectToBus();
    FakePortal successor(otherBus, {{{gnome, animations}, true}});
    otherBus.interface()->registerService(service, QDBusConnectionInterface::ReplaceExistingService);
    EXPECT_TRUE(comesToReduce(false));

    successor.set(gnome, animations, false);
    EXPECT_TRUE(comesToReduce(true)) << "its signals count";
    portal_->set(gnome, animations, true);
    runPosted();
    EXPECT_EQ(reducesMotion(), true) << "those of the earlier one do not";
}

TEST_F(PortalSettingsTest, APortalThatLearnsOfASettingLaterIsHeard) {
    startPortal({});
    follow();
    waitForAnswers(2);
    EXPECT_EQ(reducesMotion(), std::nullopt);

    portal_->set(gnome, animations, false);
    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(PortalSettingsTest, WithoutABusNothingIsSaidAndNothingWritten) {
    const RedirectedStandardError errors;
    PortalSettings settings(QDBusConnection(QStringLiteral("none")));
    runPosted();

    EXPECT_EQ(settings.reducesMotion(), std::nullopt);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PortalSettingsTest, WithoutAPortalNothingIsWritten) {
    const RedirectedStandardError errors;
    follow();
    ASSERT_TRUE(ownBus_.interface()->isServiceRegistered(ownBus_.baseService()));
    runPosted();

    EXPECT_EQ(reducesMotion(), std::nullopt);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PortalSettingsTest, ABusThatEndsTakesTheSettingsWithItQuietly) {
    startPortal({{{gnome, animations}, false}});
    follow();
    ASSERT_TRUE(comesToReduce(true));

    bus().process().terminate();

    EXPECT_TRUE(runUntil([this] { return !ownBus_.isConnected(); }));
    runPosted();
    EXPECT_EQ(reducesMotion(), std::nullopt);
}

/// No call waits for the bus, not even the first.
TEST_F(PortalSettingsTest, NobodyWaitsForABusThatDoesNotAnswer) {
    startPortal({{{gnome, animations}, false}});
    bus().process().freeze();
    const MonotonicTime before = runLoop.now();

    follow();
    EXPECT_EQ(reducesMotion(), std::nullopt);
    runPosted();

    EXPECT_LT(runLoop.now() - before, std::chrono::seconds(2));
    bus().process().thaw();
    EXPECT_TRUE(comesToReduce(true));
}

}  // namespace
}  // namespace velmorand::desktop

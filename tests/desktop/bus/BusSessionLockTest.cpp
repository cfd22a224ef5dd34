#include "platform/linux/BusSessionLock.h"

#include "desktop/bus/BusTest.h"
#include "platform/linux/support/RedirectedStandardError.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <memory>
#include <string>

namespace velmorand::desktop {
namespace {

const QString loginSession = QStringLiteral("org.freedesktop.login1.Session");
const QString screenSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString gnomeScreenSaver = QStringLiteral("org.gnome.ScreenSaver");
const QString activeChanged = QStringLiteral("ActiveChanged");

/// One bus plays the session bus, another one the system bus.
class BusSessionLockTest : public BusTest {
protected:
    ~BusSessionLockTest() override { lock_.reset(); }

    void follow() {
        lock_ = std::make_unique<BusSessionLock>(ownBus_, ownSystemBus_);
        subscription_ = lock_->whenLocked([this] { ++locks_; });
        // Answered: what was asked for before is in force.
        ASSERT_TRUE(ownBus_.interface()->isServiceRegistered(ownBus_.baseService()));
        ASSERT_TRUE(ownSystemBus_.interface()->isServiceRegistered(ownSystemBus_.baseService()));
    }
    static void send(const QDBusConnection& bus, const QString& interface, const QString& name,
                     const QVariantList& arguments, const QString& path = QStringLiteral("/org/example/Place")) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(arguments);
        bus.send(signal);
    }
    [[nodiscard]] bool comesTo(int locks) {
        return runUntil([&] { return locks_ >= locks; }) && locks_ == locks;
    }

    QDBusConnection others_ = connectToBus();
    QDBusConnection ownBus_ = connectToBus();
    QDBusConnection ownSystemBus_ = connectToBus();
    std::unique_ptr<BusSessionLock> lock_;
    Subscription subscription_;
    int locks_ = 0;
};

TEST_F(BusSessionLockTest, TheLoginServicesSignalIsTold) {
    follow();

    send(others_, loginSession, QStringLiteral("Lock"), {}, QStringLiteral("/org/freedesktop/login1/session/_31"));

    EXPECT_TRUE(comesTo(1));
}

TEST_F(BusSessionLockTest, AScreenSaverThatBecomesActiveIsTold) {
    follow();

    send(others_, screenSaver, activeChanged, {true});
    EXPECT_TRUE(comesTo(1));
    send(others_, gnomeScreenSaver, activeChanged, {true});
    EXPECT_TRUE(comesTo(2));
}

TEST_F(BusSessionLockTest, OtherSignalsAreNotTold) {
    follow();

    send(others_, loginSession, QStringLiteral("Unlock"), {});
    send(others_, screenSaver, activeChanged, {false});
    send(others_, screenSaver, activeChanged, {});
    send(others_, screenSaver, activeChanged, {1});
    send(others_, screenSaver, activeChanged, {QStringLiteral("true")});
    send(others_, screenSaver, activeChanged, {true, true});
    send(others_, QStringLiteral("org.example.ScreenSaver"), activeChanged, {true});
    send(others_, gnomeScreenSaver, activeChanged, {true});  // the last one, which counts

    EXPECT_TRUE(comesTo(1));
}

TEST_F(BusSessionLockTest, NobodyIsToldAfterTheEndOfTheSubscription) {
    follow();
    int others = 0;
    const Subscription other = lock_->whenLocked([&] { ++others; });
    subscription_.cancel();

    send(others_, screenSaver, activeChanged, {true});

    EXPECT_TRUE(runUntil([&] { return others == 1; }));
    EXPECT_EQ(locks_, 0);
}

TEST_F(BusSessionLockTest, ASubscriptionMayEndWhileItIsTold) {
    follow();
    Subscription other = lock_->whenLocked([] {});
    Subscription ending = lock_->whenLocked([&] {
        ending.cancel();
        other.cancel();
    });

    send(others_, screenSaver, activeChanged, {true});
    send(others_, screenSaver, activeChanged, {true});

    EXPECT_TRUE(comesTo(2));
}

TEST_F(BusSessionLockTest, ASubscriptionMayOutliveTheLock) {
    follow();
    lock_.reset();
    subscription_.cancel();
}

TEST_F(BusSessionLockTest, WithoutABusNothingIsToldAndNothingWritten) {
    const RedirectedStandardError errors;
    BusSessionLock lock(QDBusConnection(QStringLiteral("none")), QDBusConnection(QStringLiteral("neither")));
    const Subscription subscription = lock.whenLocked([this] { ++locks_; });
    runPosted();

    EXPECT_EQ(locks_, 0);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(BusSessionLockTest, NobodyWaitsForABusThatDoesNotAnswer) {
    bus().process().freeze();
    const MonotonicTime before = runLoop.now();

    const BusSessionLock lock(ownBus_, ownSystemBus_);
    runPosted();

    EXPECT_LT(runLoop.now() - before, std::chrono::seconds(2));
    bus().process().thaw();
}

}  // namespace
}  // namespace velmorand::desktop

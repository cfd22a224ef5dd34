#include "platform/linux/ApplicationService.h"

#include "desktop/bus/BusTest.h"
#include "platform/linux/support/ScopedEnvironment.h"

#include <gmock/gmock.h>

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Token = std::optional<std::string>;

/// The program's object on the bus, and somebody who calls it.
class ApplicationServiceTest : public BusTest {
protected:
    ApplicationServiceTest() {
        if (!bus_ || !bus_->takeName().value_or(false)) throw std::runtime_error("the name cannot be had");
        service_ = std::make_unique<ApplicationService>(*bus_, runLoop, [this](const Token& token) {
            told_.push_back(token);
            return accepts_;
        });
    }

    [[nodiscard]] QDBusPendingCall call(const QString& method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral(VELMORAND_IDENTIFIER), QStringLiteral("/app/velmorand/Velmorand"), interface_, method);
        message.setArguments(arguments);
        return caller_.asyncCall(message);
    }
    /// What comes back.
    [[nodiscard]] QDBusMessage answerTo(const QString& method, const QVariantList& arguments) {
        const QDBusPendingCall pending = call(method, arguments);
        EXPECT_TRUE(comes(pending));
        return pending.reply();
    }
    [[nodiscard]] bool comes(const QDBusPendingCall& pending) {
        const RunLoop::Timer wakeUp = runLoop.every(std::chrono::milliseconds{5}, [] {});
        return runUntil([&] { return pending.isFinished(); });
    }

    QString interface_ = QStringLiteral("org.freedesktop.Application");
    QDBusConnection caller_ = connectToBus();
    ScopedEnvironment address_{"DBUS_SESSION_BUS_ADDRESS", bus().address()};
    std::expected<EarlyBus, EarlyBus::Trouble> bus_ = EarlyBus::connect();
    std::unique_ptr<ApplicationService> service_;
    std::vector<Token> told_;
    bool accepts_ = true;
};

TEST_F(ApplicationServiceTest, AnswersAnActivationWhenItHasBeenTold) {
    service_->start();

    const QDBusMessage answer = answerTo(QStringLiteral("Activate"), {QVariantMap()});

    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    EXPECT_THAT(told_, ElementsAre(std::nullopt));
}

TEST_F(ApplicationServiceTest, FindsTheTokenAmongWhatTheDesktopGives) {
    service_->start();
    const QVariantMap rest{{QStringLiteral("a number"), 1},
                           {QStringLiteral("z list"), QStringList{QStringLiteral("token")}}};
    QVariantMap newer = rest;
    newer[QStringLiteral("activation-token")] = QStringLiteral("token-1");
    QVariantMap both = newer;
    both[QStringLiteral("desktop-startup-id")] = QStringLiteral("launcher-1_TIME42");
    QVariantMap wrong = rest;
    wrong[QStringLiteral("activation-token")] = 3;
    wrong[QStringLiteral("desktop-startup-id")] = QStringLiteral("two\nlines");

    for (const QVariantMap& data : {newer, both, wrong})
        EXPECT_EQ(answerTo(QStringLiteral("Activate"), {data}).type(), QDBusMessage::ReplyMessage);

    EXPECT_THAT(told_, ElementsAre("token-1", "launcher-1_TIME42", std::nullopt));
}

TEST_F(ApplicationServiceTest, WhatCameBeforeItsStartWaitsForIt) {
    const QDBusPendingCall pending = call(QStringLiteral("Activate"), {QVariantMap()});
    caller_.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    runPosted();
    EXPECT_THAT(told_, IsEmpty());

    service_->start();

    EXPECT_TRUE(comes(pending));
    EXPECT_FALSE(pending.isError());
    EXPECT_THAT(told_, ElementsAre(std::nullopt));
}

TEST_F(ApplicationServiceTest, WhoCallsAnApplicationThatIsAboutToEndLearnsThatNobodyIsThereAnyMore) {
    accepts_ = false;
    service_->start();
    const QDBusPendingCall pending = call(QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_TRUE(runUntil([this] { return told_.size() == 1; }));
    runPosted();
    EXPECT_FALSE(pending.isFinished());

    service_.reset();
    bus_ = std::unexpected(EarlyBus::Trouble::absent);

    EXPECT_TRUE(comes(pending));
    EXPECT_EQ(pending.error().type(), QDBusError::NoReply);
}

TEST_F(ApplicationServiceTest, SaysThatItOpensNoFilesAndHasNoActions) {
    service_->start();

    const QDBusMessage open =
        answerTo(QStringLiteral("Open"), {QStringList{QStringLiteral("file:///etc/hosts")}, QVariantMap()});
    const QDBusMessage action =
        answerTo(QStringLiteral("ActivateAction"), {QStringLiteral("left"), QVariantList(), QVariantMap()});
    const QDBusMessage unknown = answerTo(QStringLiteral("Close"), {});
    const QDBusMessage wrong = answerTo(QStringLiteral("Activate"), {QStringLiteral("now")});

    EXPECT_EQ(open.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NotSupported"));
    EXPECT_EQ(open.errorMessage(), QStringLiteral("Velmorand opens no files."));
    EXPECT_EQ(action.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NotSupported"));
    EXPECT_EQ(action.errorMessage(), QStringLiteral("Velmorand has no such action."));
    EXPECT_EQ(unknown.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
    EXPECT_EQ(wrong.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(ApplicationServiceTest, DescribesItself) {
    service_->start();
    interface_ = QStringLiteral("org.freedesktop.DBus.Introspectable");

    const QDBusMessage answer = answerTo(QStringLiteral("Introspect"), {});

    const std::string description = answer.arguments().value(0).toString().toStdString();
    EXPECT_THAT(description, testing::HasSubstr("<interface name=\"org.freedesktop.Application\">"));
    EXPECT_THAT(description, testing::HasSubstr("<method name=\"ActivateAction\">"));
}

}  // namespace
}  // namespace velmorand::desktop

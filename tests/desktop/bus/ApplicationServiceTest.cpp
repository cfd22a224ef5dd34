#include "platform/linux/ApplicationService.h"

#include "desktop/bus/BusTest.h"
#include "platform/linux/support/ScopedEnvironment.h"

#include <gmock/gmock.h>

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>
#include <functional>
#include <future>
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
        service_ = std::make_unique<ApplicationService>(
            *bus_, runLoop,
            [this] {
                ++asked_;
                return canReopen_;
            },
            [this](const Token& token) {
                told_.push_back(token);
                reopened_();
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
    /// Returns when all calls have reached the connection of the service.
    void letBusDeliver() {
        caller_.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    }
    /// The platform's data with this token; without any when it is empty.
    [[nodiscard]] static QVariantMap withToken(const char* token) {
        const QString text = QString::fromUtf8(token);
        return text.isEmpty() ? QVariantMap() : QVariantMap{{QStringLiteral("activation-token"), text}};
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
    int asked_ = 0;
    bool canReopen_ = true;
    std::function<void()> reopened_ = [] {};
};

TEST_F(ApplicationServiceTest, AnswersAnActivationAndTellsOfIt) {
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
    letBusDeliver();
    runPosted();
    EXPECT_THAT(told_, IsEmpty());

    service_->start();

    EXPECT_TRUE(comes(pending));
    EXPECT_FALSE(pending.isError());
    EXPECT_THAT(told_, ElementsAre(std::nullopt));
}

TEST_F(ApplicationServiceTest, ATokenThatTheBusDoesNotTakeDoesNotKeepACallerFromCalling) {
    service_->start();
    std::future<EarlyBus::Outcome> outcome = std::async(std::launch::async, [] {
        auto caller = EarlyBus::connect();
        if (!caller) return EarlyBus::Outcome::busIsSilent;
        const auto owner = caller->owner();
        return owner && *owner ? caller->activate(**owner, {.activationToken = "\uFFFE"}) : EarlyBus::Outcome::gone;
    });

    EXPECT_TRUE(runUntil([this] { return !told_.empty(); }));

    EXPECT_EQ(outcome.get(), EarlyBus::Outcome::answered);
    EXPECT_THAT(told_, ElementsAre(std::nullopt));
}

TEST_F(ApplicationServiceTest, ACallerDoesNotWaitForWhatTheReopeningTakes) {
    service_->start();
    std::optional<QDBusPendingCall> pending;
    bool isAnswered = false;
    reopened_ = [&] {
        pending->waitForFinished();
        isAnswered = !pending->isError();
    };

    pending = call(QStringLiteral("Activate"), {QVariantMap()});

    EXPECT_TRUE(runUntil([this] { return !told_.empty(); }));
    EXPECT_TRUE(isAnswered);
}

TEST_F(ApplicationServiceTest, CallersThatWaitTogetherShareOneReopening) {
    std::vector<QDBusPendingCall> pending;
    for (const char* token : {"token-1", "token-2", ""})
        pending.push_back(call(QStringLiteral("Activate"), {withToken(token)}));
    letBusDeliver();

    service_->start();

    for (const QDBusPendingCall& each : pending) {
        EXPECT_TRUE(comes(each));
        EXPECT_FALSE(each.isError());
    }
    EXPECT_THAT(told_, ElementsAre("token-2"));
}

TEST_F(ApplicationServiceTest, ManyCallersDoNotKeepEverythingElseWaiting) {
    std::vector<QDBusPendingCall> pending;
    for (std::size_t count = 0; count < 3 * ApplicationService::mostMessagesAtOnce; ++count)
        pending.push_back(call(QStringLiteral("Activate"), {QVariantMap()}));
    letBusDeliver();

    service_->start();

    EXPECT_TRUE(comes(pending.back()));
    EXPECT_GT(told_.size(), 1U) << "turns";
    for (const QDBusPendingCall& each : pending) EXPECT_TRUE(each.isFinished() && !each.isError());
}

TEST_F(ApplicationServiceTest, WhoCallsAnApplicationThatIsAboutToEndLearnsThatNobodyIsThereAnyMore) {
    canReopen_ = false;
    service_->start();
    const QDBusPendingCall pending = call(QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_TRUE(runUntil([this] { return asked_ == 1; }));
    runPosted();
    EXPECT_FALSE(pending.isFinished());
    EXPECT_THAT(told_, IsEmpty());

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

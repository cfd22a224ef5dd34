#pragma once

#include "desktop/bus/BusTest.h"
#include "desktop/bus/FakeNotificationServer.h"
#include "platform/linux/DesktopNotifications.h"

#include <gmock/gmock.h>

#include <QDBusPendingCallWatcher>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmorand::desktop {

/// Notifications on a bus with a server that the test plays, or none.
class DesktopNotificationsFixture : public BusTest {
protected:
    /// Short where a test waits until patience has ended.
    static constexpr std::chrono::milliseconds moment{100};

    ~DesktopNotificationsFixture() override {
        center_.reset();
        server_.reset();
    }

    void startServer(const QStringList& capabilities = {QStringLiteral("body")}) {
        server_ = std::make_unique<FakeNotificationServer>(connectToBus(), capabilities);
    }
    /// As when its program ends.
    void stopServer() {
        QDBusConnection connection = server_->bus();
        server_.reset();
        disconnect(std::move(connection));
    }
    [[nodiscard]] FakeNotificationServer& server() { return *server_; }

    void startCenter(NotificationPatience times = {}) {
        center_ = std::make_unique<DesktopNotifications>(ownBus_, runLoop, "org.example.Program", times);
    }
    /// Ends it, with what it has not told yet.
    void stopCenter() { center_.reset(); }
    [[nodiscard]] DesktopNotifications& center() { return *center_; }

    /// Adds it and keeps the outcome.
    void add(const std::string& identifier, UserNotificationContent content) {
        center_->add({identifier, std::move(content)},
                     [this, identifier](const std::expected<void, UserNotificationError>& result) {
                         outcomes_.push_back(identifier + ": " + (result ? "shown" : result.error().description));
                     });
    }
    void add(const std::string& identifier, const std::string& body) { add(identifier, {"Title", body, false}); }
    /// Adds it and waits for the outcome, which must be that it is shown.
    void show(const std::string& identifier, const std::string& body) {
        const std::size_t before = outcomes_.size();
        add(identifier, body);
        ASSERT_TRUE(waitForOutcomes(before + 1));
        ASSERT_EQ(outcomes_.back(), identifier + ": shown");
    }
    [[nodiscard]] bool waitForOutcomes(std::size_t count) {
        return runUntil([&] { return outcomes_.size() >= count; });
    }
    /// How each request ended, in the order in which that was told: "identifier: shown" or the error's sentence.
    [[nodiscard]] const std::vector<std::string>& outcomes() const { return outcomes_; }

    void forgetOutcomes() { outcomes_.clear(); }

    /// Asks for the settings and keeps the answer.
    void askForSettings() {
        center_->notificationSettings([this](NotificationAuthorization answer) { settings_.push_back(answer); });
    }
    [[nodiscard]] bool waitForSettings(std::size_t count) {
        return runUntil([&] { return settings_.size() >= count; });
    }
    [[nodiscard]] const std::vector<NotificationAuthorization>& settings() const { return settings_; }
    /// The answer to a request for authorization.
    [[nodiscard]] std::optional<bool> requestAuthorization() {
        std::optional<bool> answer;
        center_->requestAuthorization({.alert = true, .sound = true}, [&](bool granted) { answer = granted; });
        EXPECT_EQ(answer, std::nullopt);
        return runUntil([&] { return answer.has_value(); }) ? answer : std::nullopt;
    }

    /// What the server has received so far has been answered, and everything that anybody else has sent has arrived.
    void waitForTheBus() {
        bool arrived = false;
        QDBusMessage question =
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
        QDBusPendingCallWatcher answer(ownBus_.asyncCall(question));
        QObject::connect(&answer, &QDBusPendingCallWatcher::finished, [&] { arrived = true; });
        ASSERT_TRUE(runUntil([&] { return arrived; }));
        runPosted();
    }

    QDBusConnection ownBus_ = connectToBus();

private:
    std::unique_ptr<FakeNotificationServer> server_;
    std::unique_ptr<DesktopNotifications> center_;
    std::vector<std::string> outcomes_;
    std::vector<NotificationAuthorization> settings_;
};

}  // namespace velmorand::desktop

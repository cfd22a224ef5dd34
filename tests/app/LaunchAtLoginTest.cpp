#include "app/LaunchAtLogin.h"

#include "platform/simulated/SimulatedLoginItemService.h"

#include <gtest/gtest.h>

#include <expected>
#include <ostream>
#include <string>

namespace velmorand {

void PrintTo(const LaunchAtLoginError& error, std::ostream* out) {
    *out << (error.which == LaunchAtLoginError::Case::service ? "service: " : "unavailable: ") << error.description;
}

namespace {

using Outcome = std::expected<void, LaunchAtLoginError>;

constexpr auto notRegistered = LoginItemStatus::notRegistered;
constexpr auto enabled = LoginItemStatus::enabled;
constexpr auto requiresApproval = LoginItemStatus::requiresApproval;
constexpr auto notFound = LoginItemStatus::notFound;
constexpr auto other = LoginItemStatus::other;

const Outcome unavailable = std::unexpected(LaunchAtLoginError{
    LaunchAtLoginError::Case::unavailable, "Launch at Login is unavailable for this copy of the app."});

Outcome failureOfService(std::string description) {
    return std::unexpected(LaunchAtLoginError{LaunchAtLoginError::Case::service, std::move(description)});
}

struct StatusRow {
    const char* name;
    LoginItemStatus service;
    LaunchAtLoginStatus expected;
    bool isShownAsOn;
};

void PrintTo(const StatusRow& row, std::ostream* out) {
    *out << row.name;
}

class LaunchAtLoginStatusTest : public testing::TestWithParam<StatusRow> {};

TEST_P(LaunchAtLoginStatusTest, FollowsFromTheServices) {
    SimulatedLoginItemService service;
    service.setStatus(GetParam().service);

    EXPECT_EQ(LaunchAtLogin(service).currentStatus(), GetParam().expected);
    EXPECT_EQ(isShownAsOn(LaunchAtLogin(service).currentStatus()), GetParam().isShownAsOn);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LaunchAtLoginStatusTest,
    testing::Values(StatusRow{"Enabled", enabled, LaunchAtLoginStatus::enabled, true},
                    StatusRow{"NotRegistered", notRegistered, LaunchAtLoginStatus::disabled, false},
                    StatusRow{"RequiresApproval", requiresApproval, LaunchAtLoginStatus::requiresApproval, true},
                    StatusRow{"NotFound", notFound, LaunchAtLoginStatus::unavailable, false},
                    StatusRow{"Other", other, LaunchAtLoginStatus::unavailable, false}),
    [](const auto& row) { return row.param.name; });

/// What a switch does to a service in each status: what it answers, and which of the two operations it calls.
struct SwitchRow {
    const char* name;
    bool wanted;
    LoginItemStatus before;
    Outcome outcome;
    int registrations;
    int unregistrations;
    LoginItemStatus after;
};

void PrintTo(const SwitchRow& row, std::ostream* out) {
    *out << row.name;
}

class LaunchAtLoginSwitchTest : public testing::TestWithParam<SwitchRow> {};

TEST_P(LaunchAtLoginSwitchTest, BringsTheServiceToTheWantedState) {
    SimulatedLoginItemService service;
    service.setStatus(GetParam().before);

    EXPECT_EQ(LaunchAtLogin(service).setEnabled(GetParam().wanted), GetParam().outcome);

    EXPECT_EQ(service.registrations(), GetParam().registrations);
    EXPECT_EQ(service.unregistrations(), GetParam().unregistrations);
    EXPECT_EQ(service.status(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LaunchAtLoginSwitchTest,
    testing::Values(SwitchRow{"OnWhenEnabledDoesNothing", true, enabled, {}, 0, 0, enabled},
                    SwitchRow{"OnWhenNotRegisteredRegisters", true, notRegistered, {}, 1, 0, enabled},
                    SwitchRow{"OnWhileApprovalIsPendingRegistersAgain", true, requiresApproval, {}, 1, 0, enabled},
                    SwitchRow{"OnWhenNotFoundIsUnavailable", true, notFound, unavailable, 0, 0, notFound},
                    SwitchRow{"OnInAnyOtherStatusIsUnavailable", true, other, unavailable, 0, 0, other},
                    SwitchRow{"OffWhenEnabledUnregisters", false, enabled, {}, 0, 1, notRegistered},
                    SwitchRow{"OffWhileApprovalIsPendingUnregisters", false, requiresApproval, {}, 0, 1, notRegistered},
                    SwitchRow{"OffWhenNotRegisteredDoesNothing", false, notRegistered, {}, 0, 0, notRegistered},
                    SwitchRow{"OffWhenNotFoundDoesNothing", false, notFound, {}, 0, 0, notFound},
                    SwitchRow{"OffInAnyOtherStatusIsUnavailable", false, other, unavailable, 0, 0, other}),
    [](const auto& row) { return row.param.name; });

class LaunchAtLoginTest : public testing::Test {
protected:
    SimulatedLoginItemService service;
    LaunchAtLogin launchAtLogin{service};
};

TEST_F(LaunchAtLoginTest, GivesTheServicesOwnErrorFromRegisteringUnchanged) {
    service.setRegisterFailure(LoginItemError{"The disk is full, \"%s\"."});

    EXPECT_EQ(launchAtLogin.setEnabled(true), failureOfService("The disk is full, \"%s\"."));
    EXPECT_EQ(launchAtLogin.currentStatus(), LaunchAtLoginStatus::disabled);
}

TEST_F(LaunchAtLoginTest, GivesTheServicesOwnErrorFromUnregisteringUnchanged) {
    service.setStatus(requiresApproval);
    service.setUnregisterFailure(LoginItemError{""});

    EXPECT_EQ(launchAtLogin.setEnabled(false), failureOfService(""));
    EXPECT_EQ(launchAtLogin.currentStatus(), LaunchAtLoginStatus::requiresApproval);
}

TEST_F(LaunchAtLoginTest, SucceedsWhenTheSystemStillAsksItsUser) {
    service.setStatusAfterRegistration(requiresApproval);

    EXPECT_EQ(launchAtLogin.setEnabled(true), Outcome());

    EXPECT_EQ(launchAtLogin.currentStatus(), LaunchAtLoginStatus::requiresApproval);
    EXPECT_EQ(launchAtLogin.setEnabled(true), Outcome());
    EXPECT_EQ(service.registrations(), 2);
}

TEST_F(LaunchAtLoginTest, ReadsTheStatusAnewAtEveryCall) {
    EXPECT_EQ(service.statusReadings(), 0);
    EXPECT_EQ(launchAtLogin.currentStatus(), LaunchAtLoginStatus::disabled);

    service.setStatus(enabled);
    EXPECT_EQ(launchAtLogin.currentStatus(), LaunchAtLoginStatus::enabled);

    service.setStatus(notFound);
    EXPECT_EQ(launchAtLogin.setEnabled(true), unavailable);
    EXPECT_EQ(service.statusReadings(), 3);
}

TEST_F(LaunchAtLoginTest, DoesNotRememberAnError) {
    service.setRegisterFailure(LoginItemError{"No."});
    EXPECT_FALSE(launchAtLogin.setEnabled(true));
    service.setRegisterFailure(std::nullopt);

    EXPECT_EQ(launchAtLogin.setEnabled(true), Outcome());
}

TEST_F(LaunchAtLoginTest, OpensTheSystemsSettings) {
    launchAtLogin.openLoginItemsSettings();

    EXPECT_EQ(service.openedSettings(), 1);
    EXPECT_EQ(service.registrations() + service.unregistrations(), 0);
}

}  // namespace
}  // namespace velmorand

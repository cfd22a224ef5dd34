#include "platform/simulated/SimulatedLoginItemService.h"

#include "support/Expected.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmorand {
namespace {

const LoginItemError refusal{"No."};

TEST(SimulatedLoginItemServiceTest, CanBeInAnyStatus) {
    SimulatedLoginItemService service;
    for (const auto status : {LoginItemStatus::notRegistered, LoginItemStatus::enabled,
                              LoginItemStatus::requiresApproval, LoginItemStatus::notFound, LoginItemStatus::other}) {
        service.setStatus(status);
        EXPECT_EQ(service.status(), status);
    }
}

TEST(SimulatedLoginItemServiceTest, CanLetTheUserBeAskedFirst) {
    SimulatedLoginItemService service;
    service.setStatusAfterRegistration(LoginItemStatus::requiresApproval);

    EXPECT_TRUE(service.registerItem());

    EXPECT_EQ(service.status(), LoginItemStatus::requiresApproval);
}

TEST(SimulatedLoginItemServiceTest, FailsAsItIsToldUntilItIsToldOtherwise) {
    SimulatedLoginItemService service;
    service.setRegisterFailure(refusal);
    EXPECT_EQ(failureOf(service.registerItem()), refusal);
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);

    service.setRegisterFailure(std::nullopt);
    service.setUnregisterFailure(refusal);
    EXPECT_TRUE(service.registerItem());
    EXPECT_EQ(failureOf(service.unregisterItem()), refusal);
    EXPECT_EQ(service.status(), LoginItemStatus::enabled);
}

TEST(SimulatedLoginItemServiceTest, ChangesNothingInAStatusThatNobodyKnows) {
    SimulatedLoginItemService service;
    service.setStatus(LoginItemStatus::other);

    EXPECT_FALSE(service.registerItem());
    EXPECT_FALSE(service.unregisterItem());

    EXPECT_EQ(service.status(), LoginItemStatus::other);
}

TEST(SimulatedLoginItemServiceTest, CountsEveryCallAlsoThoseThatFail) {
    SimulatedLoginItemService service;
    service.setRegisterFailure(refusal);

    EXPECT_FALSE(service.registerItem());
    EXPECT_FALSE(service.registerItem());
    EXPECT_TRUE(service.unregisterItem());
    service.openSystemSettingsLoginItems();

    EXPECT_EQ(service.registrations(), 2);
    EXPECT_EQ(service.unregistrations(), 1);
    EXPECT_EQ(service.openedSettings(), 1);
    EXPECT_EQ(service.statusReadings(), 0);
}

}  // namespace
}  // namespace velmorand

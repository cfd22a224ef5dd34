#include "platform/LoginItemService.h"
#include "platform/contract/Contracts.h"

namespace velmorand {

TEST_P(LoginItemServiceContract, IsNotRegisteredAtFirst) {
    EXPECT_EQ(service().status(), LoginItemStatus::notRegistered);
    EXPECT_FALSE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, HasTheProgramStartedOnceItIsRegistered) {
    EXPECT_TRUE(service().registerItem());

    EXPECT_EQ(service().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, StaysEnabledWhenItIsRegisteredAgain) {
    EXPECT_TRUE(service().registerItem());
    EXPECT_TRUE(service().registerItem());

    EXPECT_EQ(service().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, HasTheProgramNoLongerStartedOnceItIsUnregistered) {
    EXPECT_TRUE(service().registerItem());
    EXPECT_TRUE(service().unregisterItem());

    EXPECT_EQ(service().status(), LoginItemStatus::notRegistered);
    EXPECT_FALSE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, StaysUnregisteredWithoutAnError) {
    EXPECT_TRUE(service().unregisterItem());

    EXPECT_EQ(service().status(), LoginItemStatus::notRegistered);
}

TEST_P(LoginItemServiceContract, CanBeRegisteredAgain) {
    EXPECT_TRUE(service().registerItem());
    EXPECT_TRUE(service().unregisterItem());
    EXPECT_TRUE(service().registerItem());

    EXPECT_EQ(service().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, RequiresApprovalWhenTheUserHasSwitchedItOff) {
    EXPECT_TRUE(service().registerItem());
    desktop->switchOffLoginItem();

    EXPECT_EQ(service().status(), LoginItemStatus::requiresApproval);
    EXPECT_FALSE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, TakesBackThatTheUserHasSwitchedItOff) {
    EXPECT_TRUE(service().registerItem());
    desktop->switchOffLoginItem();

    EXPECT_TRUE(service().registerItem());

    EXPECT_EQ(service().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, CanBeUnregisteredWhileItRequiresApproval) {
    EXPECT_TRUE(service().registerItem());
    desktop->switchOffLoginItem();

    EXPECT_TRUE(service().unregisterItem());

    EXPECT_EQ(service().status(), LoginItemStatus::notRegistered);
    EXPECT_FALSE(desktop->startsAtLogin());
}

TEST_P(LoginItemServiceContract, IsNotFoundWhereTheProgramIsNotInstalled) {
    desktop->setInstalled(false);

    EXPECT_EQ(service().status(), LoginItemStatus::notFound);
    const auto registered = service().registerItem();
    ASSERT_FALSE(registered);
    EXPECT_NE(registered.error().description, "");
    EXPECT_TRUE(service().unregisterItem());
    EXPECT_EQ(service().status(), LoginItemStatus::notFound);
    EXPECT_FALSE(desktop->startsAtLogin());
}

}  // namespace velmorand

#include "platform/linux/HiddenSessionBus.h"

#include "platform/linux/DetachedProcess.h"
#include "platform/linux/support/SettingsPageFixture.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace velmorand {
namespace {

using testing::Contains;
using testing::Each;
using testing::Not;
using testing::StartsWith;

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* address = "unix:path=/run/user/1000/bus,guid=a=b";

/// The environment is as it was after the test.
class HiddenSessionBusTest : public SettingsPageFixture {
private:
    ScopedEnvironment address_{variable, address};
    ScopedEnvironment hidden_{"VELMORAND_HIDDEN_SESSION_BUS_ADDRESS", std::nullopt};
};

TEST_F(HiddenSessionBusTest, TheBusIsHiddenFromThisProcess) {
    hideSessionBus();

    EXPECT_STREQ(std::getenv(variable), "disabled:");
}

TEST_F(HiddenSessionBusTest, TheEnvironmentForProgramsIsThatOfBefore) {
    const auto before = environmentForPrograms();
    ASSERT_THAT(before, Contains(std::string(variable) + "=" + address));

    hideSessionBus();

    EXPECT_THAT(environmentForPrograms(), testing::UnorderedElementsAreArray(before));
}

TEST_F(HiddenSessionBusTest, WhereNoAddressIsNamedProgramsGetNone) {
    const ScopedEnvironment none(variable, std::nullopt);

    hideSessionBus();

    EXPECT_STREQ(std::getenv(variable), "disabled:");
    EXPECT_THAT(environmentForPrograms(), Each(Not(StartsWith(variable))));
}

TEST_F(HiddenSessionBusTest, AProgramThatIsStartedFindsTheBus) {
    install("program", std::string("printf %s \"$") + variable + "\"");
    hideSessionBus();

    ASSERT_TRUE(startDetached(folder_.path() / "bin/program", {}));

    EXPECT_EQ(told(), address);
}

}  // namespace
}  // namespace velmorand

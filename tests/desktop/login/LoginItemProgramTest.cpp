#include "desktop/login/LoginTest.h"

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

class LoginItemProgramTest : public LoginTest {
protected:
    [[nodiscard]] ProgramEnd runWith(const std::string& command) {
        return run({VELMORAND_LOGIN_ITEMS, VELMORAND_LOGIN_ITEMS, command});
    }

    void expectSuccess(const std::string& command, const std::string& status) {
        const auto end = runWith(command);
        EXPECT_TRUE(end.status.isSuccess()) << command;
        EXPECT_EQ(end.output, status + "\n") << command;
    }
};

TEST_F(LoginItemProgramTest, SwitchesLaunchAtLoginOnAndOff) {
    expectSuccess("status", "disabled");
    expectSuccess("off", "disabled");
    expectSuccess("on", "enabled");
    expectSuccess("status", "enabled");
    EXPECT_TRUE(fs::exists(entry()));
    expectSuccess("on", "enabled");
    expectSuccess("off", "disabled");
    EXPECT_FALSE(fs::exists(entry()));
}

TEST_F(LoginItemProgramTest, ShowsThatTheUserHasSwitchedItOffAndTakesItBack) {
    write(entry(), "[Desktop Entry]\nHidden=true\n");

    expectSuccess("status", "requiresApproval");
    expectSuccess("on", "enabled");
}

TEST_F(LoginItemProgramTest, IsUnavailableWhereTheProgramIsNotInstalled) {
    fs::remove_all(at("data"));

    expectSuccess("status", "unavailable");
    expectSuccess("off", "unavailable");
    const auto end = runWith("on");
    EXPECT_EQ(end.status.code, 1);
    EXPECT_TRUE(end.output.contains("Launch at Login is unavailable for this copy of the app.\n")) << end.output;
}

TEST_F(LoginItemProgramTest, TellsWhyItCouldNotBeSwitched) {
    write(at("config/autostart"), "");

    const auto end = runWith("on");

    EXPECT_EQ(end.status.code, 1);
    EXPECT_TRUE(end.output.contains(at("config/autostart").native() + " is not a folder.\n")) << end.output;
}

TEST_F(LoginItemProgramTest, SaysHowItIsUsed) {
    EXPECT_EQ(runWith("toggle").status.code, 2);
    EXPECT_EQ(run({VELMORAND_LOGIN_ITEMS}).status.code, 2);
}

}  // namespace
}  // namespace velmorand::desktop

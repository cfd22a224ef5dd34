#include "desktop/harness/StartupListener.h"
#include "desktop/program/CopiesTest.h"

namespace velmorand::desktop {
namespace {

using Texts = std::vector<std::string>;

/// A launcher that shows that it waits for the program.
class StartupNotificationTest : public CopiesTest {
protected:
    void SetUp() override {
        CopiesTest::SetUp();
        auto listener = StartupListener::connect(desktop().displayName());
        ASSERT_TRUE(listener) << listener.error();
        listener_ = std::move(*listener);
    }

    [[nodiscard]] StartupListener& listener() { return *listener_; }

private:
    std::optional<StartupListener> listener_;
};

TEST_F(StartupNotificationTest, TheLauncherHearsThatTheProgramHasStarted) {
    const ChildProcess program = startFully({{"DESKTOP_STARTUP_ID", "launcher-1-desk-velmorand-0_TIME42"}});

    EXPECT_TRUE(observer().waitUntil([this] { return !listener().heard().empty(); }));
    EXPECT_EQ(listener().heard(), Texts{R"(remove: ID="launcher-1-desk-velmorand-0_TIME42")"});
}

TEST_F(StartupNotificationTest, TheLauncherHearsOfAStartThatWasHandedOver) {
    ChildProcess first = startFully();

    ChildProcess second = start({{"DESKTOP_STARTUP_ID", R"(a "launcher" \ of mine_TIME42)"}});

    expectHandedOver(second);
    EXPECT_EQ(listener().heard(), Texts{R"(remove: ID="a \"launcher\" \\ of mine_TIME42")"});
}

TEST_F(StartupNotificationTest, WhoGaveNothingAlongHearsNothing) {
    ChildProcess first = startFully();
    ChildProcess second = start({{"XDG_ACTIVATION_TOKEN", "token-1"}});

    expectHandedOver(second);
    EXPECT_EQ(listener().heard(), Texts{});
}

}  // namespace
}  // namespace velmorand::desktop

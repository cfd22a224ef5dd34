#include "platform/Application.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

using testing::ElementsAre;

namespace {

class NotingDelegate final : public ApplicationDelegate {
public:
    explicit NotingDelegate(std::vector<std::string>& told) : told_(told) {}

    void applicationDidFinishLaunching() override { told_.emplace_back("launched"); }
    void applicationWillTerminate() override { told_.emplace_back("terminating"); }
    void applicationShouldHandleReopen(const std::optional<std::string>& activationToken) override {
        told_.push_back("reopened with " + activationToken.value_or("nothing"));
        reopened();
    }

    std::function<void()> reopened = [] {};

private:
    std::vector<std::string>& told_;
};

}  // namespace

TEST_P(ApplicationContract, TellsItsDelegateOfTheLaunchAndOnceOfTheEnd) {
    std::vector<std::string> told;
    const auto delegate = std::make_shared<NotingDelegate>(told);
    Application& application = desktop->platform().application();
    application.setDelegate(delegate);
    const RunLoop::Timer end = runLoop().after(std::chrono::milliseconds{50}, [&] {
        told.emplace_back("running");
        application.terminate();
        application.terminate();
        told.emplace_back("still in the turn");
    });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre("launched", "running", "still in the turn", "terminating"));
}

TEST_P(ApplicationContract, HoldsItsDelegateWeakly) {
    std::vector<std::string> told;
    auto delegate = std::make_shared<NotingDelegate>(told);
    Application& application = desktop->platform().application();
    application.setDelegate(delegate);
    delegate.reset();
    const RunLoop::Timer end = runLoop().after(std::chrono::milliseconds{50}, [&] { application.terminate(); });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre());
}

TEST_P(ApplicationContract, TellsItsDelegateOfEachReopeningWithWhatTheDesktopGaveAlong) {
    std::vector<std::string> told;
    const auto delegate = std::make_shared<NotingDelegate>(told);
    Application& application = desktop->platform().application();
    application.setDelegate(delegate);
    delegate->reopened = [&] {
        if (told.size() == 2)
            desktop->reopen(std::nullopt);
        else
            application.terminate();
    };
    const RunLoop::Timer again = runLoop().after(std::chrono::milliseconds{50}, [&] { desktop->reopen("token-1"); });
    const RunLoop::Timer end = runLoop().after(deadline, [&] { application.terminate(); });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre("launched", "reopened with token-1", "reopened with nothing", "terminating"));
}

TEST_P(ApplicationContract, TellsOfAReopeningThatComesBeforeTheLaunchAfterIt) {
    std::vector<std::string> told;
    const auto delegate = std::make_shared<NotingDelegate>(told);
    Application& application = desktop->platform().application();
    application.setDelegate(delegate);
    delegate->reopened = [&] { application.terminate(); };
    desktop->reopen("token-1");
    finishTurn();
    const RunLoop::Timer end = runLoop().after(deadline, [&] { application.terminate(); });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre("launched", "reopened with token-1", "terminating"));
}

}  // namespace velmorand

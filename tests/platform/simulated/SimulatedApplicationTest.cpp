#include "platform/simulated/SimulatedApplication.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class NotingDelegate final : public ApplicationDelegate {
public:
    explicit NotingDelegate(std::vector<std::string>& told) : told_(told) {}

    void applicationDidFinishLaunching() override { told_.emplace_back("launched"); }
    void applicationWillTerminate() override { told_.emplace_back("terminating"); }
    void applicationShouldHandleReopen(const std::optional<std::string>& activationToken) override {
        told_.push_back("reopened with " + activationToken.value_or("nothing"));
    }

private:
    std::vector<std::string>& told_;
};

class SimulatedApplicationTest : public testing::Test {
protected:
    SimulatedApplicationTest() { application.setDelegate(delegate); }

    std::vector<std::string> told;
    std::shared_ptr<NotingDelegate> delegate = std::make_shared<NotingDelegate>(told);
    SimulatedRunLoop runLoop;
    SimulatedApplication application{runLoop};
};

TEST_F(SimulatedApplicationTest, RunsUntilNothingIsLeftThatCouldHappen) {
    const RunLoop::Timer timer = runLoop.after(5ms, [this] { told.emplace_back("timer"); });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre("launched", "timer", "terminating"));
}

TEST_F(SimulatedApplicationTest, EndsWhenItIsTerminated) {
    const RunLoop::Timer endless = runLoop.every(1ms, [this] { told.emplace_back("tick"); });
    const RunLoop::Timer end = runLoop.after(2500us, [this] { application.terminate(); });

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre("launched", "tick", "tick", "tick", "terminating"));
}

TEST_F(SimulatedApplicationTest, AReopeningAfterTheEndWasAskedForIsNotTold) {
    const RunLoop::Timer end = runLoop.after(1ms, [this] {
        application.terminate();
        application.reopen();
    });
    EXPECT_EQ(application.run(), 0);
    runLoop.runPending();

    EXPECT_THAT(told, ElementsAre("launched", "terminating"));
}

TEST_F(SimulatedApplicationTest, HoldsItsDelegateWeakly) {
    delegate.reset();

    EXPECT_EQ(application.run(), 0);

    EXPECT_THAT(told, ElementsAre());
}

}  // namespace
}  // namespace velmorand

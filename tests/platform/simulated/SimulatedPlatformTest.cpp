#include "platform/simulated/SimulatedPlatform.h"

#include "support/TestDisplays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SimulatedPlatformTest : public testing::Test {
protected:
    void observe(NotificationCenter& center, NotificationName name) {
        observers.push_back(
            center.addObserver(name, [this](const Notification& notification) { told.push_back(notification); }));
    }

    SimulatedPlatform platform;
    std::vector<ObserverID> observers;
    std::vector<Notification> told;
};

TEST_F(SimulatedPlatformTest, StartsWithOneDisplayWhoseTopAPanelCovers) {
    EXPECT_THAT(platform.displays().screens(),
                ElementsAre(DisplayDescription{1, "Simulated Display", {0, 0, 1440, 900}, {0, 0, 1440, 875}}));
}

TEST_F(SimulatedPlatformTest, StartsWithoutApplicationsAndTrusted) {
    EXPECT_EQ(platform.workspace().frontmostApplication(), std::nullopt);
    EXPECT_TRUE(platform.accessibility().isProcessTrusted());
    EXPECT_EQ(platform.bundle().identifier(), "app.velmorand.Velmorand");
    EXPECT_EQ(platform.bundle().informationText("CFBundleVersion"), std::nullopt);
}

TEST_F(SimulatedPlatformTest, TellsOfAnApplicationThatEnds) {
    observe(platform.workspaceNotificationCenter(), NotificationName::applicationTerminated);
    platform.desktop().addProcess(501);
    platform.desktop().addWindow(501);

    platform.terminateProcess(501);

    EXPECT_THAT(told, ElementsAre(Notification{NotificationName::applicationTerminated, 501}));
    EXPECT_EQ(platform.workspace().frontmostApplication(), std::nullopt);
}

TEST_F(SimulatedPlatformTest, TellsOfChangedDisplays) {
    observe(platform.defaultNotificationCenter(), NotificationName::screenParametersChanged);

    platform.setDisplays({});

    EXPECT_THAT(told, ElementsAre(Notification{NotificationName::screenParametersChanged, std::nullopt}));
    EXPECT_THAT(platform.displays().screens(), IsEmpty());
}

TEST_F(SimulatedPlatformTest, AnswersTheFrontmostApplicationAsItIs) {
    SimulatedProcess& process = platform.desktop().addProcess(501);
    process.bundleIdentifier.reset();
    process.localizedName = "Editor";

    EXPECT_EQ(platform.workspace().frontmostApplication(), (RunningApplication{501, std::nullopt, "Editor"}));
}

TEST(TestDisplays, DescribesDisplaysFromTheBottomLeftOfThePrimaryOne) {
    EXPECT_THAT(describedByWindowServer({mainDisplay(), rightDisplay()}),
                ElementsAre(DisplayDescription{1, "Main", {0, 0, 1440, 900}, {0, 0, 1440, 875}},
                            DisplayDescription{2, "Right", {1440, -180, 1920, 1080}, {1440, -180, 1920, 1055}}));
}

}  // namespace
}  // namespace velmorand

#include "settings/SettingsWindowController.h"

#include "settings/SettingsFixture.h"
#include "support/Printing.h"
#include "support/SimulatedPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsWindowControllerTest : public SettingsFixture {
protected:
    SettingsWindowControllerTest() {
        controller.setOnFailure([this](std::string_view message) { failures.emplace_back(message); });
    }

    NotedSettingsWindows windows;
    SettingsWindowController controller{preferencesStore, permissionsManager, shortcutManager, settingsPlatform(),
                                        windows.maker()};
};

TEST_F(SettingsWindowControllerTest, MakesNoWindowBeforeItIsWanted) {
    EXPECT_THAT(windows.notes, IsEmpty());
    controller.savePending();
    EXPECT_THAT(windows.notes, IsEmpty());
}

TEST_F(SettingsWindowControllerTest, MakesOneWindowAndBringsItToTheFrontEachTime) {
    controller.show();
    EXPECT_THAT(windows.notes, ElementsAre("made", "front"));
    controller.show();
    EXPECT_THAT(windows.notes, ElementsAre("made", "front", "front"));
    EXPECT_EQ(platform.application().activations(), 2) << "each time the keyboard comes along";
}

TEST_F(SettingsWindowControllerTest, GivesTheWindowItsServices) {
    controller.show();
    EXPECT_EQ(windows.services.preferencesStore, preferencesStore);
    EXPECT_EQ(windows.services.permissionsManager, permissionsManager);
    EXPECT_EQ(windows.services.shortcutManager, shortcutManager);
}

TEST_F(SettingsWindowControllerTest, LogsAndTellsWhatPreventsTheWindow) {
    windows.failure = "No module.";
    controller.show();
    EXPECT_THAT(failures, ElementsAre("The settings window could not be opened."));
    EXPECT_EQ(platform.log().lines().back(),
              (LogLine{LogLevel::error, "settings", "The settings window could not be opened. No module."}));
}

TEST_F(SettingsWindowControllerTest, TriesAgainAfterAFailure) {
    windows.failure = "No module.";
    controller.show();
    windows.failure.clear();
    controller.show();
    EXPECT_THAT(windows.notes, ElementsAre("made", "front"));
}

TEST_F(SettingsWindowControllerTest, TellsWhatCouldNotBeDoneInTheWindow) {
    controller.show();
    windows.onFailure("No mail program.");
    EXPECT_THAT(failures, ElementsAre("No mail program."));
}

TEST_F(SettingsWindowControllerTest, HasTheWindowStoreWhatWaits) {
    controller.show();
    controller.savePending();
    EXPECT_THAT(windows.notes, ElementsAre("made", "front", "saved"));
}

}  // namespace
}  // namespace velmorand

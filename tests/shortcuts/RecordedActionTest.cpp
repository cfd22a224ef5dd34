#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

/// What the recorder tells of the action that it records.
class RecordedActionTest : public DesktopFixture {
protected:
    using Told = std::pair<std::optional<WindowAction>, bool>;

    ShortcutRecorderPanel panel{platform.recorderPanelHost(), platform.runLoop()};
    /// The action, and whether the panel was on screen at that time.
    std::vector<Told> told;
    Subscription subscription = panel.recordedAction().subscribe(
        [this](const auto& action) { told.emplace_back(action, platform.recorderPanelHost().isShown()); });
};

TEST_F(RecordedActionTest, IsToldOnceThePanelIsShownOrClosed) {
    panel.open(topLeft, preferencesStore);
    panel.open(restore, preferencesStore);
    panel.cancel();

    EXPECT_THAT(told, ElementsAre(Told(topLeft, true), Told(std::nullopt, false), Told(restore, true),
                                  Told(std::nullopt, false)));
}

TEST_F(RecordedActionTest, IsNoneWhenTheUserHasClosedThePanel) {
    panel.open(topLeft, preferencesStore);
    platform.recorderPanelHost().closeByUser();
    platform.runLoop().runPending();

    EXPECT_EQ(panel.recordedAction().value(), std::nullopt);
}

TEST_F(RecordedActionTest, IsNotToldWithoutARecording) {
    panel.cancel();
    panel.remove();

    EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace velmorand

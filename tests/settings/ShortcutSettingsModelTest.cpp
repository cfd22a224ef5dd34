#include "settings/ShortcutSettingsModel.h"

#include "settings/support/QtPrinting.h"
#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr auto command = ShortcutModifiers::command;
constexpr auto shift = ShortcutModifiers::shift;
constexpr auto option = ShortcutModifiers::option;
constexpr auto control = ShortcutModifiers::control;

const KeyboardShortcut allModifiers{{40, {command, shift, option, control}}, "K"};

class ShortcutSettingsModelTest : public DesktopFixture {
protected:
    [[nodiscard]] ShortcutRow& row(WindowAction action) {
        for (const ShortcutSection* section : model.sections()) {
            for (ShortcutRow* each : section->rows()) {
                if (each->action() == action) return *each;
            }
        }
        throw std::runtime_error("the action has no row");
    }
    void settle() { platform.runLoop().runPending(); }

    ShortcutRecorderPanel recorder{platform.recorderPanelHost(), platform.runLoop()};
    ShortcutSettingsModel model{preferencesStore, shortcutManager, recorder};
};

TEST_F(ShortcutSettingsModelTest, HasASectionForEachGroupInItsOrder) {
    QStringList titles;
    for (const ShortcutSection* section : model.sections()) titles.append(section->title());

    EXPECT_THAT(titles, ElementsAre("Edges", "Corners", "Thirds", "Two Thirds", "Displays", "Window Actions"));
}

TEST_F(ShortcutSettingsModelTest, HasEveryActionOnceInCatalogueOrder) {
    std::vector<WindowAction> actions;
    for (const ShortcutSection* section : model.sections()) {
        for (const ShortcutRow* each : section->rows()) actions.push_back(each->action());
    }

    EXPECT_THAT(actions, testing::ElementsAreArray(allWindowActions));
}

TEST_F(ShortcutSettingsModelTest, IsAListForViewsToo) {
    QQmlListProperty<ShortcutSection> sections = model.sectionList();
    ASSERT_EQ(sections.count(&sections), 6);
    QQmlListProperty<ShortcutRow> rows = sections.at(&sections, 5)->rowList();

    ASSERT_EQ(rows.count(&rows), 3);
    EXPECT_EQ(rows.at(&rows, 0)->title(), "Maximize");
}

TEST_F(ShortcutSettingsModelTest, ARowTellsTitleToolTipAndShortcut) {
    const ShortcutRow& left = row(leftHalf);

    EXPECT_EQ(left.title(), "Left");
    EXPECT_EQ(left.toolTip(), "Click to record a new shortcut for Left");
    EXPECT_TRUE(left.hasShortcut());
    EXPECT_THAT(left.glyphs(), ElementsAre("⌥", "⌘", "←"));
    EXPECT_EQ(left.spoken(), "Option + Command + Left Arrow");
    EXPECT_EQ(left.problem(), "");
    EXPECT_FALSE(left.isBeingRecorded());
}

TEST_F(ShortcutSettingsModelTest, KeyCapsAreInTheirFixedOrder) {
    preferencesStore->setShortcut(leftHalf, allModifiers);

    EXPECT_THAT(row(leftHalf).glyphs(), ElementsAre("⌃", "⌥", "⇧", "⌘", "K"));
    EXPECT_EQ(row(leftHalf).spoken(), "Control + Option + Shift + Command + K");
}

TEST_F(ShortcutSettingsModelTest, FollowsThePreferences) {
    int told = 0;
    QObject::connect(&row(leftHalf), &ShortcutRow::shortcutChanged, [&] { ++told; });

    preferencesStore->setShortcut(leftHalf, allModifiers);
    EXPECT_EQ(told, 1);
    preferencesStore->setShortcut(topHalf, allModifiers);
    preferencesStore->setInnerGap(8);
    EXPECT_EQ(told, 1);
}

TEST_F(ShortcutSettingsModelTest, ADisabledActionShowsNoneAndNoConflict) {
    preferencesStore->setShortcut(topHalf, *preferencesStore->effectiveShortcut(leftHalf));
    ASSERT_NE(row(topHalf).problem(), "");

    preferencesStore->removeShortcut(leftHalf);

    EXPECT_FALSE(row(leftHalf).hasShortcut());
    EXPECT_THAT(row(leftHalf).glyphs(), IsEmpty());
    EXPECT_EQ(row(leftHalf).spoken(), "None");
    EXPECT_EQ(row(leftHalf).problem(), "");
    EXPECT_EQ(row(topHalf).problem(), "");
}

TEST_F(ShortcutSettingsModelTest, ActionsThatShareAShortcutNameEachOther) {
    preferencesStore->setShortcut(topLeft, *preferencesStore->effectiveShortcut(leftHalf));

    EXPECT_EQ(row(leftHalf).problem(), "Conflicts with Top Left");
    EXPECT_EQ(row(topLeft).problem(), "Conflicts with Left");
    EXPECT_EQ(row(rightHalf).problem(), "");
}

TEST_F(ShortcutSettingsModelTest, AConflictNamesAllOthersInCatalogueOrderWhateverTheirLabels) {
    for (const WindowAction action : {restore, leftHalf, centerWindow})
        preferencesStore->setShortcut(action, {allModifiers.hotKey, std::string(metadata(action).title)});

    EXPECT_EQ(row(leftHalf).problem(), "Conflicts with Center, Restore Previous Frame");
    EXPECT_EQ(row(centerWindow).problem(), "Conflicts with Left, Restore Previous Frame");
}

TEST_F(ShortcutSettingsModelTest, TellsWhenAnotherProgramHasTheShortcut) {
    platform.hotKeyService().setTaken(123, ShortcutModifiers{command, option}.rawValue(), true);
    shortcutManager->start();

    EXPECT_EQ(row(leftHalf).problem(), "Saved, but another app is already using this shortcut.");
    EXPECT_EQ(row(rightHalf).problem(), "");

    platform.hotKeyService().setTaken(123, ShortcutModifiers{command, option}.rawValue(), false);
    shortcutManager->refreshRegistrations();
    EXPECT_EQ(row(leftHalf).problem(), "");
}

TEST_F(ShortcutSettingsModelTest, AConflictComesBeforeWhatTheSystemSaid) {
    platform.hotKeyService().setTaken(123, ShortcutModifiers{command, option}.rawValue(), true);
    shortcutManager->start();

    preferencesStore->setShortcut(topHalf, *preferencesStore->effectiveShortcut(leftHalf));

    EXPECT_EQ(row(leftHalf).problem(), "Conflicts with Top");
    settle();
    EXPECT_EQ(row(leftHalf).problem(), "Conflicts with Top");
    preferencesStore->removeShortcut(topHalf);
    settle();
    EXPECT_EQ(row(leftHalf).problem(), "Saved, but another app is already using this shortcut.");
}

TEST_F(ShortcutSettingsModelTest, ResettingGivesEveryActionItsDefaultAgainAndRegistersIt) {
    shortcutManager->start();
    const std::size_t registered = platform.hotKeyService().registrationCount();
    preferencesStore->setShortcut(leftHalf, allModifiers);
    preferencesStore->removeShortcut(restore);
    preferencesStore->setShortcut(topHalf, allModifiers);
    settle();
    ASSERT_NE(platform.hotKeyService().registrationCount(), registered);

    model.resetDefaults();
    settle();

    EXPECT_THAT(row(leftHalf).glyphs(), ElementsAre("⌥", "⌘", "←"));
    EXPECT_THAT(row(restore).glyphs(), ElementsAre("⌥", "⇧", "⌘", "P"));
    EXPECT_EQ(row(leftHalf).problem(), "");
    EXPECT_EQ(platform.hotKeyService().registrationCount(), registered);
}

TEST_F(ShortcutSettingsModelTest, ARowOpensTheRecorderForItsAction) {
    row(topLeft).record();

    EXPECT_EQ(recorder.recordedAction().value(), topLeft);
    EXPECT_EQ(recorder.model().value().actionTitle, "Top Left");
    EXPECT_TRUE(row(topLeft).isBeingRecorded());
    EXPECT_FALSE(row(leftHalf).isBeingRecorded());

    row(leftHalf).record();
    EXPECT_FALSE(row(topLeft).isBeingRecorded());
    EXPECT_TRUE(row(leftHalf).isBeingRecorded());

    recorder.cancel();
    EXPECT_FALSE(row(leftHalf).isBeingRecorded());
}

TEST_F(ShortcutSettingsModelTest, KnowsWhatIsRecordedWhenItIsMade) {
    recorder.open(restore, preferencesStore);
    const ShortcutSettingsModel late(preferencesStore, shortcutManager, recorder);

    EXPECT_TRUE(late.sections().last()->rows().last()->isBeingRecorded());
}

TEST_F(ShortcutSettingsModelTest, AFractionIsDrawnWhereTheWindowGoes) {
    EXPECT_EQ(row(rightHalf).miniature(), ShortcutRow::Miniature::Fraction);
    EXPECT_EQ(row(rightHalf).targetArea(), QRectF(0.5, 0, 0.5, 1));
    EXPECT_EQ(row(bottomLeft).targetArea(), QRectF(0, 0.5, 0.5, 0.5));
    EXPECT_EQ(row(centerTwoThirds).targetArea(), QRectF(1.0 / 6, 0, 2.0 / 3, 1));
}

TEST_F(ShortcutSettingsModelTest, OtherActionsHaveAMiniatureOfTheirOwn) {
    EXPECT_EQ(row(maximizeWindow).miniature(), ShortcutRow::Miniature::Maximize);
    EXPECT_EQ(row(centerWindow).miniature(), ShortcutRow::Miniature::Center);
    EXPECT_EQ(row(restore).miniature(), ShortcutRow::Miniature::Restore);
    EXPECT_EQ(row(nextDisplay).miniature(), ShortcutRow::Miniature::NextDisplay);
    EXPECT_EQ(row(previousDisplay).miniature(), ShortcutRow::Miniature::PreviousDisplay);
    EXPECT_EQ(row(nextDisplay).targetArea(), QRectF(0, 0, 1, 1));
}

TEST_F(ShortcutSettingsModelTest, ALabelOfSeveralLettersIsOneCap) {
    preferencesStore->setShortcut(leftHalf, {{200, control}, "Key 200"});
    EXPECT_THAT(row(leftHalf).glyphs(), ElementsAre("⌃", "Key 200"));

    preferencesStore->setShortcut(leftHalf, {{200, control}, "مفتاح"});
    EXPECT_THAT(row(leftHalf).glyphs(), ElementsAre("⌃", "مفتاح"));
    EXPECT_EQ(row(leftHalf).spoken(), "Control + مفتاح");
}

}  // namespace
}  // namespace velmorand

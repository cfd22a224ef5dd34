#include "settings/ShortcutRecorderViewModel.h"

#include "settings/support/QtPrinting.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Question = ShortcutRecorderViewModel::Question;
using enum WindowAction;

constexpr std::uint64_t shiftFlag = 0x20000;
constexpr std::uint64_t controlFlag = 0x40000;
constexpr std::uint64_t optionFlag = 0x80000;
constexpr std::uint64_t commandFlag = 0x100000;
constexpr std::uint32_t keyA = 0;
constexpr std::uint32_t keyK = 40;
constexpr std::uint32_t keyRightArrow = 124;

class ShortcutRecorderViewModelTest : public DesktopFixture {
protected:
    void open(WindowAction action = leftHalf) { panel.open(action, preferencesStore); }
    void press(std::uint32_t keyCode, std::uint64_t flags, const std::string& characters = "k") {
        platform.recorderPanelHost().press({keyCode, flags, characters});
        platform.runLoop().runPending();
    }
    void hold(std::uint64_t flags) {
        platform.recorderPanelHost().changeModifiers(flags);
        platform.runLoop().runPending();
    }
    [[nodiscard]] std::string shortcut(WindowAction action) {
        const auto assigned = preferencesStore->effectiveShortcut(action);
        return assigned ? spokenDescription(*assigned) : "none";
    }

    ShortcutRecorderPanel panel{platform.recorderPanelHost(), platform.runLoop()};
    ShortcutRecorderViewModel view{panel};
};

TEST_F(ShortcutRecorderViewModelTest, CancelEndsTheRecording) {
    open();

    view.cancel();

    EXPECT_FALSE(panel.isRecording());
    EXPECT_FALSE(platform.recorderPanelHost().isShown());
}

TEST_F(ShortcutRecorderViewModelTest, AsksForTheShortcutOfTheAction) {
    open(topLeft);

    EXPECT_EQ(view.prompt(), "Press the new shortcut for Top Left");
    EXPECT_EQ(view.hint(), "Press Escape to cancel — add a modifier to bind Escape itself.");
    EXPECT_FALSE(view.hintIsError());
    EXPECT_THAT(view.glyphs(), IsEmpty());
    EXPECT_FALSE(view.isCaptured());
    EXPECT_EQ(view.question(), Question::NoQuestion);
    EXPECT_EQ(view.questionTitle(), "");
    EXPECT_EQ(view.questionText(), "");
    EXPECT_EQ(view.cancelTitle(), "Cancel");
    EXPECT_EQ(view.confirmTitle(), "");
    EXPECT_EQ(view.removeTitle(), "Remove Current Shortcut");
}

TEST_F(ShortcutRecorderViewModelTest, ShowsTheHeldModifiers) {
    open();
    hold(commandFlag | shiftFlag);

    EXPECT_THAT(view.glyphs(), ElementsAre("⇧", "⌘"));
    EXPECT_FALSE(view.isCaptured());
    EXPECT_EQ(view.spoken(), "");
}

TEST_F(ShortcutRecorderViewModelTest, TellsWhatIsWrongWithAKey) {
    open();
    press(keyA, 0, "a");

    EXPECT_EQ(view.hint(), "Include at least one of Command, Control, or Option.");
    EXPECT_TRUE(view.hintIsError());
    EXPECT_TRUE(panel.isRecording());
}

TEST_F(ShortcutRecorderViewModelTest, AFragileCombinationIsTakenOnlyWhenTheUserInsists) {
    open();
    press(keyK, optionFlag | shiftFlag);

    EXPECT_EQ(view.question(), Question::Fragile);
    EXPECT_TRUE(view.isCaptured());
    EXPECT_THAT(view.glyphs(), ElementsAre("⌥", "⇧", "K"));
    EXPECT_EQ(view.spoken(), "Option + Shift + K");
    EXPECT_EQ(view.questionTitle(),
              "Shortcuts without Command or Control can fail to register on some macOS versions.");
    EXPECT_EQ(view.questionText(), "Add Command or Control for a more reliable global shortcut.");
    EXPECT_EQ(view.hint(), "");
    EXPECT_EQ(view.confirmTitle(), "Use Anyway");
    EXPECT_EQ(shortcut(leftHalf), "Option + Command + Left Arrow");

    view.confirm();
    EXPECT_EQ(shortcut(leftHalf), "Option + Shift + K");
    EXPECT_FALSE(panel.isRecording());
}

TEST_F(ShortcutRecorderViewModelTest, ACombinationOfTheScreenReaderIsWarnedOf) {
    open();
    press(keyK, controlFlag | optionFlag);

    EXPECT_EQ(view.question(), Question::VoiceOver);
    EXPECT_EQ(view.questionTitle(), "Control–Option shortcuts can conflict with VoiceOver.");
    EXPECT_EQ(view.questionText(), "Add Command for a shortcut that won't interfere with VoiceOver.");
    EXPECT_EQ(view.confirmTitle(), "Use Anyway");

    view.confirm();
    EXPECT_EQ(shortcut(leftHalf), "Control + Option + K");
}

TEST_F(ShortcutRecorderViewModelTest, ATakenCombinationIsReplaced) {
    open();
    press(keyRightArrow, commandFlag | optionFlag, "");

    EXPECT_EQ(view.question(), Question::Conflict);
    EXPECT_EQ(view.questionTitle(), "This shortcut is already used by Right.");
    EXPECT_EQ(view.questionText(), "Right will have no shortcut until you assign a new one.");
    EXPECT_EQ(view.confirmTitle(), "Replace");
    EXPECT_THAT(view.glyphs(), ElementsAre("⌥", "⌘", "→"));

    view.confirm();
    EXPECT_EQ(shortcut(leftHalf), "Option + Command + Right Arrow");
    EXPECT_EQ(shortcut(rightHalf), "none");
}

TEST_F(ShortcutRecorderViewModelTest, TheCapturedCombinationStaysWhileOtherKeysAreTried) {
    open();
    press(keyK, optionFlag);
    hold(commandFlag);
    press(keyA, 0, "a");

    EXPECT_THAT(view.glyphs(), ElementsAre("⌥", "K"));
    EXPECT_EQ(view.question(), Question::Fragile);
    EXPECT_EQ(view.hint(), "Include at least one of Command, Control, or Option.");
    EXPECT_TRUE(view.hintIsError());
}

TEST_F(ShortcutRecorderViewModelTest, RemovesTheShortcutThatIsThere) {
    open();
    view.remove();

    EXPECT_EQ(shortcut(leftHalf), "none");
    EXPECT_FALSE(panel.isRecording());
}

TEST_F(ShortcutRecorderViewModelTest, HasNothingToRemoveForADisabledAction) {
    preferencesStore->removeShortcut(leftHalf);
    open();

    EXPECT_EQ(view.removeTitle(), "");
    view.remove();
    EXPECT_TRUE(panel.isRecording());
}

TEST_F(ShortcutRecorderViewModelTest, ButtonsDoNothingWithoutARecording) {
    open();
    press(keyK, optionFlag);
    view.cancel();
    const PreferencesState before = preferencesStore->current();

    view.confirm();
    view.remove();
    view.cancel();

    EXPECT_EQ(preferencesStore->current(), before);
    EXPECT_FALSE(panel.isRecording());
}

TEST_F(ShortcutRecorderViewModelTest, ThereIsNothingToConfirmWithoutAQuestion) {
    open();
    view.confirm();

    EXPECT_TRUE(panel.isRecording());
}

}  // namespace
}  // namespace velmorand

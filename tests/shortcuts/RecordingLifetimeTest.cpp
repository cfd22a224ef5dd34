#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using enum WindowAction;

constexpr auto control = ShortcutModifiers::control;

/// When a recording begins and ends.
class RecordingLifetimeTest : public ShortcutRecorderFixture {};

TEST_F(RecordingLifetimeTest, AnswersAfterTheEndDoNothing) {
    open(leftHalf);
    press(keyK, optionFlag, "k");
    panel->cancel();
    const auto before = preferencesStore->current();

    panel->cancel();
    panel->replace();
    panel->useAnyway();
    panel->remove();

    EXPECT_EQ(preferencesStore->current(), before);
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(RecordingLifetimeTest, ClosingThePanelEndsTheRecordingOnce) {
    open();
    host().closeByUser();
    settle();

    EXPECT_FALSE(panel->isRecording());
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(RecordingLifetimeTest, LosingTheKeyboardEndsTheRecordingAndClosesThePanel) {
    open();
    host().resignKey();
    settle();

    EXPECT_FALSE(panel->isRecording());
    EXPECT_FALSE(host().isShown());
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(RecordingLifetimeTest, OpeningForAnotherActionEndsTheFirstRecording) {
    open(leftHalf);
    press(keyK, optionFlag, "k");
    open(rightHalf);

    EXPECT_THAT(states, ElementsAre(true, false, true));
    EXPECT_EQ(model(), (ShortcutRecorderModel{.actionTitle = "Right", .hasCurrentShortcut = true}));
    press(keyK, controlFlag, "k");
    EXPECT_EQ(shortcut(rightHalf), (KeyboardShortcut{{keyK, control}, "K"}));
    EXPECT_NE(shortcut(leftHalf), shortcut(rightHalf));
}

TEST_F(RecordingLifetimeTest, WithoutAStoreKeysHaveNoEffectButEscapeAndTheHint) {
    auto store = std::make_shared<SettablePreferencesStore>(platform);
    panel->open(leftHalf, store);
    store.reset();

    press(keyK, controlFlag, "k");
    EXPECT_TRUE(panel->isRecording());
    EXPECT_EQ(model().pendingShortcut, std::nullopt);
    panel->replace();
    EXPECT_TRUE(panel->isRecording());
    press(keyK, 0, "k");
    EXPECT_TRUE(model().hint.has_value());
    press(keyEscape, 0);
    EXPECT_FALSE(panel->isRecording());
}

TEST_F(RecordingLifetimeTest, APanelThatGoesEndsItsRecording) {
    open();
    panel.reset();

    EXPECT_FALSE(host().isShown());
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(RecordingLifetimeTest, EveryChangeIsToldOnce) {
    open();
    int told = 0;
    const auto watching = panel->model().subscribe([&](const ShortcutRecorderModel&) { ++told; });
    press(keyK, optionFlag, "k");
    press(keyK, controlFlag | optionFlag, "k");
    EXPECT_EQ(told, 2);
}

TEST_F(RecordingLifetimeTest, APanelWithoutAWindowEndsItsRecording) {
    host().setWindowMaker({});
    open();
    EXPECT_THAT(states, ElementsAre(true));
    settle();

    EXPECT_FALSE(panel->isRecording());
    EXPECT_THAT(states, ElementsAre(true, false));
}

TEST_F(RecordingLifetimeTest, WhileItRecordsNoHotKeyIsHeldAndAfterwardsTheNewOneIs) {
    panel->setOnRecordingStateChange([this](bool isRecording) { shortcutManager->setRecordingSuspended(isRecording); });
    shortcutManager->start();
    open(leftHalf);
    EXPECT_EQ(platform.hotKeyService().registrationCount(), 0U);

    press(keyK, controlFlag, "k");

    EXPECT_EQ(platform.hotKeyService().registrationCount(), 19U);
    EXPECT_EQ(platform.hotKeyService().registeredID(keyK, control.rawValue())->id, 1U);
    EXPECT_FALSE(platform.hotKeyService().isRegistered(keyLeftArrow, 0x900));
}

}  // namespace
}  // namespace velmorand

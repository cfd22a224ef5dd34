#include "preferences/PreferencesStore.h"
#include "preferences/PreferencesStoreFixture.h"

#include <array>
#include <functional>
#include <limits>
#include <utility>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// When and what the store stores.
class PreferencesStoreSaveTest : public PreferencesStoreFixture {
protected:
    using Change = std::function<void(PreferencesStore&)>;
};

TEST_F(PreferencesStoreSaveTest, ADiscreteChangeIsStoredAtOnce) {
    const KeyboardShortcut shortcut{{8, ShortcutModifiers::control}, "C"};
    const std::vector<std::pair<std::string_view, Change>> changes{
        {"enable animations", [](auto& changed) { changed.setEnableAnimations(true); }},
        {"clamp to visible area", [](auto& changed) { changed.setClampToVisibleArea(false); }},
        {"add ignored app", [](auto& changed) { changed.addIgnoredApp("a"); }},
        {"add it again", [](auto& changed) { changed.addIgnoredApp("a"); }},
        {"add ignored apps", [](auto& changed) { changed.addIgnoredApps(std::array<std::string, 2>{"b", "c"}); }},
        {"add none", [](auto& changed) { changed.addIgnoredApps({}); }},
        {"remove ignored app", [](auto& changed) { changed.removeIgnoredApp("a"); }},
        {"set shortcut", [&](auto& changed) { changed.setShortcut(leftHalf, shortcut); }},
        {"assign shortcut", [&](auto& changed) { changed.assignShortcut(rightHalf, shortcut, std::array{leftHalf}); }},
        {"remove shortcut", [](auto& changed) { changed.removeShortcut(rightHalf); }},
        {"reset all shortcuts", [](auto& changed) { changed.resetAllShortcuts(); }},
    };
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        const std::size_t writesBefore = writeCount();
        change(*store);
        EXPECT_EQ(writeCount(), writesBefore + 1);
        EXPECT_EQ(storedState(), store->current());
        EXPECT_TRUE(platform.runLoop().isIdle());
    }
}

TEST_F(PreferencesStoreSaveTest, AMovementOfASliderIsStoredAMomentLater) {
    const std::vector<std::pair<std::string_view, Change>> changes{
        {"outer padding", [](auto& changed) { changed.setOuterPadding(8); }},
        {"inner gap", [](auto& changed) { changed.setInnerGap(4); }},
        {"animation duration", [](auto& changed) { changed.setAnimationDuration(0.25); }},
    };
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        const std::size_t writesBefore = writeCount();
        change(*store);
        advance(nearlyTheDelay);
        EXPECT_EQ(writeCount(), writesBefore);
        advance(1ms);
        EXPECT_EQ(writeCount(), writesBefore + 1);
        EXPECT_EQ(storedState(), store->current());
    }
}

TEST_F(PreferencesStoreSaveTest, ASliderThatRestsIsStoredOnce) {
    store->setOuterPadding(8);

    advance(1h);

    EXPECT_EQ(writeCount(), 1U);
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(PreferencesStoreSaveTest, ASliderInMotionIsStoredOnceAMomentAfterTheLastMovement) {
    store->setOuterPadding(1);
    advance(200ms);
    store->setInnerGap(2);
    advance(200ms);
    store->setOuterPadding(3);
    advance(nearlyTheDelay);
    EXPECT_EQ(writeCount(), 0U);

    advance(1ms);

    EXPECT_EQ(writeCount(), 1U);
    EXPECT_EQ(storedState().outerPadding, 3);
    EXPECT_EQ(storedState().innerGap, 2);
}

TEST_F(PreferencesStoreSaveTest, AMovementAfterASaveIsStoredAgain) {
    store->setOuterPadding(1);
    advance(saveDelay);
    store->setOuterPadding(2);
    advance(saveDelay);

    EXPECT_EQ(writeCount(), 2U);
    EXPECT_EQ(storedState().outerPadding, 2);
}

TEST_F(PreferencesStoreSaveTest, ADiscreteChangeAlsoStoresTheSliderThatWaits) {
    store->setOuterPadding(8);
    advance(100ms);

    store->setEnableAnimations(true);
    EXPECT_EQ(writeCount(), 1U);
    EXPECT_EQ(storedState().outerPadding, 8);
    EXPECT_TRUE(storedState().enableAnimations);

    advance(1h);
    EXPECT_EQ(writeCount(), 1U);
}

TEST_F(PreferencesStoreSaveTest, AScheduledSaveStartsAnewWhenItIsScheduledAgain) {
    store->scheduleSave();
    advance(nearlyTheDelay);
    store->scheduleSave();
    EXPECT_EQ(platform.runLoop().timerCount(), 1U);
    advance(nearlyTheDelay);
    EXPECT_EQ(writeCount(), 0U);

    advance(1ms);

    EXPECT_EQ(writeCount(), 1U);
    EXPECT_EQ(storedState(), defaultPreferencesState());
}

TEST_F(PreferencesStoreSaveTest, SavingNowLeavesAScheduledSaveWhereItIs) {
    store->setOuterPadding(8);

    store->saveNow();
    EXPECT_EQ(writeCount(), 1U);

    advance(saveDelay);
    EXPECT_EQ(writeCount(), 2U);
}

TEST_F(PreferencesStoreSaveTest, WhatWaitsIsStoredOnceWhenItIsAskedFor) {
    store->setOuterPadding(8);

    store->savePending();
    store->savePending();
    EXPECT_EQ(writeCount(), 1U);
    EXPECT_EQ(storedState().outerPadding, 8);

    advance(1h);
    EXPECT_EQ(writeCount(), 1U);
}

TEST_F(PreferencesStoreSaveTest, NothingIsStoredWhenNothingWaits) {
    store->savePending();
    EXPECT_EQ(writeCount(), 0U);

    store->setOuterPadding(8);
    advance(saveDelay);
    store->savePending();
    EXPECT_EQ(writeCount(), 1U);
}

TEST_F(PreferencesStoreSaveTest, AStoreThatEndsStoresNothingMore) {
    store->setOuterPadding(8);

    store.reset();
    advance(1h);

    EXPECT_EQ(writeCount(), 0U);
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(PreferencesStoreSaveTest, AChangeIsPublishedBeforeItIsStored) {
    std::vector<std::size_t> writesAtPublication;
    subscription =
        store->state().subscribe([&](const PreferencesState&) { writesAtPublication.push_back(writeCount()); });

    store->setEnableAnimations(true);

    EXPECT_THAT(writesAtPublication, ElementsAre(0U));
    EXPECT_EQ(writeCount(), 1U);
}

TEST_F(PreferencesStoreSaveTest, AChangeMadeByASubscriberIsStoredToo) {
    subscription = store->state().subscribe([&](const PreferencesState& state) {
        if (state.outerPadding == 0) store->setOuterPadding(8);
    });

    store->setEnableAnimations(true);

    EXPECT_TRUE(storedState().enableAnimations);
    EXPECT_EQ(storedState().outerPadding, 8);
}

TEST_F(PreferencesStoreSaveTest, ARecordThatCannotBeEncodedLeavesTheStoredOneAndIsLogged) {
    store->setInnerGap(4);
    advance(saveDelay);
    const auto before = storedDocument();

    store->setOuterPadding(notANumber);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
    advance(saveDelay);

    EXPECT_EQ(storedDocument(), before);
    EXPECT_EQ(writeCount(), 1U);
    EXPECT_THAT(platform.log().lines(),
                ElementsAre(errorLine("Failed to persist preferences: "
                                      "The value of \"outerPadding\" is not a finite number.")));
}

TEST_F(PreferencesStoreSaveTest, ARecordThatCanBeEncodedAgainIsStored) {
    store->setOuterPadding(notANumber);
    store->setEnableAnimations(true);
    EXPECT_EQ(writeCount(), 0U);

    store->setOuterPadding(8);
    advance(saveDelay);

    EXPECT_EQ(storedState(), store->current());
    EXPECT_EQ(platform.log().lines().size(), 1U);
}

TEST_F(PreferencesStoreSaveTest, AFailedSaveIsLoggedOnceAndTheChangeStaysInForce) {
    userDefaults().setWriteFailure(UserDefaultsError{"The disk is full."});

    store->setEnableAnimations(true);
    advance(1h);

    EXPECT_TRUE(store->current().enableAnimations);
    EXPECT_EQ(storedDocument(), std::nullopt);
    EXPECT_THAT(platform.log().lines(), ElementsAre(errorLine("Failed to persist preferences: The disk is full.")));
}

TEST_F(PreferencesStoreSaveTest, EveryFailedSaveIsLogged) {
    userDefaults().setWriteFailure(UserDefaultsError{"The disk is full."});

    store->setEnableAnimations(true);
    store->setOuterPadding(8);
    advance(saveDelay);

    const LogLine line = errorLine("Failed to persist preferences: The disk is full.");
    EXPECT_THAT(platform.log().lines(), ElementsAre(line, line));
}

TEST_F(PreferencesStoreSaveTest, ASaveAfterAFailedOneStoresEverything) {
    userDefaults().setWriteFailure(UserDefaultsError{"The disk is full."});
    store->setEnableAnimations(true);
    userDefaults().setWriteFailure(std::nullopt);

    store->setOuterPadding(8);
    advance(saveDelay);

    EXPECT_TRUE(storedState().enableAnimations);
    EXPECT_EQ(storedState().outerPadding, 8);
    EXPECT_EQ(platform.log().lines().size(), 1U);
}

TEST_F(PreferencesStoreSaveTest, TextThatIsNoTextDoesNotKeepLaterChangesFromBeingStored) {
    store->addIgnoredApp("\xFF\xFE");
    store->setShortcut(leftHalf, {{8, {}}, "\x80"});

    store->setEnableAnimations(true);

    EXPECT_TRUE(storedState().enableAnimations);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
}

TEST_F(PreferencesStoreSaveTest, StoresTheDocumentOfTheRecordUnderItsKey) {
    store->setClampToVisibleArea(false);

    EXPECT_EQ(storedDocument(), encodePreferencesState(store->current()).value());
    EXPECT_EQ(userDefaults().data("PreferencesState").value(), std::nullopt);
}

}  // namespace
}  // namespace velmorand

#include "preferences/PreferencesStore.h"
#include "preferences/PreferencesStoreFixture.h"

#include <array>
#include <functional>
#include <utility>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using enum WindowAction;

KeyboardShortcut shortcutWith(std::uint32_t keyCode) {
    return {{keyCode, ShortcutModifiers::control}, "C"};
}

/// What each change does to the record.
class PreferencesStoreMutatorTest : public PreferencesStoreFixture {
protected:
    [[nodiscard]] const PreferencesState& state() const { return store->current(); }
    /// Everything else of the record is as it was at the start.
    [[nodiscard]] static PreferencesState defaultsWith(const std::function<void(PreferencesState&)>& change) {
        PreferencesState expected = defaultPreferencesState();
        change(expected);
        return expected;
    }
};

TEST_F(PreferencesStoreMutatorTest, EveryChangeIsPublishedOnce) {
    using Change = std::function<void(PreferencesStore&)>;
    const std::vector<std::pair<std::string_view, Change>> changes{
        {"outer padding", [](auto& changed) { changed.setOuterPadding(8); }},
        {"inner gap", [](auto& changed) { changed.setInnerGap(8); }},
        {"animation duration", [](auto& changed) { changed.setAnimationDuration(0.2); }},
        {"enable animations", [](auto& changed) { changed.setEnableAnimations(true); }},
        {"clamp to visible area", [](auto& changed) { changed.setClampToVisibleArea(false); }},
        {"add ignored app", [](auto& changed) { changed.addIgnoredApp("a"); }},
        {"add ignored apps", [](auto& changed) { changed.addIgnoredApps(std::array<std::string, 2>{"b", "c"}); }},
        {"remove ignored app", [](auto& changed) { changed.removeIgnoredApp("a"); }},
        {"set shortcut", [](auto& changed) { changed.setShortcut(leftHalf, shortcutWith(8)); }},
        {"assign shortcut",
         [](auto& changed) { changed.assignShortcut(rightHalf, shortcutWith(9), std::array{leftHalf, topHalf}); }},
        {"remove shortcut", [](auto& changed) { changed.removeShortcut(rightHalf); }},
        {"reset all shortcuts", [](auto& changed) { changed.resetAllShortcuts(); }},
    };
    watch();
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        published.clear();
        const PreferencesState before = state();
        change(*store);
        EXPECT_THAT(published, ElementsAre(state()));
        EXPECT_NE(state(), before);
    }
}

TEST_F(PreferencesStoreMutatorTest, SavingPublishesNothing) {
    watch();

    store->saveNow();
    store->scheduleSave();
    advance(saveDelay);
    store->savePending();

    EXPECT_THAT(published, IsEmpty());
}

TEST_F(PreferencesStoreMutatorTest, ASubscriberSeesTheNewRecordInTheStore) {
    std::vector<double> seen;
    subscription = store->state().subscribe([&](const PreferencesState&) { seen.push_back(state().outerPadding); });

    store->setOuterPadding(8);

    EXPECT_THAT(seen, ElementsAre(8));
}

TEST_F(PreferencesStoreMutatorTest, TheOuterPaddingIsSetWithinItsLimits) {
    store->setOuterPadding(8.5);
    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.outerPadding = 8.5; }));
    store->setOuterPadding(80);
    EXPECT_EQ(state().outerPadding, 50);
    store->setOuterPadding(-1);
    EXPECT_EQ(state().outerPadding, 0);
}

TEST_F(PreferencesStoreMutatorTest, TheInnerGapIsSetWithinItsLimits) {
    store->setInnerGap(8.5);
    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.innerGap = 8.5; }));
    store->setInnerGap(50.5);
    EXPECT_EQ(state().innerGap, 50);
    store->setInnerGap(-0.5);
    EXPECT_EQ(state().innerGap, 0);
}

TEST_F(PreferencesStoreMutatorTest, TheAnimationDurationIsSetWithinItsLimits) {
    store->setAnimationDuration(0.25);
    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.animationDuration = 0.25; }));
    store->setAnimationDuration(0.01);
    EXPECT_EQ(state().animationDuration, 0.05);
    store->setAnimationDuration(0.6);
    EXPECT_EQ(state().animationDuration, 0.5);
}

TEST_F(PreferencesStoreMutatorTest, AnimationsAreSwitchedOnAndOff) {
    store->setEnableAnimations(true);
    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.enableAnimations = true; }));
    store->setEnableAnimations(false);
    EXPECT_EQ(state(), defaultPreferencesState());
}

TEST_F(PreferencesStoreMutatorTest, ClampingIsSwitchedOffAndOn) {
    store->setClampToVisibleArea(false);
    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.clampToVisibleArea = false; }));
    store->setClampToVisibleArea(true);
    EXPECT_EQ(state(), defaultPreferencesState());
}

TEST_F(PreferencesStoreMutatorTest, AnIgnoredAppIsAddedUnlessItIsThere) {
    store->addIgnoredApp("b");
    store->addIgnoredApp("a");
    store->addIgnoredApp("b");
    store->addIgnoredApp("B");

    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.ignoredApps = {"b", "a", "B"}; }));
}

TEST_F(PreferencesStoreMutatorTest, SeveralIgnoredAppsAreAddedInTheirOrderAndPublishedOnce) {
    store->addIgnoredApp("c");
    watch();

    store->addIgnoredApps(std::array<std::string, 6>{"d", "c", "a", "d", "A", "a\xFF"});

    EXPECT_THAT(state().ignoredApps, ElementsAre("c", "d", "a", "A", "a\uFFFD"));
    EXPECT_THAT(published, ElementsAre(state()));
    EXPECT_EQ(storedState().ignoredApps, (std::vector<std::string>{"A", "a", "a\uFFFD", "c", "d"}));
}

TEST_F(PreferencesStoreMutatorTest, IgnoredAppsAreAddedFromTheRecordItself) {
    store->addIgnoredApps(std::array<std::string, 2>{"a", "b"});

    store->addIgnoredApps(state().ignoredApps);

    EXPECT_THAT(state().ignoredApps, ElementsAre("a", "b"));
}

TEST_F(PreferencesStoreMutatorTest, AnIgnoredAppIsRemovedAndTheOthersKeepTheirOrder) {
    for (const std::string_view identifier : {"c", "a", "b"}) store->addIgnoredApp(identifier);

    store->removeIgnoredApp("a");
    EXPECT_THAT(state().ignoredApps, ElementsAre("c", "b"));
    store->removeIgnoredApp("a");
    EXPECT_THAT(state().ignoredApps, ElementsAre("c", "b"));
}

TEST_F(PreferencesStoreMutatorTest, AnIgnoredAppIsRemovedByItsEntryInTheRecord) {
    for (const std::string_view identifier : {"org.example.first.editor", "org.example.other.editor", "c"})
        store->addIgnoredApp(identifier);

    store->removeIgnoredApp(state().ignoredApps.front());

    EXPECT_THAT(state().ignoredApps, ElementsAre("org.example.other.editor", "c"));
}

TEST_F(PreferencesStoreMutatorTest, AnIgnoredAppWhoseIdentifierIsNoTextIsAddedAndRemovedLikeAnyOther) {
    store->addIgnoredApp("a\xFF");
    store->addIgnoredApp("a\xFF");
    EXPECT_THAT(state().ignoredApps, ElementsAre("a\uFFFD"));
    EXPECT_EQ(storedState(), state());

    store->removeIgnoredApp("a\xFF");
    EXPECT_THAT(state().ignoredApps, IsEmpty());
}

TEST_F(PreferencesStoreMutatorTest, AShortcutIsSet) {
    store->setShortcut(leftHalf, shortcutWith(8));

    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.shortcuts["left"] = shortcutWith(8); }));
    EXPECT_EQ(store->effectiveShortcut(leftHalf), shortcutWith(8));
}

TEST_F(PreferencesStoreMutatorTest, SettingAShortcutLeavesOthersWithTheSameCombinationAsTheyAre) {
    store->setShortcut(leftHalf, metadata(rightHalf).defaultShortcut);

    EXPECT_EQ(store->effectiveShortcut(rightHalf), metadata(rightHalf).defaultShortcut);
    EXPECT_THAT(store->conflictGroups(), SizeIs(1));
}

TEST_F(PreferencesStoreMutatorTest, SettingAShortcutEnablesADisabledAction) {
    store->removeShortcut(leftHalf);
    store->removeShortcut(restore);

    store->setShortcut(leftHalf, shortcutWith(8));

    EXPECT_EQ(store->effectiveShortcut(leftHalf), shortcutWith(8));
    EXPECT_THAT(state().disabledShortcutActions, ElementsAre("restore"));
}

TEST_F(PreferencesStoreMutatorTest, ALabelThatIsNoTextIsKeptAsItWillBeRead) {
    store->setShortcut(leftHalf, {{8, {}}, "C\xFF"});

    EXPECT_EQ(state().shortcuts.at("left").keyLabel, "C\uFFFD");
    EXPECT_EQ(storedState(), state());
}

TEST_F(PreferencesStoreMutatorTest, AShortcutIsRemoved) {
    store->removeShortcut(leftHalf);

    EXPECT_EQ(state(), defaultsWith([](auto& expected) {
                  expected.shortcuts.erase("left");
                  expected.disabledShortcutActions = {"left"};
              }));
    EXPECT_EQ(store->effectiveShortcut(leftHalf), std::nullopt);
}

TEST_F(PreferencesStoreMutatorTest, AnActionIsDisabledOnceHoweverOftenItsShortcutIsRemoved) {
    store->removeShortcut(restore);
    store->removeShortcut(leftHalf);
    store->removeShortcut(restore);

    EXPECT_THAT(state().disabledShortcutActions, ElementsAre("restore", "left"));
}

TEST_F(PreferencesStoreMutatorTest, AllShortcutsAreResetAndNothingElse) {
    store->setShortcut(leftHalf, shortcutWith(8));
    store->removeShortcut(restore);
    store->setInnerGap(4);
    store->addIgnoredApp("a");

    store->resetAllShortcuts();

    EXPECT_EQ(state(), defaultsWith([](auto& expected) {
                  expected.innerGap = 4;
                  expected.ignoredApps = {"a"};
              }));
}

TEST_F(PreferencesStoreMutatorTest, AnAssignedShortcutIsTakenFromTheOthers) {
    store->assignShortcut(leftHalf, shortcutWith(8), std::array{restore, rightHalf});

    EXPECT_EQ(state(), defaultsWith([](auto& expected) {
                  expected.shortcuts["left"] = shortcutWith(8);
                  expected.shortcuts.erase("restore");
                  expected.shortcuts.erase("right");
                  expected.disabledShortcutActions = {"restore", "right"};
              }));
}

TEST_F(PreferencesStoreMutatorTest, AnAssignedShortcutEnablesItsAction) {
    store->removeShortcut(leftHalf);

    store->assignShortcut(leftHalf, shortcutWith(8), std::array{restore, restore, leftHalf});

    EXPECT_EQ(store->effectiveShortcut(leftHalf), shortcutWith(8));
    EXPECT_THAT(state().disabledShortcutActions, ElementsAre("restore"));
}

TEST_F(PreferencesStoreMutatorTest, AssigningAShortcutThatNobodyElseHasTakesNone) {
    store->assignShortcut(leftHalf, shortcutWith(8), {});

    EXPECT_EQ(state(), defaultsWith([](auto& expected) { expected.shortcuts["left"] = shortcutWith(8); }));
}

TEST_F(PreferencesStoreMutatorTest, AnActionGetsTheShortcutOfAnotherStraightFromTheRecord) {
    const KeyboardShortcut longLabel{{8, ShortcutModifiers::control}, "A label too long for a short string"};
    store->setShortcut(rightHalf, longLabel);

    store->assignShortcut(leftHalf, state().shortcuts.at("right"), std::array{rightHalf});

    EXPECT_EQ(store->effectiveShortcut(leftHalf), longLabel);
    EXPECT_EQ(store->effectiveShortcut(rightHalf), std::nullopt);
}

TEST_F(PreferencesStoreMutatorTest, AssigningAShortcutNormalizesTheWholeRecord) {
    for (const std::string_view identifier : {"b", "a"}) store->addIgnoredApp(identifier);
    store->removeShortcut(restore);
    store->removeShortcut(bottomHalf);

    store->assignShortcut(leftHalf, shortcutWith(8), std::array{topHalf, centerWindow});

    EXPECT_THAT(state().ignoredApps, ElementsAre("a", "b"));
    EXPECT_THAT(state().disabledShortcutActions, ElementsAre("bottom", "center", "restore", "top"));
    EXPECT_EQ(storedState(), state());
}

}  // namespace
}  // namespace velmorand

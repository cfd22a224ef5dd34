#include "preferences/PreferencesStore.h"
#include "preferences/PreferencesStoreFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowAction;

/// What the store has when it starts.
class PreferencesStoreLoadTest : public PreferencesStoreFixture {};

const KeyboardShortcut controlC{{8, ShortcutModifiers::control}, "C"};

TEST_F(PreferencesStoreLoadTest, IsKeptUnderItsNameInTheUserDefaults) {
    EXPECT_EQ(PreferencesStore::key, "VelmorandPreferencesState");
}

TEST_F(PreferencesStoreLoadTest, HasTheDefaultsWhenNothingIsStored) {
    EXPECT_EQ(store->current(), defaultPreferencesState());
    EXPECT_THAT(platform.log().lines(), IsEmpty());
}

TEST_F(PreferencesStoreLoadTest, WritesNothingUntilTheFirstChange) {
    advance(std::chrono::hours(1));
    EXPECT_EQ(writeCount(), 0U);
    EXPECT_EQ(storedDocument(), std::nullopt);
    EXPECT_TRUE(platform.runLoop().isIdle());

    store->setEnableAnimations(true);
    EXPECT_EQ(writeCount(), 1U);
}

TEST_F(PreferencesStoreLoadTest, HasWhatIsStored) {
    startWith(R"({"outerPadding":8,"ignoredApps":["org.example.Editor"],"enableAnimations":true})");

    PreferencesState expected = defaultPreferencesState();
    expected.outerPadding = 8;
    expected.ignoredApps = {"org.example.Editor"};
    expected.enableAnimations = true;
    EXPECT_EQ(store->current(), expected);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
}

TEST_F(PreferencesStoreLoadTest, NormalizesWhatIsStored) {
    startWith(R"({"ignoredApps":["b","a","b"],"outerPadding":75,"disabledShortcutActions":["restore","none"]})");

    EXPECT_THAT(store->current().ignoredApps, ElementsAre("a", "b"));
    EXPECT_THAT(store->current().disabledShortcutActions, ElementsAre("restore"));
    EXPECT_EQ(store->current().outerPadding, 50);
}

TEST_F(PreferencesStoreLoadTest, CompletesTheShortcuts) {
    startWith(R"({"shortcuts":{"left":{"keyCode":1},"right":{"keyCode":8,"modifiers":4096,"keyDisplay":"C"}}})");

    EXPECT_EQ(store->current().shortcuts.size(), 19U);
    EXPECT_EQ(store->current().shortcuts.at("left"), metadata(leftHalf).defaultShortcut);
    EXPECT_EQ(store->current().shortcuts.at("right"), controlC);
    EXPECT_THAT(platform.log().lines(), IsEmpty());
}

TEST_F(PreferencesStoreLoadTest, LeavesWhatIsStoredAsItIs) {
    constexpr std::string_view document = R"({"ignoredApps":["b","a","b"],"outerPadding":75,"shortcuts":{}})";
    startWith(document);
    advance(std::chrono::hours(1));

    EXPECT_EQ(storedDocument(), document);
    EXPECT_EQ(writeCount(), 0U);
}

TEST_F(PreferencesStoreLoadTest, HasTheDefaultsAndSaysSoWhenTheSettingsCannotBeDecoded) {
    startWith(R"({"outerPadding":8,"ignoredApps":"x"})");

    EXPECT_EQ(store->current(), defaultPreferencesState());
    EXPECT_THAT(platform.log().lines(),
                ElementsAre(errorLine("Failed to load preferences, using defaults: "
                                      "The value of \"ignoredApps\" is not a list of strings.")));
}

TEST_F(PreferencesStoreLoadTest, HasTheDefaultsAndSaysSoWhenTheDocumentIsNone) {
    startWith("");

    EXPECT_EQ(store->current(), defaultPreferencesState());
    EXPECT_THAT(platform.log().lines(), ElementsAre(errorLine("Failed to load preferences, using defaults: "
                                                              "The document is empty. (at byte 0)")));
}

TEST_F(PreferencesStoreLoadTest, HasTheDefaultsAndSaysSoWhenTheValueCannotBeRead) {
    userDefaults().setReadFailure(UserDefaultsError{"Cannot read the file."});
    restart();

    EXPECT_EQ(store->current(), defaultPreferencesState());
    EXPECT_THAT(platform.log().lines(),
                ElementsAre(errorLine("Failed to load preferences, using defaults: Cannot read the file.")));
}

TEST_F(PreferencesStoreLoadTest, LeavesWhatItCannotDecodeAsItIsUntilTheNextSave) {
    startWith("not a document");
    advance(std::chrono::hours(1));
    EXPECT_EQ(storedDocument(), "not a document");
    EXPECT_EQ(writeCount(), 0U);

    store->setEnableAnimations(true);

    PreferencesState expected = defaultPreferencesState();
    expected.enableAnimations = true;
    EXPECT_EQ(storedState(), expected);
    EXPECT_EQ(platform.log().lines().size(), 1U);
}

TEST_F(PreferencesStoreLoadTest, LooksUnderItsOwnKeyOnly) {
    userDefaults().put("PreferencesState", R"({"outerPadding":8})");
    restart();

    EXPECT_EQ(store->current().outerPadding, 0);
}

TEST_F(PreferencesStoreLoadTest, KeepsARemovedShortcutRemoved) {
    store->removeShortcut(leftHalf);
    restart();

    EXPECT_EQ(store->effectiveShortcut(leftHalf), std::nullopt);
    EXPECT_THAT(store->current().disabledShortcutActions, ElementsAre("left"));
    EXPECT_EQ(store->current().shortcuts.at("left"), metadata(leftHalf).defaultShortcut);
}

TEST_F(PreferencesStoreLoadTest, KeepsEveryChange) {
    store->setOuterPadding(8);
    store->setInnerGap(4.5);
    store->setAnimationDuration(0.25);
    store->setEnableAnimations(true);
    store->setClampToVisibleArea(false);
    store->addIgnoredApp("org.example.Editor");
    store->setShortcut(leftHalf, controlC);
    const PreferencesState changed = store->current();
    restart();

    EXPECT_EQ(store->current(), changed);
    EXPECT_NE(store->current(), defaultPreferencesState());
}

TEST_F(PreferencesStoreLoadTest, SortsTheIgnoredAppsThatWereAddedOneByOne) {
    store->addIgnoredApp("b");
    store->addIgnoredApp("a");
    restart();

    EXPECT_THAT(store->current().ignoredApps, ElementsAre("a", "b"));
}

}  // namespace
}  // namespace velmorand

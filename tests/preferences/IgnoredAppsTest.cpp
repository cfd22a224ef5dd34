#include "preferences/IgnoredApps.h"

#include "preferences/PreferencesStoreFixture.h"

#include <ostream>

namespace velmorand {

void PrintTo(const IgnoredAppDisplay& display, std::ostream* out) {
    *out << display.bundleID << " \"" << display.name << "\" " << (display.icon ? display.icon->name : "no icon");
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IgnoredAppsTest : public PreferencesStoreFixture {
protected:
    IgnoredAppsTest() { restart(); }

    /// Answers the location.
    std::filesystem::path install(const std::string& identifier, const std::string& name = "Application") {
        const std::filesystem::path location = "/Applications/" + identifier;
        platform.workspace().applications().install(location, {identifier, name});
        return location;
    }
    void ignore(const std::vector<std::filesystem::path>& locations) {
        ignoreApplications(locations, *store, platform.workspace(), platform.bundle());
    }
    void ignoreIdentifiers(const std::vector<std::string>& identifiers) { store->addIgnoredApps(identifiers); }
    [[nodiscard]] std::vector<IgnoredAppDisplay> displays() {
        return ignoredAppDisplays(store->current(), platform.workspace());
    }
    [[nodiscard]] const std::vector<std::string>& ignored() { return store->current().ignoredApps; }
};

TEST_F(IgnoredAppsTest, AreNoneAtFirst) {
    EXPECT_THAT(displays(), IsEmpty());
}

TEST_F(IgnoredAppsTest, HaveTheNameAndTheIconOfTheirApplication) {
    const ApplicationIcon icon{ApplicationIcon::Source::file, "/icons/editor.png"};
    platform.workspace().applications().install("/a", {"org.example.Editor", "Text Editor", icon});
    platform.workspace().applications().install("/b", {"org.example.Viewer", "Viewer", std::nullopt});
    ignoreIdentifiers({"org.example.Viewer", "org.example.Editor"});

    EXPECT_THAT(displays(), ElementsAre(IgnoredAppDisplay{"org.example.Editor", "Text Editor", icon},
                                        IgnoredAppDisplay{"org.example.Viewer", "Viewer", std::nullopt}));
}

TEST_F(IgnoredAppsTest, AreListedByTheirIdentifierWhenTheyAreGone) {
    const auto location = install("org.example.Editor", "Editor");
    ignore({location});
    platform.workspace().applications().remove(location);

    EXPECT_THAT(displays(), ElementsAre(IgnoredAppDisplay{"org.example.Editor", "org.example.Editor", std::nullopt}));

    store->removeIgnoredApp("org.example.Editor");
    EXPECT_THAT(displays(), IsEmpty());
}

TEST_F(IgnoredAppsTest, AreSortedByTheBytesOfTheirIdentifiersAndNotByTheirNames) {
    install("b", "First");
    install("é", "Last");
    ignoreIdentifiers({"é", "b", "a", "B", "z", "10", "9"});

    std::vector<std::string> identifiers;
    for (const IgnoredAppDisplay& display : displays()) identifiers.push_back(display.bundleID);

    EXPECT_THAT(identifiers, ElementsAre("10", "9", "B", "a", "b", "z", "é"));
    EXPECT_THAT(ignored(), ElementsAre("é", "b", "a", "B", "z", "10", "9"));
}

TEST_F(IgnoredAppsTest, AreListedOnceEach) {
    PreferencesState state;
    state.ignoredApps = {"b", "a", "b"};

    EXPECT_THAT(ignoredAppDisplays(state, platform.workspace()),
                ElementsAre(IgnoredAppDisplay{"a", "a", std::nullopt}, IgnoredAppDisplay{"b", "b", std::nullopt}));
}

TEST_F(IgnoredAppsTest, OfDifferentLetterCaseAreDifferentEntries) {
    install("org.example.Editor", "Large");
    install("org.example.editor", "Small");

    ignore({"/Applications/org.example.editor", "/Applications/org.example.Editor"});

    EXPECT_THAT(displays(), ElementsAre(IgnoredAppDisplay{"org.example.Editor", "Large", std::nullopt},
                                        IgnoredAppDisplay{"org.example.editor", "Small", std::nullopt}));
    store->removeIgnoredApp("org.example.Editor");
    EXPECT_THAT(ignored(), ElementsAre("org.example.editor"));
}

TEST_F(IgnoredAppsTest, AreAddedEachInThePanelsOrder) {
    ignoreIdentifiers({"m"});

    ignore({install("z"), install("m"), install("a"), install("Z"), install("a")});

    EXPECT_THAT(ignored(), ElementsAre("m", "z", "a", "Z"));
}

TEST_F(IgnoredAppsTest, AreNotAddedWhenTheyAreNoApplicationOrHaveNoIdentifier) {
    platform.workspace().applications().install("/nameless", {.bundleIdentifier = std::nullopt});

    ignore({"/nowhere", "/nameless", "", install("a")});

    EXPECT_THAT(ignored(), ElementsAre("a"));
}

TEST_F(IgnoredAppsTest, NeverHoldThisProgramItself) {
    const std::string own = platform.bundle().identifier().value();

    ignore({install(own)});
    EXPECT_THAT(ignored(), IsEmpty());

    ignore({install("a"), "/Applications/" + own, install("b")});
    EXPECT_THAT(ignored(), ElementsAre("a", "b"));
}

TEST_F(IgnoredAppsTest, HoldAnyApplicationForAProgramWithoutIdentifier) {
    const std::string own = platform.bundle().identifier().value();
    platform.settableBundle().setIdentifier(std::nullopt);

    ignore({install(own), "/nowhere"});

    EXPECT_THAT(ignored(), ElementsAre(own));
}

TEST_F(IgnoredAppsTest, AreAddedWithOneChangeThatIsStoredAtOnceWithWhatWaited) {
    store->setOuterPadding(8);
    watch();
    const std::size_t writesBefore = writeCount();

    ignore({install("a"), install("b")});

    EXPECT_EQ(published.size(), 1U);
    EXPECT_EQ(writeCount(), writesBefore + 1);
    EXPECT_EQ(storedState(), store->current());
    EXPECT_TRUE(platform.runLoop().isIdle());
}

TEST_F(IgnoredAppsTest, AreStoredAtOnceAlsoWhenNothingWasAdded) {
    ignore({install("a")});
    store->setOuterPadding(8);

    ignore({install("a")});

    EXPECT_THAT(ignored(), ElementsAre("a"));
    EXPECT_EQ(storedState(), store->current());
    EXPECT_TRUE(platform.runLoop().isIdle());
}

}  // namespace
}  // namespace velmorand

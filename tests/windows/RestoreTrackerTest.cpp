#include "windows/RestoreTracker.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class RestoreTrackerTest : public testing::Test {
protected:
    using Tracker = RestoreTracker<std::string>;

    static constexpr std::int32_t pid = 501;
    static constexpr Rect before{100, 100, 800, 600};
    static constexpr Rect after{0, 25, 720, 875};

    [[nodiscard]] static Tracker::Date at(std::chrono::system_clock::duration time) { return Tracker::Date{time}; }
    [[nodiscard]] static Tracker::Entry entryUpdatedAt(std::chrono::system_clock::duration time) {
        return {before, after, at(time)};
    }

    /// Prunes and answers the keys that the liveness test was asked about; `alive` is its answer.
    std::vector<std::string> prune(bool alive) {
        std::vector<std::string> asked;
        tracker.prune([&](const std::string& key) {
            asked.push_back(key);
            return alive;
        });
        return asked;
    }

    Tracker::Date now = at(10h);
    Tracker tracker{3600s, [this] { return now; }};
};

TEST_F(RestoreTrackerTest, KnowsNothingAtTheStart) {
    EXPECT_EQ(tracker.restoreFrame(pid, "window"), std::nullopt);
    EXPECT_EQ(tracker.entry(pid, "window"), std::nullopt);
    EXPECT_FALSE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, AnswersTheStoredEntry) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));

    EXPECT_EQ(tracker.restoreFrame(pid, "window"), before);
    EXPECT_EQ(tracker.entry(pid, "window"), entryUpdatedAt(10h));
    EXPECT_TRUE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, ReplacesAnEntryByALaterOne) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));
    tracker.setEntry(pid, "window", Tracker::Entry{{1, 2, 3, 4}, {5, 6, 7, 8}, at(11h)});

    EXPECT_EQ(tracker.entry(pid, "window"), (Tracker::Entry{{1, 2, 3, 4}, {5, 6, 7, 8}, at(11h)}));
}

TEST_F(RestoreTrackerTest, RemovesTheWindowWhenAnAbsentEntryIsStored) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));
    tracker.setEntry(pid, "window", std::nullopt);

    EXPECT_EQ(tracker.entry(pid, "window"), std::nullopt);
    EXPECT_FALSE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, KeepsTheWindowsOfOneApplicationApart) {
    tracker.setEntry(pid, "one", entryUpdatedAt(10h));
    tracker.setEntry(pid, "two", Tracker::Entry{{1, 2, 3, 4}, after, at(10h)});

    EXPECT_EQ(tracker.restoreFrame(pid, "one"), before);
    EXPECT_EQ(tracker.restoreFrame(pid, "two"), (Rect{1, 2, 3, 4}));
}

TEST_F(RestoreTrackerTest, KeepsEqualKeysOfDifferentApplicationsApart) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));

    EXPECT_EQ(tracker.entry(502, "window"), std::nullopt);
    EXPECT_FALSE(tracker.hasEntry(502));
}

TEST_F(RestoreTrackerTest, ForgetsEveryWindowOfAnApplicationAndNoOther) {
    tracker.setEntry(pid, "one", entryUpdatedAt(10h));
    tracker.setEntry(pid, "two", entryUpdatedAt(10h));
    tracker.setEntry(502, "one", entryUpdatedAt(10h));

    tracker.forget(pid);

    EXPECT_FALSE(tracker.hasEntry(pid));
    EXPECT_TRUE(tracker.hasEntry(502));
}

TEST_F(RestoreTrackerTest, PruningKeepsFreshEntriesOfLiveWindows) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));

    EXPECT_THAT(prune(true), ElementsAre("window"));
    EXPECT_EQ(tracker.entry(pid, "window"), entryUpdatedAt(10h));
}

TEST_F(RestoreTrackerTest, PruningDropsAFreshEntryWhoseWindowIsGone) {
    tracker.setEntry(pid, "window", entryUpdatedAt(10h));

    prune(false);

    EXPECT_FALSE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, PruningDropsAnEntryOfExactlyTheLifetimeWithoutAskingWhetherItsWindowIsAlive) {
    tracker.setEntry(pid, "window", entryUpdatedAt(9h));

    EXPECT_THAT(prune(true), IsEmpty());
    EXPECT_FALSE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, PruningKeepsAnEntryThatIsAMomentYoungerThanTheLifetime) {
    tracker.setEntry(pid, "window", entryUpdatedAt(9h + 1ns));

    EXPECT_THAT(prune(true), ElementsAre("window"));
    EXPECT_TRUE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, PruningAsksOnlyAboutEntriesThatHaveNotExpired) {
    tracker.setEntry(pid, "old", entryUpdatedAt(8h));
    tracker.setEntry(pid, "new", entryUpdatedAt(9h + 30min));
    tracker.setEntry(502, "newest", entryUpdatedAt(10h));

    EXPECT_THAT(prune(true), UnorderedElementsAre("new", "newest"));
    EXPECT_EQ(tracker.entry(pid, "old"), std::nullopt);
}

TEST_F(RestoreTrackerTest, AnExpiredEntryCountsUntilTheNextPruning) {
    tracker.setEntry(pid, "window", entryUpdatedAt(9h));
    now = at(100h);

    EXPECT_TRUE(tracker.hasEntry(pid));
    EXPECT_EQ(tracker.restoreFrame(pid, "window"), before);

    prune(true);
    EXPECT_FALSE(tracker.hasEntry(pid));
}

TEST_F(RestoreTrackerTest, UsesTheClockAndTheLifetimeItWasGiven) {
    RestoreTracker<int> brief{2.5s, [this] { return now; }};
    brief.setEntry(pid, 1, RestoreTracker<int>::Entry{before, after, at(10h)});
    brief.setEntry(pid, 2, RestoreTracker<int>::Entry{before, after, at(10h - 1s)});

    now = at(10h + 1500ms);
    brief.prune([](int) { return true; });

    EXPECT_EQ(brief.restoreFrame(pid, 1), before);
    EXPECT_EQ(brief.restoreFrame(pid, 2), std::nullopt);
}

}  // namespace
}  // namespace velmorand

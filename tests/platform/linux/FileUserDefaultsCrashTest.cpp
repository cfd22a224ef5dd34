#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/support/ForkedProcess.h"
#include "platform/linux/support/StoredFiles.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "preferences/PreferencesStateCoding.h"
#include "preferences/PreferencesStore.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <vector>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = ForkedProcess::Clock;
using std::chrono::microseconds;

constexpr std::string_view saving = "saving ";
constexpr std::string_view saved = "saved ";

/// A user's settings on their way through change after change, from a few kilobytes to many.
class ChangingSettings {
public:
    ChangingSettings(PreferencesStore& store, std::uint32_t seed) : store_(store), random_(seed) {}

    /// Changes one setting, which stores them all.
    void change() {
        const auto& apps = store_.current().ignoredApps;
        switch (random_() % 4) {
            case 0:
                store_.setOuterPadding(static_cast<double>(random_() % 500) / 10);
                store_.savePending();
                return;
            case 1: store_.setClampToVisibleArea(!store_.current().clampToVisibleArea); return;
            case 2:
                if (!apps.empty()) return store_.removeIgnoredApp(std::string(apps[random_() % apps.size()]));
                [[fallthrough]];
            case 3:
                if (apps.size() >= 40) return store_.removeIgnoredApp(std::string(apps.front()));
                return store_.addIgnoredApp(std::to_string(random_()) + std::string(random_() % 2000, 'a'));
        }
    }

private:
    PreferencesStore& store_;
    std::mt19937 random_;
};

/// Stores settings until it is killed. Before each save it tells the document, and after it how long that took. Throws
/// when something cannot be loaded or stored.
void storeForever(const fs::path& folder, std::uint32_t seed, int output) {
    FileUserDefaults defaults(folder);
    SimulatedRunLoop runLoop;
    SimulatedLog log;
    PreferencesStore store(defaults, runLoop, log);
    Clock::time_point before;
    const Subscription published = store.state().subscribe([&](const PreferencesState& state) {
        tell(output, fmt::format("{}{}\n", saving, encodePreferencesState(state).value_or("")));
        before = Clock::now();
    });
    ChangingSettings settings(store, seed);
    while (log.lines().empty()) {
        settings.change();
        tell(output, fmt::format("{}{}\n", saved, (Clock::now() - before) / 1us));
    }
    throw std::runtime_error(log.lines().front().text);
}

/// What such a process had told when it was killed.
struct Account {
    /// The documents it was about to save, in order.
    std::vector<std::string> documents;
    std::size_t saves = 0;
    std::vector<microseconds> durations;
};

Account accountOf(std::string_view told) {
    Account account;
    // What follows the last end of a line is half a line.
    for (auto end = told.find('\n'); end != std::string_view::npos; end = told.find('\n')) {
        const std::string_view line = told.substr(0, end);
        told.remove_prefix(end + 1);
        if (line.starts_with(saving)) account.documents.emplace_back(line.substr(saving.size()));
        if (line.starts_with(saved)) account.durations.emplace_back(std::stoll(std::string(line.substr(saved.size()))));
    }
    account.saves = account.durations.size();
    return account;
}

/// How often something happened in all runs.
struct Tally {
    int kills = 0;
    int insideSaves = 0;
    int foundNew = 0;
    int leftovers = 0;
    std::vector<microseconds> durations;
};

/// Processes that store settings, killed one after the other, each going on with what the one before left.
class FileUserDefaultsCrashTest : public testing::Test {
protected:
    /// Lets a process begin a save, or some more, kills it a moment later and looks at the file.
    void killOne() {
        ForkedProcess process([this, seed = static_cast<std::uint32_t>(random_())](int output) {
            storeForever(scratch_.path() / "velmorand", seed, output);
        });
        const std::size_t begun = 1 + random_() % 3;
        const auto hasBegun = [begun](const std::string& told) { return accountOf(told).documents.size() >= begun; };
        ASSERT_TRUE(process.listenUntil(hasBegun, Clock::now() + 20s)) << process.told();
        process.listenUntil([](const std::string&) { return false; }, Clock::now() + randomMoment());
        const int status = process.kill();
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself, status " << status;
        judge(accountOf(process.told()));
    }

    /// A seed to repeat a run with; the moments depend on the machine, too.
    static std::uint32_t chooseSeed() {
        const char* wanted = std::getenv("VELMORAND_TEST_SEED");
        return wanted == nullptr ? std::random_device()() : static_cast<std::uint32_t>(std::stoul(wanted));
    }

    [[nodiscard]] const Tally& tally() const { return tally_; }
    [[nodiscard]] std::uint32_t seed() const { return seed_; }

private:
    /// Half of them are within the first steps of a save, where bytes are written; the others anywhere in one or two.
    microseconds randomMoment() {
        constexpr microseconds firstSteps{500};
        const bool isEarly = random_() % 2 == 0;
        const microseconds longest = isEarly || tally_.durations.empty() ? firstSteps : 2 * tally_.durations.back();
        return microseconds(static_cast<long>(random_()) % (longest.count() + 1));
    }

    void judge(const Account& account) {
        const bool isInsideSave = account.documents.size() > account.saves;
        const std::string before = account.saves > 0 ? account.documents[account.saves - 1] : document_;
        const std::string after = isInsideSave ? account.documents.back() : before;
        const std::string found = contentOf(file_);
        EXPECT_TRUE(found == before || found == after) << "neither the old document nor the new one:\n" << found;
        EXPECT_TRUE(found.empty() || decodePreferencesState(found)) << "not a whole document:\n" << found;
        ++tally_.kills;
        tally_.insideSaves += isInsideSave ? 1 : 0;
        tally_.foundNew += isInsideSave && found == after ? 1 : 0;
        tally_.durations.insert(tally_.durations.end(), account.durations.begin(), account.durations.end());
        document_ = found;
        countLeftovers();
    }

    /// Each is gone with the next save, once it is old enough; so it is made old.
    void countLeftovers() {
        int found = 0;
        for (const auto& entry : fs::directory_iterator(file_.parent_path())) {
            if (entry.path() == file_) continue;
            ++found;
            fs::last_write_time(entry.path(), fs::file_time_type::clock::now() - 2min);
        }
        EXPECT_LE(found, 1) << "what the processes before left is still there";
        tally_.leftovers += found;
    }

    std::uint32_t seed_ = chooseSeed();
    std::mt19937 random_{seed_};
    ScratchFolder scratch_;
    const fs::path file_ = scratch_.path() / "velmorand" / PreferencesStore::key;
    /// What the file held after the last kill; empty before there was one.
    std::string document_;
    Tally tally_;
};

void report(const Tally& tally, std::uint32_t seed) {
    auto durations = tally.durations;
    std::ranges::sort(durations);
    const auto median = durations.empty() ? 0us : durations[durations.size() / 2];
    const auto worst = durations.empty() ? 0us : durations.back();
    const std::string text = fmt::format(
        "seed {}: {} kills, {} of them inside a save; {} found the new document there, {} left a temporary file; "
        "{} saves finished, median {} us, worst {} us",
        seed, tally.kills, tally.insideSaves, tally.foundNew, tally.leftovers, durations.size(), median.count(),
        worst.count());
    std::printf("%s\n", text.c_str());
    testing::Test::RecordProperty("tally", text);
}

TEST_F(FileUserDefaultsCrashTest, AKilledProcessLeavesTheOldDocumentOrTheNewOneWhole) {
    const int kills = std::getenv("VELMORAND_LONG_TESTS") == nullptr ? 200 : 2000;

    for (int i = 0; i < kills && !HasFailure(); ++i) killOne();

    report(tally(), seed());
    EXPECT_GT(tally().insideSaves, 0) << "no kill fell between the beginning and the end of a save";
}

}  // namespace
}  // namespace velmorand

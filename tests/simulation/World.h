#pragma once

#include "app/AppDelegate.h"
#include "base/Subscription.h"
#include "preferences/PreferencesStore.h"
#include "shortcuts/KeyboardShortcut.h"
#include "simulation/Random.h"
#include "simulation/Scenario.h"
#include "simulation/Step.h"
#include "simulation/WatchedPlatform.h"
#include "support/NotedSettingsWindows.h"
#include "windows/WindowAction.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace velmorand::simulation {

/// The whole program on a watched desktop in memory, and the user in front of it.
class World {
public:
    explicit World(const Scenario& scenario);

    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    /// Does what the step says and lets everything happen that is due then. What happened is on the tape.
    void apply(const Step& step);

    [[nodiscard]] WatchedPlatform& platform() { return platform_; }
    [[nodiscard]] AppDelegate& program() { return *program_; }
    [[nodiscard]] Moment now() { return {platform_.runLoop().now(), platform_.runLoop().date()}; }

    /// The instant before the last step, and that until which everything due has had its turn.
    [[nodiscard]] Moment stepBegin() const { return stepBegin_; }
    [[nodiscard]] MonotonicTime settled() const { return settled_; }
    /// The actions that the user asked for in the last step, in order.
    [[nodiscard]] const std::vector<WindowAction>& requested() const { return requested_; }
    /// What was done in the last step, for people; empty when nothing was.
    [[nodiscard]] const std::string& account() const { return account_; }

    /// Every number that an application ever had.
    [[nodiscard]] const std::set<std::int32_t>& everyPid() const { return everyPid_; }
    /// The combinations, key and modifiers, that other programs hold.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;
    [[nodiscard]] const std::set<Combination>& taken() const { return taken_; }

    /// How often the settings were published, and when they were last.
    [[nodiscard]] std::uint64_t publications() const { return publications_; }
    [[nodiscard]] MonotonicTime publishedAt() const { return publishedAt_; }
    /// How often the settings had been published when something last could not be stored.
    [[nodiscard]] std::uint64_t publicationsWhenStoringFailed() const { return publicationsWhenStoringFailed_; }
    /// How often the recording of a shortcut ended.
    [[nodiscard]] std::uint64_t recordingsEnded() const { return recordingsEnded_; }
    /// How often the program was started.
    [[nodiscard]] int starts() const { return starts_; }
    /// How many hot keys and handlers were left when the program ended last.
    [[nodiscard]] std::size_t leftBehind() const { return leftBehind_; }
    /// The menu as it was opened in the last step, with what counted at that moment.
    struct ShownMenu {
        std::vector<MenuItem> items;
        bool trusted = false;
        std::optional<RunningApplication> frontmost;
        Date date;
        /// Whether an action was chosen.
        bool chosen = false;
    };
    [[nodiscard]] const std::optional<ShownMenu>& shownMenu() const { return shownMenu_; }
    /// What the user was told last, and when.
    struct Told {
        std::uint64_t number = 0;
        std::string message;
        Moment at;
    };
    [[nodiscard]] const std::optional<Told>& told() const { return told_; }
    /// Whether the user lets the program notify them.
    [[nodiscard]] bool allowsNotifications() const { return allowsNotifications_; }
    /// The user set the clock in the last step.
    [[nodiscard]] bool clockWasSet() const { return clockWasSet_; }

private:
    [[nodiscard]] SimulatedDesktop& desktop() { return platform_.desktop(); }
    [[nodiscard]] SimulatedRunLoop& runLoop() { return platform_.runLoop(); }
    [[nodiscard]] PreferencesStore& store() { return *program_->preferencesStore(); }

    void startProgram();
    void endProgram();
    std::int32_t startApplication(const ApplicationPlan& plan, Random& random);
    void settle(Duration span = Duration::zero());
    void did(std::string what) { account_ = std::move(what); }

    void noteStoring();
    void play(const Step& step, Random& random);
    [[nodiscard]] std::optional<SimulatedWindowID> windowFor(const Step& step);
    [[nodiscard]] std::optional<std::int32_t> applicationFor(const Step& step);

    void perform(WindowAction action);
    void press(WindowAction action);
    void chooseFromMenu(WindowAction action);
    void setClock(Random& random);

    void nudgeWindow(const Step& step, Random& random);
    void moveWindow(const Step& step, Random& random);
    void changeWindow(const Step& step, Random& random);
    void focusWindow(const Step& step, Random& random);
    void openWindow(const Step& step, Random& random);
    void closeWindow(const Step& step);
    void switchApplication(const Step& step, Random& random);
    void quitApplication(const Step& step, Random& random);
    void announceEnd(const Step& step);
    void freezeApplication(const Step& step);
    void slowApplication(const Step& step, Random& random);
    void interrupt(const Step& step, Random& random);
    void happenInTheMiddle(const Step& step);
    void hesitate();
    void tellOfEnd(std::int32_t pid);
    void changeDisplays(std::vector<DisplayDescription> displays);
    void changeTrust(Random& random);

    void slideSetting(const Step& step, Random& random);
    void switchSetting(const Step& step);
    void ignoreApplication(Random& random);
    void changeShortcut(const Step& step, Random& random);
    void record(const Step& step, Random& random);
    void answerRecorder(Random& random);
    void takeCombination(Random& random);
    void failStoring();

    WatchedPlatform platform_;
    NotedSettingsWindows settingsWindows_;
    std::shared_ptr<AppDelegate> program_;
    Subscription publishing_;
    Subscription recording_;
    std::set<std::int32_t> pids_;
    std::set<std::int32_t> everyPid_;
    std::set<Combination> taken_;
    std::vector<WindowAction> requested_;
    std::string account_;
    Moment stepBegin_;
    MonotonicTime settled_;
    std::uint64_t publications_ = 0;
    MonotonicTime publishedAt_;
    bool storingFails_ = false;
    std::uint64_t publicationsWhenStoringFailed_ = 0;
    std::uint64_t recordingsEnded_ = 0;
    int starts_ = 0;
    std::size_t leftBehind_ = 0;
    bool clockWasSet_ = false;
    bool allowsNotifications_ = true;
    std::optional<ShownMenu> shownMenu_;
    std::uint64_t tellings_ = 0;
    std::optional<Told> told_;
};

}  // namespace velmorand::simulation

#pragma once

#include "preferences/PreferencesState.h"
#include "simulation/GeometryModel.h"
#include "simulation/MemoryModel.h"
#include "simulation/TapeReader.h"
#include "simulation/WindowModel.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmorand::simulation {

/// What the model knows of the world besides the tape. It does not change while a tape is read.
struct ModelFacts {
    const PreferencesState& preferences;
    const std::vector<DisplayDescription>& displays;
    const std::optional<std::string>& ownIdentifier;
};

/// What became of a window, for those who judge from the user's side.
struct Happening {
    enum class Kind : std::uint8_t {
        moveBegun,     ///< an arrangement was written at once or its animation began; `frame` is where it goes
        moveEnded,     ///< it is over and landed, or it was one at once; `frame` is where the window is
        moveLost,      ///< it was refused, failed or stopped in the middle
        returnBegun,   ///< the same for a restore
        returnLanded,  ///< the window is back
        returnLost,
        returnRefused,  ///< nothing was remembered
        forgotten,      ///< the window did not answer or its application was told to have ended
    };
    Kind kind{};
    SimulatedWindowID window{};
    Rect frame;
    Moment at;
    /// Where the window was seen when the action began; absent for what is not an action.
    std::optional<Rect> seen;
    bool animated = false;
};

/// The window manager written down a second time, as plainly as possible. It is given the answers that the program got
/// and says what the program had to do with them: every call, every written frame, every sentence for the user.
class ManagerModel {
public:
    /// Reads what happened since the last time. Breaks an invariant where it is not what had to happen. `settled`: the
    /// instant until which everything that was due has had its turn; `begin`: the moment at which the tape begins.
    void read(std::span<const TapedEvent> tape, const ModelFacts& facts, Moment begin, MonotonicTime settled);

    /// What happened on the last tape, in order.
    [[nodiscard]] const std::vector<Happening>& happenings() const { return happenings_; }
    /// Whether the desktop changed in the middle of a call on the last tape.
    [[nodiscard]] bool sawInterruption() const { return sawInterruption_; }
    [[nodiscard]] bool hasEntry(std::int32_t pid) const { return memory_.hasEntry(pid); }
    /// Whether the last action on the tape was refused.
    [[nodiscard]] bool lastWasRefused() const { return lastWasRefused_; }
    /// How many windows are remembered.
    [[nodiscard]] std::size_t remembered() const { return memory_.entries.size(); }

private:
    struct Subject {
        std::int32_t pid = 0;
        SimulatedWindowID window{};
        Rect current;
    };
    struct Animation {
        std::int32_t pid = 0;
        Rect start = {};
        Rect target = {};
        Moment begin = {};
        double duration = 0;
        MonotonicTime due = {};
        int failuresInARow = 0;
        /// Of a move.
        Rect source = {};
        bool isReturn = false;
        /// Of a return that took it, to be put back if it does not land.
        std::optional<ModelAnchor> anchor = {};
    };
    using Refusal = std::optional<std::string>;
    enum class Ending : std::uint8_t { landed, failed, cancelled };

    void readPerform(const TapedPerform& perform);
    Refusal act(WindowAction action);
    Refusal requireTrust();
    void prune();
    [[nodiscard]] Refusal chooseSubject(Subject& subject);
    Refusal move(const Subject& subject, const Rect& target);
    Refusal moveAtOnce(const Subject& subject, const Rect& source, const Rect& target);
    Refusal moveAnimated(const Subject& subject, const Rect& source, const Rect& target);
    Refusal restore(const Subject& subject);
    Refusal returnAtOnce(const Subject& subject, const Rect& target, const std::optional<ModelAnchor>& anchor);
    void startAnimation(SimulatedWindowID window, Animation animation);
    void readTick(SimulatedWindowID window);
    void finish(SimulatedWindowID window);
    void end(SimulatedWindowID window, Ending ending, const std::string& message = {});
    void readTermination(std::int32_t pid);
    void endAll();
    [[nodiscard]] bool animates();
    void expectTold(std::string_view message);
    void note(Happening::Kind kind, SimulatedWindowID window, const Rect& frame, bool animated = false);
    [[nodiscard]] std::vector<ModelScreen> screens() const { return modelScreens(facts_->displays); }

    MemoryModel memory_;
    std::map<SimulatedWindowID, Animation> animations_;
    std::vector<Happening> happenings_;
    bool sawInterruption_ = false;
    bool lastWasRefused_ = false;
    // While a tape is read.
    TapeReader* tape_ = nullptr;
    const ModelFacts* facts_ = nullptr;
    const TapedPerform* performing_ = nullptr;
};

}  // namespace velmorand::simulation

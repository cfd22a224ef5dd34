#pragma once

#include "simulation/GeometryModel.h"
#include "simulation/ManagerModel.h"

#include <map>
#include <optional>
#include <span>

namespace velmorand::simulation {

/// Follows each window from the user's side: where it was before a chain of arrangements, and whether a restore brings
/// it back there. It knows nothing of how the program remembers; where a chain is not one of those that the promise is
/// about, it holds its tongue until a restore has landed.
class RestoreStories {
public:
    /// Breaks the invariant "restore" where something did not happen as promised. `clamps` and `displays`: as they were.
    void follow(std::span<const Happening> happenings, bool clamps, const std::vector<DisplayDescription>& displays);

    /// Something happened that makes all chains such that nothing is promised.
    void loseAll();

    /// The program was started again and knows of nothing.
    void startAgain() { stories_.clear(); }

    /// How many restores were judged.
    [[nodiscard]] std::uint64_t judged() const { return judged_; }

private:
    struct Story {
        /// Where the window was before the chain.
        Rect origin;
        /// Where the last arrangement that ended left it, and when.
        std::optional<Rect> placed;
        Date placedAt;
        /// Where the window was before the first of the arrangements that are still on their way.
        std::optional<Rect> before;
        bool isReturning = false;
        /// Nothing is promised.
        bool isLost = false;
    };

    void beginMove(const Happening& happening);
    void endMove(const Happening& happening);
    void beginReturn(const Happening& happening, bool clamps, const std::vector<DisplayDescription>& displays);
    void refuseReturn(const Happening& happening);
    void forget(SimulatedWindowID window);
    enum class Age : std::uint8_t { fresh, unclear, expired };
    [[nodiscard]] static Age ageOf(const Story& story, const Happening& happening);

    std::map<SimulatedWindowID, Story> stories_;
    std::uint64_t judged_ = 0;
};

}  // namespace velmorand::simulation

#include "simulation/StorageJudge.h"

#include "preferences/PreferencesStateCoding.h"
#include "simulation/Broken.h"

namespace velmorand::simulation {
namespace {

constexpr Duration longestDelay = std::chrono::milliseconds(250);

}  // namespace

void StorageJudge::judge(World& world) {
    const PreferencesState& settings = world.program().preferencesStore()->current();
    const bool couldStore = world.publications() > world.publicationsWhenStoringFailed();
    if (starts_ != world.starts()) {
        starts_ = world.starts();
        if (couldStore && settings_ && completed(normalized(*settings_)) != settings)
            throw Broken{"storage", "the settings after a start are not those before the end"};
    }
    settings_ = settings;
    if (!couldStore || judgedPublications_ == world.publications()) return;
    if (world.settled() < world.publishedAt() + longestDelay) return;
    judgedPublications_ = world.publications();
    const auto stored = world.platform().userDefaults().data(PreferencesStore::key).value_or(std::nullopt);
    if (!stored) throw Broken{"storage", "nothing is stored"};
    const auto decoded = decodePreferencesState(*stored);
    if (!decoded || completed(*decoded) != completed(normalized(settings)))
        throw Broken{"storage", "what is stored is not what counts: " + *stored};
}

}  // namespace velmorand::simulation

#include "simulation/RestoreStories.h"

#include "simulation/Broken.h"

#include <fmt/format.h>

namespace velmorand::simulation {
namespace {

constexpr std::chrono::hours memoryLasts{1};

std::string nameOf(const Happening& happening) {
    return describe(Element(happening.window));
}

}  // namespace

void RestoreStories::loseAll() {
    for (auto& [window, story] : stories_) story.isLost = true;
}

void RestoreStories::follow(std::span<const Happening> happenings, bool clamps,
                            const std::vector<DisplayDescription>& displays) {
    for (const Happening& happening : happenings) {
        switch (happening.kind) {
            case Happening::Kind::moveBegun: beginMove(happening); break;
            case Happening::Kind::moveEnded: endMove(happening); break;
            case Happening::Kind::returnBegun: beginReturn(happening, clamps, displays); break;
            case Happening::Kind::returnLanded: stories_.erase(happening.window); break;
            case Happening::Kind::returnRefused: refuseReturn(happening); break;
            case Happening::Kind::forgotten: forget(happening.window); break;
            case Happening::Kind::moveLost:
            case Happening::Kind::returnLost: stories_[happening.window].isLost = true; break;
        }
    }
}

/// Nothing is remembered of the window any more, unless it is on its way.
void RestoreStories::forget(SimulatedWindowID window) {
    const auto found = stories_.find(window);
    if (found == stories_.end()) return;
    Story& story = found->second;
    if (story.before || story.isReturning) story.isLost = true;
    if (!story.isLost) stories_.erase(found);
}

/// Around the hour itself nothing is said.
RestoreStories::Age RestoreStories::ageOf(const Story& story, const Happening& happening) {
    if (!story.placed) return Age::fresh;
    const auto age = happening.at.date - story.placedAt;
    if (age < memoryLasts - std::chrono::minutes(1)) return Age::fresh;
    return age < memoryLasts + std::chrono::minutes(1) ? Age::unclear : Age::expired;
}

void RestoreStories::beginMove(const Happening& happening) {
    Story& story = stories_.try_emplace(happening.window).first->second;
    const Age age = ageOf(story, happening);
    if (!happening.seen || story.isReturning || age == Age::unclear) story.isLost = true;
    if (story.isLost || story.before) return;
    const bool staysInChain = age == Age::fresh && story.placed && modelSame(*story.placed, *happening.seen);
    if (!staysInChain) story.origin = *happening.seen;
    story.before = *happening.seen;
}

void RestoreStories::endMove(const Happening& happening) {
    Story& story = stories_[happening.window];
    story.placed = happening.frame;
    story.placedAt = happening.at.date;
    story.before.reset();
}

void RestoreStories::beginReturn(const Happening& happening, bool clamps,
                                 const std::vector<DisplayDescription>& displays) {
    const auto found = stories_.find(happening.window);
    if (found == stories_.end())
        throw Broken{"restore", fmt::format("{} is put back, but nothing arranged it", nameOf(happening))};
    Story& story = found->second;
    const Age age = story.before ? Age::fresh : ageOf(story, happening);
    if (story.isReturning || age == Age::unclear) story.isLost = true;
    story.isReturning = true;
    if (story.isLost) return;
    if (age == Age::expired)
        throw Broken{"restore", fmt::format("{} is put back after more than an hour", nameOf(happening))};
    const Rect wanted = modelReturn(story.before.value_or(story.origin), clamps, modelScreens(displays));
    if (wanted != happening.frame)
        throw Broken{"restore", fmt::format("{} is put back to {}, but was at {} before", nameOf(happening),
                                            describe(happening.frame), describe(wanted))};
    ++judged_;
}

void RestoreStories::refuseReturn(const Happening& happening) {
    const auto found = stories_.find(happening.window);
    if (found == stories_.end() || found->second.isLost || found->second.isReturning) return;
    const Story& story = found->second;
    if (story.before || (story.placed && ageOf(story, happening) == Age::fresh))
        throw Broken{"restore", fmt::format("{} is not put back to {}", nameOf(happening), describe(story.origin))};
}

}  // namespace velmorand::simulation

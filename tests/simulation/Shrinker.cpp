#include "simulation/Shrinker.h"

#include <algorithm>
#include <cstddef>

namespace velmorand::simulation {
namespace {

std::vector<Step> without(const std::vector<Step>& steps, std::size_t first, std::size_t count) {
    std::vector<Step> rest;
    rest.reserve(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (i < first || i >= first + count) rest.push_back(steps[i]);
    }
    return rest;
}

}  // namespace

std::vector<Step> shrunk(std::vector<Step> steps, const std::function<bool(const std::vector<Step>&)>& fails) {
    std::size_t count = std::max<std::size_t>(1, steps.size() / 2);
    while (true) {
        bool anyLeftOut = false;
        // From the end, as what is late often matters least.
        for (std::size_t end = steps.size(); end > 0; end -= std::min(end, count)) {
            const std::size_t first = end - std::min(end, count);
            auto rest = without(steps, first, end - first);
            if (!fails(rest)) continue;
            steps = std::move(rest);
            anyLeftOut = true;
        }
        if (count == 1 && !anyLeftOut) return steps;
        if (!anyLeftOut || count > steps.size()) count = std::max<std::size_t>(1, count / 2);
    }
}

}  // namespace velmorand::simulation

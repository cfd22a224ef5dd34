#include "simulation/Shrinker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace velmorand::simulation {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Step> hundredSteps() {
    std::vector<Step> steps;
    for (std::uint32_t i = 0; i < 100; ++i) steps.push_back({.kind = StepKind::perform, .subject = i});
    return steps;
}

bool contains(const std::vector<Step>& steps, std::uint32_t subject) {
    return std::ranges::find(steps, subject, &Step::subject) != steps.end();
}

TEST(ShrinkerTest, LeavesOnlyTheStepsThatMatterInTheirOrder) {
    const auto fewest = shrunk(hundredSteps(), [](const std::vector<Step>& steps) {
        return contains(steps, 17) && contains(steps, 18) && contains(steps, 93);
    });

    EXPECT_THAT(fewest, ElementsAre(testing::Field(&Step::subject, 17), testing::Field(&Step::subject, 18),
                                    testing::Field(&Step::subject, 93)));
}

TEST(ShrinkerTest, LeavesNothingOfWhatFailsByItself) {
    EXPECT_THAT(shrunk(hundredSteps(), [](const std::vector<Step>&) { return true; }), IsEmpty());
}

TEST(ShrinkerTest, LeavesEverythingWhereEveryStepMatters) {
    EXPECT_EQ(shrunk(hundredSteps(), [](const std::vector<Step>& steps) { return steps.size() == 100; }),
              hundredSteps());
}

}  // namespace
}  // namespace velmorand::simulation

#include "settings/SliderRule.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

struct RoundingCase {
    const SliderRule& rule;
    double value;
    double rounded;
};

TEST(SliderRuleTest, GoesToTheNearestStepWithinTheLimits) {
    const RoundingCase cases[] = {
        {animationDurationRule, 0.153, 0.15},
        {animationDurationRule, 0.156, 0.16},
        {animationDurationRule, 0.05, 0.05},
        {animationDurationRule, 0.29, 0.29},
        {animationDurationRule, 0.57, 0.5},
        {animationDurationRule, -1, 0.05},
        {outerPaddingRule, 11.5, 12},
        {outerPaddingRule, 11.4, 11},
        {outerPaddingRule, 50.3, 50},
        {outerPaddingRule, -0.4, 0},
        {innerGapRule, 7.9, 8},
        {innerGapRule, 1000, 50},
    };
    for (const RoundingCase& given : cases) EXPECT_EQ(given.rule.rounded(given.value), given.rounded) << given.value;
}

TEST(SliderRuleTest, EveryStepOfTheDurationIsTheNumberOneWouldWrite) {
    for (int hundredths = 5; hundredths <= 50; ++hundredths)
        EXPECT_EQ(animationDurationRule.rounded(0.05 + (hundredths - 5) * 0.01), hundredths / 100.0);
}

TEST(SliderRuleTest, HasTheRangesAndStepsOfThePreferences) {
    EXPECT_EQ(animationDurationRule.limit.lowest, 0.05);
    EXPECT_EQ(animationDurationRule.limit.highest, 0.5);
    EXPECT_EQ(animationDurationRule.step(), 0.01);
    EXPECT_EQ(outerPaddingRule.limit.lowest, 0);
    EXPECT_EQ(outerPaddingRule.limit.highest, 50);
    EXPECT_EQ(outerPaddingRule.step(), 1);
    EXPECT_EQ(innerGapRule.limit.highest, 50);
    EXPECT_EQ(innerGapRule.step(), 1);
}

TEST(SliderRuleTest, WritesSecondsWithTwoDecimalsAndPixelsWithNone) {
    EXPECT_EQ(animationDurationRule.text(0.15), "0.15 s");
    EXPECT_EQ(animationDurationRule.text(0.5), "0.50 s");
    EXPECT_EQ(animationDurationRule.text(0.1537), "0.15 s");
    EXPECT_EQ(outerPaddingRule.text(0), "0 px");
    EXPECT_EQ(innerGapRule.text(12), "12 px");
    EXPECT_EQ(innerGapRule.text(12.5), "12 px");
}

}  // namespace
}  // namespace velmorand

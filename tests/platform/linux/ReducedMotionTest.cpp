#include "platform/linux/ReducedMotion.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

class SettableSource final : public MotionSource {
public:
    explicit SettableSource(std::optional<bool> first) : said(first) {}

    [[nodiscard]] std::optional<bool> reducesMotion() override { return said; }

    std::optional<bool> said;
};

TEST(ReducedMotionTest, IsNotWantedWhereNobodySays) {
    SettableSource silent(std::nullopt);

    EXPECT_FALSE(ReducedMotion({}).isWanted());
    EXPECT_FALSE(ReducedMotion({&silent, &silent}).isWanted());
}

TEST(ReducedMotionTest, TheFirstThatSaysCounts) {
    SettableSource silent(std::nullopt);
    SettableSource wants(true);
    SettableSource doesNot(false);

    EXPECT_TRUE(ReducedMotion({&wants, &doesNot}).isWanted());
    EXPECT_FALSE(ReducedMotion({&doesNot, &wants}).isWanted());
    EXPECT_TRUE(ReducedMotion({&silent, &wants, &doesNot}).isWanted());
    EXPECT_FALSE(ReducedMotion({&silent, &doesNot, &wants}).isWanted());
}

TEST(ReducedMotionTest, FollowsItsSources) {
    SettableSource first(std::nullopt);
    SettableSource second(true);
    const ReducedMotion reducedMotion({&first, &second});
    ASSERT_TRUE(reducedMotion.isWanted());

    first.said = false;
    EXPECT_FALSE(reducedMotion.isWanted());

    first.said.reset();
    second.said = false;
    EXPECT_FALSE(reducedMotion.isWanted());
}

}  // namespace
}  // namespace velmorand

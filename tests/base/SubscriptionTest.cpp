#include "base/Subscription.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmorand {
namespace {

TEST(Subscription, EndsWhenItDies) {
    int ends = 0;
    {
        const Subscription subscription([&ends] { ++ends; });
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST(Subscription, EndsOnceWhenItIsCancelledMoreThanOnce) {
    int ends = 0;
    {
        Subscription subscription([&ends] { ++ends; });
        subscription.cancel();
        EXPECT_EQ(ends, 1);
        subscription.cancel();
    }
    EXPECT_EQ(ends, 1);
}

TEST(Subscription, LivesOnInTheObjectItIsMovedTo) {
    int ends = 0;
    Subscription first([&ends] { ++ends; });
    {
        const Subscription second(std::move(first));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST(Subscription, EndsWhenAnotherIsAssignedToIt) {
    int firstEnds = 0;
    int secondEnds = 0;
    Subscription subscription([&firstEnds] { ++firstEnds; });

    subscription = Subscription([&secondEnds] { ++secondEnds; });

    EXPECT_EQ(firstEnds, 1);
    EXPECT_EQ(secondEnds, 0);
}

TEST(Subscription, SurvivesBeingAssignedToItself) {
    int ends = 0;
    Subscription subscription([&ends] { ++ends; });
    Subscription& itself = subscription;

    subscription = std::move(itself);
    EXPECT_EQ(ends, 0);

    subscription.cancel();
    EXPECT_EQ(ends, 1);
}

TEST(Subscription, StandsForNothingByDefault) {
    int ends = 0;
    Subscription subscription;
    subscription.cancel();

    subscription = Subscription([&ends] { ++ends; });
    subscription.cancel();

    EXPECT_EQ(ends, 1);
}

TEST(Subscription, MayBeCancelledByItsOwnEnd) {
    int ends = 0;
    Subscription subscription;
    subscription = Subscription([&] {
        ++ends;
        subscription.cancel();
    });

    subscription.cancel();

    EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace velmorand

#include "base/Published.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PublishedTest : public testing::Test {
protected:
    /// A subscriber that notes its name and the value.
    [[nodiscard]] Published<int>::Callback note(const std::string& name) {
        return [this, name](int value) { told.push_back(name + std::to_string(value)); };
    }

    std::vector<std::string> told;
    Published<int> published{1};
};

TEST_F(PublishedTest, HoldsItsInitialValue) {
    EXPECT_EQ(published.value(), 1);
    EXPECT_EQ(Published<int>().value(), 0);
}

TEST_F(PublishedTest, TellsSubscribersInTheOrderOfTheirSubscription) {
    const Subscription a = published.subscribe(note("a"));
    const Subscription b = published.subscribe(note("b"));

    published.set(2);

    EXPECT_EQ(published.value(), 2);
    EXPECT_THAT(told, ElementsAre("a2", "b2"));
}

TEST_F(PublishedTest, DoesNotTellANewSubscriberTheCurrentValue) {
    published.set(2);

    const Subscription a = published.subscribe(note("a"));

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PublishedTest, PublishesAlsoAValueThatStaysEqual) {
    const Subscription a = published.subscribe(note("a"));

    published.set(1);
    published.modify([](int&) {});

    EXPECT_THAT(told, ElementsAre("a1", "a1"));
}

TEST_F(PublishedTest, PublishesAModificationOnce) {
    const Subscription a = published.subscribe(note("a"));

    published.modify([](int& value) {
        value += 10;
        value += 100;
    });

    EXPECT_EQ(published.value(), 111);
    EXPECT_THAT(told, ElementsAre("a111"));
}

TEST_F(PublishedTest, DoesNotTellASubscriberWhoseSubscriptionHasEnded) {
    Subscription a = published.subscribe(note("a"));
    const Subscription b = published.subscribe(note("b"));

    a.cancel();
    published.set(2);

    EXPECT_THAT(told, ElementsAre("b2"));
}

TEST_F(PublishedTest, DeliversAChangeMadeInsideANotificationAfterTheRunningRound) {
    const Subscription a = published.subscribe([this](int value) {
        told.push_back("a" + std::to_string(value));
        if (value == 2) published.set(3);
    });
    const Subscription b = published.subscribe(note("b"));

    published.set(2);

    EXPECT_THAT(told, ElementsAre("a2", "b2", "a3", "b3"));
}

TEST_F(PublishedTest, ShowsTheNewestValueWhileAnOlderOneIsDelivered) {
    std::vector<int> current;
    const Subscription a = published.subscribe([this](int value) {
        if (value == 2) published.set(3);
    });
    const Subscription b = published.subscribe([&](int) { current.push_back(published.value()); });

    published.set(2);

    EXPECT_THAT(current, ElementsAre(3, 3));
}

TEST_F(PublishedTest, DoesNotTellASubscriberThatIsRemovedDuringTheRound) {
    Subscription b;
    const Subscription a = published.subscribe([&](int value) {
        told.push_back("a" + std::to_string(value));
        b.cancel();
    });
    b = published.subscribe(note("b"));

    published.set(2);

    EXPECT_THAT(told, ElementsAre("a2"));
}

TEST_F(PublishedTest, LetsASubscriberRemoveItself) {
    Subscription a;
    a = published.subscribe([&](int value) {
        told.push_back("a" + std::to_string(value));
        a.cancel();
    });
    const Subscription b = published.subscribe(note("b"));

    published.set(2);
    published.set(3);

    EXPECT_THAT(told, ElementsAre("a2", "b2", "b3"));
}

TEST_F(PublishedTest, TellsASubscriberAddedDuringARoundOnlyLaterChanges) {
    Subscription late;
    const Subscription a = published.subscribe([&](int value) {
        told.push_back("a" + std::to_string(value));
        if (value == 2) late = published.subscribe(note("late"));
    });

    published.set(2);
    EXPECT_THAT(told, ElementsAre("a2"));

    published.set(3);
    EXPECT_THAT(told, ElementsAre("a2", "a3", "late3"));
}

TEST_F(PublishedTest, DoesNotTellASubscriberAChangeFromBeforeItsSubscriptionThatIsStillToBeDelivered) {
    Subscription late;
    const Subscription a = published.subscribe([&](int value) {
        told.push_back("a" + std::to_string(value));
        if (value != 2) return;
        published.set(3);
        late = published.subscribe(note("late"));
        published.set(4);
    });

    published.set(2);

    EXPECT_THAT(told, ElementsAre("a2", "a3", "a4", "late4"));
}

TEST_F(PublishedTest, ASubscriptionMayOutliveThePublisher) {
    auto shortLived = std::make_unique<Published<int>>(1);
    Subscription subscription = shortLived->subscribe(note("a"));
    shortLived->set(2);
    shortLived.reset();

    subscription.cancel();

    EXPECT_THAT(told, ElementsAre("a2"));
}

TEST_F(PublishedTest, ASubscriberMayDestroyThePublisher) {
    auto shortLived = std::make_unique<Published<int>>(1);
    const Subscription a = shortLived->subscribe([&](int value) {
        told.push_back("a" + std::to_string(value));
        shortLived.reset();
    });
    const Subscription b = shortLived->subscribe(note("b"));

    shortLived->set(2);

    EXPECT_THAT(told, ElementsAre("a2", "b2"));
    EXPECT_EQ(shortLived, nullptr);
}

}  // namespace
}  // namespace velmorand

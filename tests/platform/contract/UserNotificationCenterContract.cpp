#include "platform/UserNotificationCenter.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

void UserNotificationCenterContract::SetUp() {
    VELMORAND_NEEDS(Ability::showNotifications);
    desktop->allowNotifications();
}

void UserNotificationCenterContract::add(const std::string& identifier, const std::string& title,
                                         const std::string& body) {
    center().add({identifier, {title, body, false}},
                 [this](const std::expected<void, UserNotificationError>& result) { results.push_back(result); });
}

bool UserNotificationCenterContract::allShown(std::size_t count) {
    return desktop->runUntil([&] { return results.size() >= count; }, deadline) && results.size() == count &&
           std::ranges::all_of(results, [](const auto& result) { return result.has_value(); });
}

TEST_P(UserNotificationCenterContract, AreAuthorizedWhereTheyAreShown) {
    std::vector<NotificationAuthorization> answers;
    center().notificationSettings([&](NotificationAuthorization answer) { answers.push_back(answer); });
    EXPECT_THAT(answers, IsEmpty()) << "not inside the call";

    EXPECT_TRUE(desktop->runUntil([&] { return !answers.empty(); }, deadline));
    EXPECT_THAT(answers, ElementsAre(NotificationAuthorization::authorized));
}

TEST_P(UserNotificationCenterContract, AreGrantedWhereTheyAreShown) {
    std::vector<bool> answers;
    center().requestAuthorization({.alert = true, .sound = true}, [&](bool granted) { answers.push_back(granted); });
    EXPECT_THAT(answers, IsEmpty()) << "not inside the call";

    EXPECT_TRUE(desktop->runUntil([&] { return !answers.empty(); }, deadline));
    EXPECT_THAT(answers, ElementsAre(true));
}

TEST_P(UserNotificationCenterContract, AreNotShownWithoutAuthorization) {
    VELMORAND_NEEDS(Ability::denyNotifications);
    desktop->denyNotifications();
    std::vector<NotificationAuthorization> settings;
    std::vector<bool> granted;

    center().notificationSettings([&](NotificationAuthorization answer) { settings.push_back(answer); });
    center().requestAuthorization({}, [&](bool answer) { granted.push_back(answer); });
    add("first", "Title", "Body");
    ASSERT_TRUE(desktop->runUntil([&] { return settings.size() + granted.size() + results.size() == 3; }, deadline));

    EXPECT_THAT(settings, ElementsAre(NotificationAuthorization::denied));
    EXPECT_THAT(granted, ElementsAre(false));
    ASSERT_FALSE(results.at(0).has_value());
    EXPECT_NE(results.at(0).error().description, "");
    EXPECT_THAT(desktop->shownNotifications(), IsEmpty());
}

TEST_P(UserNotificationCenterContract, ShowsTheTextsAsTheyAre) {
    add("first", "<b>Salt & Pepper</b>", "Größe &lt; \"窗口\"\n<i>second line</i>");
    EXPECT_THAT(results, IsEmpty()) << "not inside the call";

    ASSERT_TRUE(allShown(1));
    EXPECT_THAT(desktop->shownNotifications(),
                ElementsAre(ContractNotification{"<b>Salt & Pepper</b>", "Größe &lt; \"窗口\"\n<i>second line</i>"}));
}

TEST_P(UserNotificationCenterContract, ALaterOneTakesThePlaceOfTheEarlierUnderItsIdentifier) {
    add("first", "First", "one");
    ASSERT_TRUE(allShown(1));
    add("second", "Second", "one");
    ASSERT_TRUE(allShown(2));
    add("first", "First", "two");
    ASSERT_TRUE(allShown(3));

    EXPECT_THAT(desktop->shownNotifications(),
                UnorderedElementsAre(ContractNotification{"First", "two"}, ContractNotification{"Second", "one"}));
}

TEST_P(UserNotificationCenterContract, RequestsInOneTurnTakeEffectInTheirOrder) {
    add("first", "First", "one");
    add("second", "Second", "one");
    add("first", "First", "two");
    add("first", "First", "three");

    ASSERT_TRUE(allShown(4));
    EXPECT_THAT(desktop->shownNotifications(),
                UnorderedElementsAre(ContractNotification{"First", "three"}, ContractNotification{"Second", "one"}));
}

TEST_P(UserNotificationCenterContract, AnyTextIsAnIdentifier) {
    add("", "Empty", "one");
    add(std::string("a\0\n\xff", 4), "Strange", "one");
    add("a", "Short", "one");
    add(std::string("a\0\n\xff", 4), "Strange", "two");

    ASSERT_TRUE(allShown(4));
    EXPECT_THAT(desktop->shownNotifications(),
                UnorderedElementsAre(ContractNotification{"Empty", "one"}, ContractNotification{"Strange", "two"},
                                     ContractNotification{"Short", "one"}));
}

}  // namespace velmorand

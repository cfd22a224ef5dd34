#include "shortcuts/ShortcutManager.h"
#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using enum WindowAction;

constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t commandOption = 0x900;
constexpr std::uint32_t keyF1 = 122;

constexpr std::string_view identifier = "app.velmorand.Velmorand.shortcut.issue";
constexpr std::string_view handlerIssue = "Could not install the keyboard shortcut handler.";
constexpr std::string_view leftIssue =
    "Could not register Left (Option + Command + Left Arrow). Another app may already be using it.";
constexpr std::string_view conflict = "Shortcut conflict, not registered: Right, Top.";

class ShortcutManagerNotificationTest : public DesktopFixture {
protected:
    ShortcutManagerNotificationTest() { center().setAuthorization(NotificationAuthorization::authorized); }

    [[nodiscard]] SimulatedUserNotificationCenter& center() { return platform.userNotificationCenter(); }
    [[nodiscard]] std::vector<std::string> postedBodies() {
        std::vector<std::string> bodies;
        for (const UserNotificationRequest& request : center().added()) bodies.push_back(request.content.body);
        return bodies;
    }
    void settle() { platform.runLoop().runPending(); }

    /// Somebody else has the combination of the left half.
    void takeLeft() { platform.hotKeyService().setTaken(leftArrow, commandOption, true); }
    void giveLeftBack() { platform.hotKeyService().setTaken(leftArrow, commandOption, false); }
    /// Two actions get one combination, as only a document written by hand can have it.
    void makeConflict() {
        changePreferences([](PreferencesState& state) {
            for (const WindowAction action : {rightHalf, topHalf})
                state.shortcuts[std::string(rawValue(action))] = {{keyF1, ShortcutModifiers(commandOption)}, "F1"};
        });
    }
    void start() {
        shortcutManager->start();
        settle();
    }
};

TEST_F(ShortcutManagerNotificationTest, NothingIsPostedWhereNothingIsWrong) {
    start();
    EXPECT_THAT(center().added(), IsEmpty());
}

TEST_F(ShortcutManagerNotificationTest, ATakenCombinationIsPostedAsAnIssueWithTheDefaultSound) {
    takeLeft();
    start();

    EXPECT_THAT(center().added(),
                ElementsAre(UserNotificationRequest{std::string(identifier),
                                                    {"Velmorand: Shortcut Issue", std::string(leftIssue), true}}));
}

TEST_F(ShortcutManagerNotificationTest, ConflictsAloneArePostedAsAConflict) {
    makeConflict();
    start();

    EXPECT_THAT(center().added(),
                ElementsAre(UserNotificationRequest{std::string(identifier),
                                                    {"Velmorand: Shortcut Conflict", std::string(conflict), true}}));
}

TEST_F(ShortcutManagerNotificationTest, ConflictsAndFailuresTogetherAreAnIssueOneToALine) {
    makeConflict();
    takeLeft();
    start();

    EXPECT_THAT(center().shown(),
                ElementsAre(Pair(
                    identifier, UserNotificationContent{"Velmorand: Shortcut Issue",
                                                        std::string(conflict) + "\n" + std::string(leftIssue), true})));
}

TEST_F(ShortcutManagerNotificationTest, TheWordCountsInAnyCaseWhereverItStands) {
    changePreferences([](PreferencesState& state) {
        state.shortcuts[std::string(rawValue(leftHalf))] = {{leftArrow, ShortcutModifiers(commandOption)}, "CONFLICT"};
    });
    takeLeft();
    start();

    EXPECT_THAT(center().shown(),
                ElementsAre(Pair(identifier, Field(&UserNotificationContent::title, "Velmorand: Shortcut Conflict"))));
}

TEST_F(ShortcutManagerNotificationTest, AMissingHandlerIsPostedThoughNoPassRuns) {
    platform.hotKeyService().failInstallations(-9868);
    start();

    EXPECT_THAT(postedBodies(), ElementsAre(handlerIssue));
    EXPECT_EQ(center().shown().at(std::string(identifier)).title, "Velmorand: Shortcut Issue");
}

TEST_F(ShortcutManagerNotificationTest, TheSameProblemsAreNotPostedTwice) {
    takeLeft();
    start();
    shortcutManager->refreshRegistrations();
    settle();

    EXPECT_THAT(center().added(), SizeIs(1));
}

TEST_F(ShortcutManagerNotificationTest, OtherProblemsReplaceTheNotification) {
    takeLeft();
    start();
    makeConflict();
    settle();

    EXPECT_THAT(postedBodies(), ElementsAre(leftIssue, std::string(conflict) + "\n" + std::string(leftIssue)));
    EXPECT_THAT(center().shown(), SizeIs(1));
}

TEST_F(ShortcutManagerNotificationTest, ProblemsThatComeBackAfterThereWereNoneArePostedAgain) {
    takeLeft();
    start();
    giveLeftBack();
    shortcutManager->refreshRegistrations();
    takeLeft();
    shortcutManager->refreshRegistrations();
    settle();

    EXPECT_THAT(postedBodies(), ElementsAre(leftIssue, leftIssue));
}

TEST_F(ShortcutManagerNotificationTest, TheEndOfARecordingPostsWhatIsWrongThen) {
    start();
    shortcutManager->setRecordingSuspended(true);
    takeLeft();
    settle();
    EXPECT_THAT(center().added(), IsEmpty());

    shortcutManager->setRecordingSuspended(false);
    settle();
    EXPECT_THAT(postedBodies(), ElementsAre(leftIssue));
}

TEST_F(ShortcutManagerNotificationTest, QuietNotificationsAreGoodEnough) {
    center().setAuthorization(NotificationAuthorization::provisional);
    takeLeft();
    start();

    EXPECT_THAT(center().added(), SizeIs(1));
    EXPECT_THAT(center().authorizationRequests(), IsEmpty());
}

TEST_F(ShortcutManagerNotificationTest, AUserWhoWasNeverAskedIsAskedForAlertsAndSounds) {
    center().setAuthorization(NotificationAuthorization::notDetermined);
    center().setAnswer(true);
    takeLeft();
    start();

    EXPECT_THAT(center().authorizationRequests(),
                ElementsAre(NotificationAuthorizationOptions{.alert = true, .sound = true}));
    EXPECT_THAT(postedBodies(), ElementsAre(leftIssue));
}

TEST_F(ShortcutManagerNotificationTest, AUserWhoSaysNoIsLeftAlone) {
    center().setAuthorization(NotificationAuthorization::notDetermined);
    center().setAnswer(false);
    takeLeft();
    start();

    EXPECT_THAT(center().authorizationRequests(), SizeIs(1));
    EXPECT_THAT(center().added(), IsEmpty());
}

TEST_F(ShortcutManagerNotificationTest, WhereNotificationsAreDeniedOrUnknownNothingIsPostedOrAsked) {
    for (const auto authorization : {NotificationAuthorization::denied, NotificationAuthorization::other}) {
        center().setAuthorization(authorization);
        giveLeftBack();
        shortcutManager->start();
        takeLeft();
        shortcutManager->refreshRegistrations();
        settle();
        EXPECT_THAT(center().added(), IsEmpty());
        EXPECT_THAT(center().authorizationRequests(), IsEmpty());
    }
}

TEST_F(ShortcutManagerNotificationTest, ANotificationThatFailsIsLogged) {
    center().setAddError(UserNotificationError{"The server has gone."});
    takeLeft();
    start();

    EXPECT_THAT(logLines("shortcuts"),
                testing::Contains(LogLine{LogLevel::error, "shortcuts",
                                          "Failed to post shortcut issue notification: The server has gone."}));
}

TEST_F(ShortcutManagerNotificationTest, AnAnswerThatComesAfterTheManagerIsGoneIsDropped) {
    takeLeft();
    shortcutManager->start();
    shortcutManager.reset();
    settle();

    EXPECT_THAT(center().added(), IsEmpty());
}

TEST_F(ShortcutManagerNotificationTest, ACopyWithoutAnIdentifierPostsUnderTheNameAlone) {
    platform.settableBundle().setIdentifier(std::nullopt);
    takeLeft();
    start();

    EXPECT_THAT(center().added(), ElementsAre(Field(&UserNotificationRequest::identifier, ".shortcut.issue")));
}

}  // namespace
}  // namespace velmorand

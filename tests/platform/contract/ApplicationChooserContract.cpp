#include "platform/contract/ApplicationChooserContract.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ApplicationChooserOptions several{.message = "Choose some applications",
                                        .confirmText = "Take",
                                        .startingFolder = "/Applications",
                                        .allowsSeveral = true};

}  // namespace

void ApplicationChooserContract::ask(const ApplicationChooserOptions& options) {
    user->chooser().choose(options, [this](Answer answer) { answers.push_back(std::move(answer)); });
}

TEST_P(ApplicationChooserContract, ShowsWhatItIsAskedAndWaitsForItsUser) {
    ask(several);
    finishTurn();

    EXPECT_TRUE(user->isOpen());
    EXPECT_EQ(user->shown(), several);
    EXPECT_THAT(answers, IsEmpty());
}

TEST_P(ApplicationChooserContract, TellsTheChosenOnesInTheOrderOfThePanel) {
    const auto all = user->applications();
    ask(several);

    user->choose({2, 0});
    finishTurn();

    EXPECT_FALSE(user->isOpen());
    EXPECT_THAT(answers, ElementsAre(Answer({all.at(0), all.at(2)})));
}

TEST_P(ApplicationChooserContract, TellsNothingWithinTheUsersStep) {
    ask(several);

    user->choose({1});

    EXPECT_THAT(answers, IsEmpty());
    finishTurn();
    EXPECT_THAT(answers, ElementsAre(Answer({user->applications().at(1)})));
}

TEST_P(ApplicationChooserContract, TellsWhenTheUserCancels) {
    ask(several);

    user->cancel();
    finishTurn();

    EXPECT_FALSE(user->isOpen());
    EXPECT_THAT(answers, ElementsAre(std::nullopt));
}

TEST_P(ApplicationChooserContract, TakesOneApplicationWhereNoMoreAreWanted) {
    ApplicationChooserOptions one = several;
    one.allowsSeveral = false;
    ask(one);

    user->choose({1});
    finishTurn();

    EXPECT_THAT(answers, ElementsAre(Answer({user->applications().at(1)})));
}

TEST_P(ApplicationChooserContract, StaysOpenWhenItIsAskedAgainMeanwhile) {
    ask(several);
    ask({.message = "Something else", .confirmText = "No", .startingFolder = {}, .allowsSeveral = false});
    finishTurn();
    EXPECT_THAT(answers, ElementsAre(std::nullopt));
    EXPECT_EQ(user->shown(), several);

    user->choose({0});
    finishTurn();
    EXPECT_THAT(answers, ElementsAre(std::nullopt, Answer({user->applications().at(0)})));
}

TEST_P(ApplicationChooserContract, CanBeAskedAnewWithNothingChosen) {
    ask(several);
    user->choose({0, 1});
    finishTurn();
    answers.clear();

    ask(several);
    user->choose({2});
    finishTurn();

    EXPECT_THAT(answers, ElementsAre(Answer({user->applications().at(2)})));
}

}  // namespace velmorand

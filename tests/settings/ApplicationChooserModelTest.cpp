#include "settings/ApplicationChooserModel.h"

#include "platform/contract/ApplicationChooserContract.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "settings/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Answer = std::optional<std::vector<std::filesystem::path>>;

/// A chooser of the settings window with a user at its list.
class ModelUnderContract final : public ChooserUnderContract {
public:
    ModelUnderContract() {
        for (const std::string name : {"C", "A", "B"})
            platform_.workspace().applications().install("/" + name, {"org.example." + name, name});
    }

    [[nodiscard]] ApplicationChooser& chooser() override { return model_; }
    [[nodiscard]] std::vector<std::filesystem::path> applications() override { return {"/A", "/B", "/C"}; }
    [[nodiscard]] bool isOpen() override { return model_.isOpen(); }
    [[nodiscard]] ApplicationChooserOptions shown() override {
        EXPECT_EQ(model_.message().toStdString(), model_.options().message);
        EXPECT_EQ(model_.confirmText().toStdString(), model_.options().confirmText);
        EXPECT_EQ(model_.allowsSeveral(), model_.options().allowsSeveral);
        return model_.options();
    }
    void choose(const std::vector<std::size_t>& places) override {
        for (const std::size_t place : places) model_.applications()->setChosen(static_cast<int>(place), true);
        model_.confirm();
    }
    void cancel() override { model_.cancel(); }
    void finishTurn() override { platform_.runLoop().runPending(); }

private:
    SimulatedPlatform platform_;
    ApplicationChooserModel model_{platform_.workspace(), platform_.runLoop()};
};

INSTANTIATE_TEST_SUITE_P(OfTheSettingsWindow, ApplicationChooserContract,
                         testing::Values(ChooserFactory{"Model",
                                                        [] { return std::make_unique<ModelUnderContract>(); }}),
                         [](const auto& each) { return each.param.name; });

class ApplicationChooserModelTest : public testing::Test {
protected:
    void install(const std::string& name) {
        platform.workspace().applications().install("/Applications/" + name, {"org.example." + name, name});
    }
    void open() {
        model->choose({.message = "Choose", .allowsSeveral = true},
                      [this](Answer answer) { answers.push_back(std::move(answer)); });
    }
    void settle() { platform.runLoop().runPending(); }

    SimulatedPlatform platform;
    std::unique_ptr<ApplicationChooserModel> model =
        std::make_unique<ApplicationChooserModel>(platform.workspace(), platform.runLoop());
    std::vector<Answer> answers;
};

TEST_F(ApplicationChooserModelTest, ListsWhatIsInstalledAtEveryOpening) {
    install("Editor");
    open();
    EXPECT_EQ(model->applications()->count(), 1);
    model->cancel();

    install("Viewer");
    open();
    EXPECT_EQ(model->applications()->count(), 2);
}

TEST_F(ApplicationChooserModelTest, TellsViewsWhenItOpensAndCloses) {
    std::vector<bool> told;
    QObject::connect(model.get(), &ApplicationChooserModel::isOpenChanged, [&] { told.push_back(model->isOpen()); });

    open();
    model->cancel();
    model->cancel();

    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(ApplicationChooserModelTest, ConfirmsNothingWhileNothingIsChosen) {
    install("Editor");
    open();

    model->confirm();
    settle();

    EXPECT_TRUE(model->isOpen());
    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(ApplicationChooserModelTest, TheReturnKeyChoosesARowWhileNothingIsChosenAndThenConfirms) {
    install("Editor");
    install("Viewer");
    open();

    model->accept(1);
    settle();
    EXPECT_THAT(answers, IsEmpty());
    EXPECT_EQ(model->applications()->chosenCount(), 1);

    model->accept(0);
    settle();
    EXPECT_THAT(answers, ElementsAre(Answer({"/Applications/Viewer"})));
}

TEST_F(ApplicationChooserModelTest, TheReturnKeyDoesNothingAtNoRow) {
    install("Editor");
    open();

    model->accept(-1);
    model->accept(7);
    settle();

    EXPECT_TRUE(model->isOpen());
    EXPECT_EQ(model->applications()->chosenCount(), 0);
}

TEST_F(ApplicationChooserModelTest, TellsNobodyOnceItIsGone) {
    install("Editor");
    open();
    model->applications()->setChosen(0, true);
    model->confirm();

    model.reset();
    settle();

    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(ApplicationChooserModelTest, CanBeAskedAgainInsideItsAnswer) {
    model->choose({.message = "First"}, [this](const Answer&) { open(); });
    model->cancel();
    settle();

    EXPECT_TRUE(model->isOpen());
    EXPECT_EQ(model->message(), "Choose");
}

}  // namespace
}  // namespace velmorand

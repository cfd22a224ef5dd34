#include "platform/simulated/SimulatedApplicationChooser.h"

#include "platform/contract/ApplicationChooserContract.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace velmorand {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class SimulatedChooserUnderContract final : public ChooserUnderContract {
public:
    [[nodiscard]] ApplicationChooser& chooser() override { return chooser_; }
    [[nodiscard]] std::vector<std::filesystem::path> applications() override { return {"/a", "/b", "/c"}; }
    [[nodiscard]] bool isOpen() override { return chooser_.isOpen(); }
    [[nodiscard]] ApplicationChooserOptions shown() override { return chooser_.requests().back(); }
    void choose(const std::vector<std::size_t>& places) override {
        std::vector<std::filesystem::path> chosen;
        for (std::size_t place = 0; place < applications().size(); ++place) {
            if (std::ranges::count(places, place) > 0) chosen.push_back(applications()[place]);
        }
        chooser_.confirm(chosen);
    }
    void cancel() override { chooser_.cancel(); }
    void finishTurn() override { runLoop_.runPending(); }

private:
    SimulatedRunLoop runLoop_;
    SimulatedApplicationChooser chooser_{runLoop_};
};

INSTANTIATE_TEST_SUITE_P(Simulated, ApplicationChooserContract,
                         testing::Values(ChooserFactory{
                             "Desktop", [] { return std::make_unique<SimulatedChooserUnderContract>(); }}),
                         [](const auto& each) { return each.param.name; });

TEST(SimulatedApplicationChooserTest, HasNoUserBeforeItIsOpen) {
    SimulatedRunLoop runLoop;
    SimulatedApplicationChooser chooser(runLoop);

    chooser.confirm({"/a"});
    chooser.cancel();

    EXPECT_TRUE(runLoop.isIdle());
    EXPECT_THAT(chooser.requests(), IsEmpty());
}

TEST(SimulatedApplicationChooserTest, NotesEveryOpening) {
    SimulatedRunLoop runLoop;
    SimulatedApplicationChooser chooser(runLoop);
    const auto ignore = [](const auto&) {};

    chooser.choose({.message = "First"}, ignore);
    chooser.choose({.message = "Refused"}, ignore);
    chooser.cancel();
    chooser.choose({.message = "Second"}, ignore);

    ASSERT_THAT(chooser.requests(), SizeIs(2));
    EXPECT_EQ(chooser.requests()[0].message, "First");
    EXPECT_EQ(chooser.requests()[1].message, "Second");
}

}  // namespace
}  // namespace velmorand

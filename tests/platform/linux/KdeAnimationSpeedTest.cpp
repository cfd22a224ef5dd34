#include "platform/linux/KdeAnimationSpeed.h"

#include "platform/linux/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

struct FactorRow {
    std::string name;
    std::string text;
    std::optional<double> expected;

    friend void PrintTo(const FactorRow& row, std::ostream* out) { *out << row.name; }
};

class KdeAnimationFactorTest : public testing::TestWithParam<FactorRow> {};

TEST_P(KdeAnimationFactorTest, IsWhatTheTableSays) {
    EXPECT_EQ(decodeAnimationDurationFactor(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, KdeAnimationFactorTest,
    testing::Values(FactorRow{"Zero", "[KDE]\nAnimationDurationFactor=0\n", 0.0},
                    FactorRow{"ZeroWithPlaces", "[KDE]\nAnimationDurationFactor=0.000\n", 0.0},
                    FactorRow{"Half", "[KDE]\nAnimationDurationFactor=0.5", 0.5},
                    FactorRow{"AmongOthers",
                              "[General]\nName=a\n\n[KDE]\nSingleClick=true\nAnimationDurationFactor=2\n[WM]\n", 2.0},
                    FactorRow{"WithSpacesAndCarriageReturns", "[KDE]\r\n  AnimationDurationFactor =\t0 \r\n", 0.0},
                    FactorRow{"FixedByTheAdministrator", "[KDE]\nAnimationDurationFactor[$i]=0\n", 0.0},
                    FactorRow{"InAFixedGroup", "[KDE][$i]\nAnimationDurationFactor=0\n", 0.0},
                    FactorRow{"TheLastOfTwo", "[KDE]\nAnimationDurationFactor=1\n[KDE]\nAnimationDurationFactor=0\n",
                              0.0},
                    FactorRow{"Nothing", "", std::nullopt},
                    FactorRow{"NotSet", "[KDE]\nSingleClick=true\n", std::nullopt},
                    FactorRow{"InAnotherGroup", "[KDE Other]\nAnimationDurationFactor=0\n", std::nullopt},
                    FactorRow{"InAGroupOfTheGroup", "[KDE][Other]\nAnimationDurationFactor=0\n", std::nullopt},
                    FactorRow{"AfterTheGroup", "[KDE]\n[Other]\nAnimationDurationFactor=0\n", std::nullopt},
                    FactorRow{"BeforeAnyGroup", "AnimationDurationFactor=0\n[KDE]\n", std::nullopt},
                    FactorRow{"AsAComment", "[KDE]\n#AnimationDurationFactor=0\n", std::nullopt},
                    FactorRow{"OtherCase", "[KDE]\nanimationdurationfactor=0\n", std::nullopt},
                    FactorRow{"WithoutAValue", "[KDE]\nAnimationDurationFactor=\n", std::nullopt},
                    FactorRow{"Negative", "[KDE]\nAnimationDurationFactor=-1\n", std::nullopt},
                    FactorRow{"NotANumber", "[KDE]\nAnimationDurationFactor=nan\n", std::nullopt},
                    FactorRow{"Infinite", "[KDE]\nAnimationDurationFactor=inf\n", std::nullopt},
                    FactorRow{"MoreThanANumber", "[KDE]\nAnimationDurationFactor=0x\n", std::nullopt},
                    FactorRow{"WithADecimalComma", "[KDE]\nAnimationDurationFactor=0,0\n", std::nullopt}),
    [](const auto& row) { return row.param.name; });

class KdeAnimationSpeedTest : public testing::Test {
protected:
    void write(std::string_view factor) {
        folder_.write("kdeglobals", "[KDE]\nAnimationDurationFactor=" + std::string(factor) + "\n");
    }

    ScratchFolder folder_;
    fs::path file_ = folder_.path() / "kdeglobals";
};

TEST_F(KdeAnimationSpeedTest, MotionIsReducedOnlyWhenAnimationsTakeNoTime) {
    write("0");
    EXPECT_EQ(KdeAnimationSpeed(file_).reducesMotion(), true);

    write("0.25");
    EXPECT_EQ(KdeAnimationSpeed(file_).reducesMotion(), false);
}

TEST_F(KdeAnimationSpeedTest, AFileThatSaysNothingLeavesItOpen) {
    folder_.write("kdeglobals", "[General]\n");
    EXPECT_EQ(KdeAnimationSpeed(file_).reducesMotion(), std::nullopt);
    EXPECT_EQ(KdeAnimationSpeed(folder_.path() / "absent").reducesMotion(), std::nullopt);
}

TEST_F(KdeAnimationSpeedTest, FollowsTheFileWhenItIsMadeChangedReplacedAndRemoved) {
    KdeAnimationSpeed speed(file_);
    ASSERT_EQ(speed.reducesMotion(), std::nullopt);

    write("0");
    EXPECT_EQ(speed.reducesMotion(), true);

    write("1.5");
    EXPECT_EQ(speed.reducesMotion(), false);

    folder_.write("new", "[KDE]\nAnimationDurationFactor=0  \n");
    fs::rename(folder_.path() / "new", file_);
    EXPECT_EQ(speed.reducesMotion(), true);

    fs::remove(file_);
    EXPECT_EQ(speed.reducesMotion(), std::nullopt);
}

/// The same length at the same place: only the time tells.
TEST_F(KdeAnimationSpeedTest, NoticesAChangeByItsTimeAlone) {
    write("1");
    const auto before = fs::last_write_time(file_);
    KdeAnimationSpeed speed(file_);
    ASSERT_EQ(speed.reducesMotion(), false);

    write("0");
    fs::last_write_time(file_, before + std::chrono::seconds(1));

    EXPECT_EQ(speed.reducesMotion(), true);
}

TEST_F(KdeAnimationSpeedTest, AFileThatHasNotChangedIsNotReadAgain) {
    write("1");
    const auto before = fs::last_write_time(file_);
    KdeAnimationSpeed speed(file_);

    write("0");
    fs::last_write_time(file_, before);

    EXPECT_EQ(speed.reducesMotion(), false);
}

TEST_F(KdeAnimationSpeedTest, APipeInPlaceOfTheFileKeepsNobodyWaiting) {
    folder_.makePipe("kdeglobals");

    EXPECT_EQ(KdeAnimationSpeed(file_).reducesMotion(), std::nullopt);
}

}  // namespace
}  // namespace velmorand

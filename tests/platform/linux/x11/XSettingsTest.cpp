#include "platform/linux/x11/XSettings.h"

#include "platform/linux/support/XSettingsBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <random>
#include <string>

namespace velmorand {
namespace {

std::optional<XSettings> decoded(const std::vector<std::uint8_t>& bytes) {
    return decodeXSettings(std::as_bytes(std::span(bytes)));
}

/// All kinds of settings, names and texts of every length modulo a word.
XSettingsBytes everyKind(bool isBigEndian) {
    XSettingsBytes writer(isBigEndian);
    return writer.integer("Gtk/EnableAnimations", 0)
        .text("Net/ThemeName", "Käfer")
        .color("A")
        .integer("Xft/DPI", 98304)
        .text("B/", "")
        .integer("Lowest", std::numeric_limits<std::int32_t>::min());
}

const XSettings everyNumber{
    {"Gtk/EnableAnimations", 0}, {"Xft/DPI", 98304}, {"Lowest", std::numeric_limits<std::int32_t>::min()}};

struct Row {
    std::string name;
    std::vector<std::uint8_t> bytes;
    std::optional<XSettings> expected;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

class XSettingsTest : public testing::TestWithParam<Row> {};

TEST_P(XSettingsTest, AreWhatTheTableSays) {
    EXPECT_EQ(decoded(GetParam().bytes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XSettingsTest,
    testing::Values(
        Row{"None", XSettingsBytes().bytes(), XSettings{}},
        Row{"EveryKindLeastSignificantFirst", everyKind(false).bytes(), everyNumber},
        Row{"EveryKindMostSignificantFirst", everyKind(true).bytes(), everyNumber},
        Row{"MoreBytesThanSettings", everyKind(false).number(77, 4).bytes(), everyNumber},
        Row{"FewerClaimedThanThere", everyKind(false).setCount(1).bytes(), XSettings{{"Gtk/EnableAnimations", 0}}},
        Row{"ANameWithoutCharacters", XSettingsBytes().integer("", 5).bytes(), XSettings{{"", 5}}},
        Row{"Nothing", {}, std::nullopt}, Row{"TheByteOrderAlone", {0}, std::nullopt},
        Row{"AnUnknownByteOrder", {2, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}, std::nullopt},
        Row{"TheByteOrderAsALetter", {'l', 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}, std::nullopt},
        Row{"AHeaderWithoutItsCount", {0, 0, 0, 0, 1, 0, 0, 0}, std::nullopt},
        Row{"MoreClaimedThanThere", everyKind(false).setCount(7).bytes(), std::nullopt},
        Row{"FourThousandMillionClaimed", everyKind(false).setCount(0xFFFFFFFF).bytes(), std::nullopt},
        Row{"AnUnknownKind", XSettingsBytes().integer("A", 1).begin(3, "B").number(0, 4).bytes(), std::nullopt},
        Row{"TheSameNameTwice", XSettingsBytes().integer("A", 1).integer("A", 0).bytes(), std::nullopt},
        Row{"ANameLongerThanTheRest", {0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0xFF, 0xFF, 'A'}, std::nullopt},
        Row{"ATextLongerThanTheRest", XSettingsBytes().begin(1, "A").number(0xFFFFFFFF, 4).bytes(), std::nullopt},
        Row{"ATextWithoutItsFilling", XSettingsBytes().begin(1, "A").number(1, 4).number('a', 1).bytes(), std::nullopt},
        Row{"AColourThatIsCutOff", XSettingsBytes().begin(2, "A").number(0, 4).bytes(), std::nullopt}),
    [](const auto& row) { return row.param.name; });

TEST(XSettingsCutOffTest, SayNothingWhereverTheyAreCutOff) {
    for (const bool isBigEndian : {false, true}) {
        const std::vector<std::uint8_t> whole = everyKind(isBigEndian).bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            EXPECT_EQ(decoded({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}), std::nullopt)
                << length << " bytes";
        }
    }
}

TEST(XSettingsHostileTest, ManyNamesStayCheap) {
    XSettingsBytes writer;
    for (int i = 0; i < 2000; ++i) writer.integer("Name" + std::to_string(i), i);

    const auto settings = decoded(writer.bytes());

    ASSERT_TRUE(settings.has_value());
    EXPECT_EQ(settings->size(), 2000U);
    EXPECT_EQ(settings->at("Name1999"), 1999);
}

/// What holds of any bytes: nothing is read beyond them, and no more comes out than fits in.
TEST(XSettingsHostileTest, BytesThatWereTamperedWithNeverYieldMoreThanTheyHold) {
    std::mt19937 random(7);
    const std::vector<std::uint8_t> whole = everyKind(false).bytes();
    for (int round = 0; round < 20000; ++round) {
        std::vector<std::uint8_t> bytes = whole;
        for (int change = 0; change < 3; ++change)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random() % 4 == 0 ? random() : random() % 8);
        const auto settings = decoded(bytes);
        std::size_t needed = 12;
        for (const auto& [name, value] : settings.value_or(XSettings{})) needed += 12 + name.size();
        EXPECT_LE(needed, bytes.size()) << "in round " << round;
    }
}

}  // namespace
}  // namespace velmorand

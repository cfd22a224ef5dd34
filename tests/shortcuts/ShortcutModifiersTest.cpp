#include "shortcuts/ShortcutModifiers.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ShortcutModifiers command = ShortcutModifiers::command;
constexpr ShortcutModifiers shift = ShortcutModifiers::shift;
constexpr ShortcutModifiers option = ShortcutModifiers::option;
constexpr ShortcutModifiers control = ShortcutModifiers::control;

TEST(ShortcutModifiers, HaveTheBitsOfThePlatformsHotKeyMasks) {
    EXPECT_EQ(command.rawValue(), 256U);
    EXPECT_EQ(shift.rawValue(), 512U);
    EXPECT_EQ(option.rawValue(), 2048U);
    EXPECT_EQ(control.rawValue(), 4096U);
}

TEST(ShortcutModifiers, AreMadeFromAListOfMembers) {
    EXPECT_EQ((ShortcutModifiers{command, option}).rawValue(), 2304U);
    EXPECT_EQ((ShortcutModifiers{command, shift, option}).rawValue(), 2816U);
    EXPECT_EQ((ShortcutModifiers{command, option, control}).rawValue(), 6400U);
    EXPECT_EQ((ShortcutModifiers{command, command}).rawValue(), 256U);
    EXPECT_EQ(ShortcutModifiers{}.rawValue(), 0U);
}

TEST(ShortcutModifiers, KeepBitsOtherThanTheFourMembers) {
    const ShortcutModifiers modifiers(0x8000'0001U);

    EXPECT_EQ(modifiers.rawValue(), 0x8000'0001U);
    EXPECT_EQ(modifiers.unionWith(command).rawValue(), 0x8000'0101U);
    EXPECT_EQ(modifiers.unionWith(command).subtracting(command).rawValue(), 0x8000'0001U);
    EXPECT_FALSE(modifiers.isEmpty());
    EXPECT_NE(modifiers, ShortcutModifiers{});
}

TEST(ShortcutModifiers, AreEqualAndHashEqualByTheirRawValue) {
    const std::hash<ShortcutModifiers> hash;

    EXPECT_EQ(ShortcutModifiers(2304), (ShortcutModifiers{option, command}));
    EXPECT_NE(ShortcutModifiers(2304), command);
    EXPECT_EQ(hash(ShortcutModifiers(2304)), hash(ShortcutModifiers{option, command}));
    EXPECT_NE(hash(ShortcutModifiers(2304)), hash(command));
}

TEST(ShortcutModifiers, HaveUnionIntersectionAndDifferences) {
    const ShortcutModifiers a{command, shift};
    const ShortcutModifiers b{shift, option};

    EXPECT_EQ(a.unionWith(b), (ShortcutModifiers{command, shift, option}));
    EXPECT_EQ(a.intersectionWith(b), shift);
    EXPECT_EQ(a.symmetricDifferenceWith(b), (ShortcutModifiers{command, option}));
    EXPECT_EQ(a.subtracting(b), command);
}

TEST(ShortcutModifiers, KnowTheirSubsetsAndSupersets) {
    const ShortcutModifiers both{command, shift};

    EXPECT_TRUE(command.isSubsetOf(both));
    EXPECT_TRUE(both.isSubsetOf(both));
    EXPECT_FALSE(both.isSubsetOf(command));
    EXPECT_TRUE(ShortcutModifiers{}.isSubsetOf(command));
    EXPECT_TRUE(both.isSupersetOf(command));
    EXPECT_TRUE(both.isSupersetOf(both));
    EXPECT_FALSE(command.isSupersetOf(both));
    EXPECT_TRUE(command.isStrictSubsetOf(both));
    EXPECT_FALSE(both.isStrictSubsetOf(both));
    EXPECT_TRUE(both.isStrictSupersetOf(command));
    EXPECT_FALSE(both.isStrictSupersetOf(both));
}

TEST(ShortcutModifiers, KnowWhatTheyContainAndWhatTheyHaveNothingInCommonWith) {
    const ShortcutModifiers both{command, shift};

    EXPECT_TRUE(both.contains(command));
    EXPECT_TRUE(both.contains(both));
    EXPECT_FALSE(both.contains({command, option}));
    EXPECT_TRUE(both.isDisjointWith({option, control}));
    EXPECT_FALSE(both.isDisjointWith({option, shift}));
    EXPECT_TRUE(ShortcutModifiers{}.isEmpty());
    EXPECT_FALSE(both.isEmpty());
}

TEST(ShortcutModifiers, InsertAnswersWhetherSomethingWasMissing) {
    ShortcutModifiers modifiers{command};

    EXPECT_TRUE(modifiers.insert(shift));
    EXPECT_EQ(modifiers, (ShortcutModifiers{command, shift}));
    EXPECT_FALSE(modifiers.insert(shift));
    EXPECT_TRUE(modifiers.insert({shift, option}));
    EXPECT_EQ(modifiers, (ShortcutModifiers{command, shift, option}));
}

TEST(ShortcutModifiers, RemoveAnswersWhatWasThere) {
    ShortcutModifiers modifiers{command, shift};

    EXPECT_EQ(modifiers.remove({shift, option}), shift);
    EXPECT_EQ(modifiers, command);
    EXPECT_EQ(modifiers.remove(shift), std::nullopt);
    EXPECT_EQ(modifiers, command);
}

TEST(ShortcutModifiers, UpdateAddsAndAnswersWhatWasThereBefore) {
    ShortcutModifiers modifiers{command};

    EXPECT_EQ(modifiers.update(shift), std::nullopt);
    EXPECT_EQ(modifiers, (ShortcutModifiers{command, shift}));
    EXPECT_EQ(modifiers.update({shift, option}), shift);
    EXPECT_EQ(modifiers, (ShortcutModifiers{command, shift, option}));
}

TEST(ShortcutModifiers, AreShownInTheOrderControlOptionShiftCommandHoweverTheyWereInserted) {
    ShortcutModifiers modifiers;
    modifiers.insert(command);
    modifiers.insert(option);
    modifiers.insert(control);
    modifiers.insert(shift);

    EXPECT_THAT(displaySymbols(modifiers), ElementsAre("\u2303", "\u2325", "\u21E7", "\u2318"));
    EXPECT_THAT(displayNames(modifiers), ElementsAre("Control", "Option", "Shift", "Command"));
}

TEST(ShortcutModifiers, ShowOnlyTheMembersPresent) {
    EXPECT_THAT(displaySymbols({command, control}), ElementsAre("⌃", "⌘"));
    EXPECT_THAT(displayNames({command, control}), ElementsAre("Control", "Command"));
    EXPECT_THAT(displaySymbols(shift), ElementsAre("⇧"));
    EXPECT_THAT(displayNames(option), ElementsAre("Option"));
}

TEST(ShortcutModifiers, ShowNothingWhenEmptyOrOfUnknownBits) {
    EXPECT_THAT(displaySymbols({}), IsEmpty());
    EXPECT_THAT(displayNames({}), IsEmpty());
    EXPECT_THAT(displaySymbols(ShortcutModifiers(0x400)), IsEmpty());
    EXPECT_THAT(displayNames(ShortcutModifiers(0x400)), IsEmpty());
}

struct EventFlagsRow {
    std::string_view name;
    std::uint64_t flags;
    ShortcutModifiers modifiers;
};

TEST(ShortcutModifiers, AreReadFromFourEventFlagsOnly) {
    const std::vector<EventFlagsRow> rows{
        {"none", 0, {}},
        {"shift", 0x20000, shift},
        {"control", 0x40000, control},
        {"option", 0x80000, option},
        {"command", 0x100000, command},
        {"all four", 0x1E0000, {command, shift, option, control}},
        {"caps lock", 0x10000, {}},
        {"numeric pad", 0x200000, {}},
        {"help", 0x400000, {}},
        {"function", 0x800000, {}},
        {"option with caps lock and function", 0x890000, option},
        {"everything else", ~std::uint64_t{0x1E0000}, {}},
        {"everything", ~std::uint64_t{0}, {command, shift, option, control}},
    };
    for (const EventFlagsRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(modifiersFromEventFlags(row.flags), row.modifiers);
    }
}

}  // namespace
}  // namespace velmorand

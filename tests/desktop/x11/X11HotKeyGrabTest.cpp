#include "desktop/x11/X11HotKeyTest.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <ostream>
#include <ranges>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t commandOption = modifier::command | modifier::option;
constexpr std::uint32_t superMask = XCB_MOD_MASK_4;
constexpr std::uint32_t superAltMask = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;

/// As many keys as there are actions.
constexpr std::array manyKeys{Key::left,   Key::right,  Key::up,     Key::down,   Key::enter,  Key::digit1, Key::digit2,
                              Key::digit3, Key::digit4, Key::digit5, Key::digit6, Key::digit7, Key::digit8, Key::digit9,
                              Key::q,      Key::w,      Key::e,      Key::r,      Key::t};

class X11HotKeyGrabTest : public X11HotKeyTest {
protected:
    /// Registers all with ids from `firstID` on.
    static void addMany(HotKeyClient& client, std::uint32_t firstID) {
        std::uint32_t id = firstID;
        for (const Key key : manyKeys) ASSERT_EQ(client.add(key, commandOption, id++), noError);
    }
};

TEST_F(X11HotKeyGrabTest, RegisteringEverythingAgainAsksTheServerForNothing) {
    start();
    addMany(client(), 1);
    runPosted();
    const unsigned int before = client().requestNumber();

    client().giveAllBack();
    addMany(client(), 101);
    runPosted();

    EXPECT_EQ(client().requestNumber(), before + 1);
    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}, {{Key::leftSuper, Key::leftAlt}, Key::t}}),
                ElementsAre(101, 119));
}

TEST_F(X11HotKeyGrabTest, RegisteringEverythingAgainWorksWhileTheServerDoesNotAnswer) {
    start();
    addMany(client(), 1);
    runPosted();
    desktop().server().freeze();

    client().giveAllBack();
    addMany(client(), 101);
    runPosted();

    desktop().server().thaw();
    EXPECT_THAT(pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::right}}), ElementsAre(102));
}

TEST_F(X11HotKeyGrabTest, APressWhileEverythingIsRegisteredAgainIsNotMissed) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    client().giveAllBack();
    keyboard().press({Key::leftSuper, Key::leftAlt}, Key::left);
    ASSERT_EQ(client().add(Key::left, commandOption, 2), noError);
    catchUp();

    EXPECT_THAT(client().pressed(), ElementsAre(2));
}

TEST_F(X11HotKeyGrabTest, APressOfACombinationThatWasGivenBackIsNotDelivered) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    keyboard().press({Key::leftSuper, Key::leftAlt}, Key::left);
    client().giveAllBack();
    keyboard().press({Key::leftSuper, Key::leftAlt}, Key::left);
    catchUp();

    EXPECT_THAT(client().pressed(), IsEmpty());
}

TEST_F(X11HotKeyGrabTest, OthersHaveACombinationFromTheEndOfTheTurnOn) {
    start();
    HotKeyClient other(runLoop);
    ASSERT_EQ(other.install(), noError);
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);

    client().giveAllBack();
    EXPECT_EQ(other.add(Key::left, commandOption, 2), hotKeyAlreadyTaken);
    catchUp();
    EXPECT_EQ(other.add(Key::left, commandOption, 3), noError);

    keyboard().press({Key::leftSuper, Key::leftAlt}, Key::left);
    other.handleEverythingSent();
    catchUp();
    EXPECT_THAT(other.pressed(), ElementsAre(3));
    EXPECT_THAT(client().pressed(), IsEmpty());
}

TEST_F(X11HotKeyGrabTest, NothingStaysGrabbedOfWhatWasGivenBackAndRegisteredManyTimes) {
    start();
    for (std::uint32_t pass = 0; pass < 3; ++pass) {
        client().giveAllBack();
        addMany(client(), pass * 100);
    }

    client().giveAllBack();
    catchUp();

    GrabbingClient other = otherClient();
    for (const Key key : manyKeys) EXPECT_TRUE(other.isFree(key)) << std::to_underlying(key);
}

TEST_F(X11HotKeyGrabTest, OnlyWhatIsNotRegisteredAgainIsGivenUp) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    ASSERT_EQ(client().add(Key::right, commandOption, 2), noError);

    client().giveAllBack();
    ASSERT_EQ(client().add(Key::right, commandOption, 3), noError);
    catchUp();

    EXPECT_TRUE(otherClient().isFree(Key::left));
    EXPECT_FALSE(otherClient().isFree(Key::right));
}

TEST_F(X11HotKeyGrabTest, NothingStaysGrabbedWhenTheServiceEndsBeforeItsConnection) {
    start();
    addMany(client(), 1);

    client().endService();

    client().handleEverythingSent();
    GrabbingClient other = otherClient();
    for (const Key key : manyKeys) EXPECT_TRUE(other.isFree(key)) << std::to_underlying(key);
}

TEST_F(X11HotKeyGrabTest, EndingTheServiceInTheTurnOfAnUnregistrationIsHarmless) {
    start();
    addMany(client(), 1);

    client().giveAllBack();
    endClient();
    runPosted();

    // The server notices the end of a connection by itself.
    EXPECT_TRUE(observer().waitUntil([&] { return otherClient().isFree(Key::left); }));
}

TEST_F(X11HotKeyGrabTest, ASecondProgramIsRefusedEachCombinationUntilTheFirstEnds) {
    start();
    addMany(client(), 1);
    HotKeyClient second(runLoop);
    ASSERT_EQ(second.install(), noError);
    for (const Key key : manyKeys) EXPECT_EQ(second.add(key, commandOption, 1), hotKeyAlreadyTaken);

    endClient();

    EXPECT_TRUE(observer().waitUntil([&] { return second.add(Key::left, commandOption, 1) == noError; }));
    for (const Key key : manyKeys | std::views::drop(1)) EXPECT_EQ(second.add(key, commandOption, 1), noError);
}

struct ConflictRow {
    std::string name;
    GrabKind kind;
    std::uint32_t mask;
    /// What to press for the other client's grab.
    std::vector<Key> modifierKeys;
    bool numLock = false;
    bool capsLock = false;

    friend void PrintTo(const ConflictRow& row, std::ostream* out) { *out << row.name; }
};

class X11HotKeyConflictTest : public X11HotKeyTest, public testing::WithParamInterface<ConflictRow> {};

TEST_P(X11HotKeyConflictTest, ACombinationThatAnotherClientHoldsAPartOfIsTakenAndStaysTheirs) {
    const auto& [name, kind, mask, modifierKeys, numLock, capsLock] = GetParam();
    start();
    GrabbingClient holder = otherClient();
    ASSERT_TRUE(holder.grab(kind, Key::left, mask));

    EXPECT_EQ(client().service().registerHotKey(virtualKeyCode(Key::left), modifier::command, {0, 1}),
              (HotKeyRegistration{hotKeyAlreadyTaken, std::nullopt}));

    ASSERT_TRUE(keyboard().setNumLock(numLock));
    ASSERT_TRUE(keyboard().setCapsLock(capsLock));
    EXPECT_THAT(pressedIDs({{modifierKeys, Key::left}}), IsEmpty());
    EXPECT_EQ(holder.takePresses(), 1);
    holder.release(kind, Key::left, mask);
    EXPECT_TRUE(otherClient().isFree(Key::left)) << "a part of what was tried is still grabbed";
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11HotKeyConflictTest,
    testing::Values(
        ConflictRow{"Core", GrabKind::core, superMask, {Key::leftSuper}},
        ConflictRow{"CoreWithNumLock", GrabKind::core, superMask | XCB_MOD_MASK_2, {Key::leftSuper}, true},
        ConflictRow{"CoreWithCapsLock", GrabKind::core, superMask | XCB_MOD_MASK_LOCK, {Key::leftSuper}, false, true},
        ConflictRow{"CoreWithBothLocks",
                    GrabKind::core,
                    superMask | XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK,
                    {Key::leftSuper},
                    true,
                    true},
        ConflictRow{"CoreWithAnyModifier", GrabKind::core, GrabbingClient::anyModifier, {Key::leftControl}},
        ConflictRow{"Extension", GrabKind::inputExtension, superMask, {Key::leftSuper}},
        ConflictRow{
            "ExtensionWithNumLock", GrabKind::inputExtension, superMask | XCB_MOD_MASK_2, {Key::leftSuper}, true},
        ConflictRow{"ExtensionWithCapsLock",
                    GrabKind::inputExtension,
                    superMask | XCB_MOD_MASK_LOCK,
                    {Key::leftSuper},
                    false,
                    true},
        ConflictRow{"ExtensionWithBothLocks",
                    GrabKind::inputExtension,
                    superMask | XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK,
                    {Key::leftSuper},
                    true,
                    true},
        ConflictRow{
            "ExtensionWithAnyModifier", GrabKind::inputExtension, GrabbingClient::anyModifier, {Key::leftControl}}),
    [](const auto& each) { return each.param.name; });

class X11HotKeyNeighbourTest : public X11HotKeyTest, public testing::WithParamInterface<GrabKind> {};

TEST_P(X11HotKeyNeighbourTest, TheSameKeyWithOtherModifiersAndOtherKeysAreNoConflict) {
    start();
    GrabbingClient neighbour = otherClient();
    ASSERT_TRUE(neighbour.grab(GetParam(), Key::left, superAltMask));
    ASSERT_TRUE(neighbour.grab(GetParam(), Key::left, 0));
    ASSERT_TRUE(neighbour.grab(GetParam(), Key::right, superMask));

    EXPECT_EQ(client().add(Key::left, modifier::command, 1), noError);

    EXPECT_THAT(pressedIDs({{{Key::leftSuper}, Key::left}}), ElementsAre(1));
    EXPECT_EQ(neighbour.takePresses(), 0);
    EXPECT_THAT(
        pressedIDs({{{Key::leftSuper, Key::leftAlt}, Key::left}, {{}, Key::left}, {{Key::leftSuper}, Key::right}}),
        IsEmpty());
    EXPECT_EQ(neighbour.takePresses(), 3);
}

INSTANTIATE_TEST_SUITE_P(Of, X11HotKeyNeighbourTest, testing::Values(GrabKind::core, GrabKind::inputExtension),
                         [](const auto& each) { return each.param == GrabKind::core ? "Core" : "Extension"; });

TEST_F(X11HotKeyGrabTest, AKeyThatXDoesNotHaveIsAParameterError) {
    constexpr std::uint32_t functionKey = 63;
    start();

    EXPECT_EQ(client().service().registerHotKey(functionKey, modifier::command, {0, 1}),
              (HotKeyRegistration{hotKeyParameterError, std::nullopt}));
}

TEST_F(X11HotKeyGrabTest, WithoutAConnectionEverythingFailsAtOnce) {
    start();
    ASSERT_EQ(client().add(Key::left, commandOption, 1), noError);
    desktop().server().terminate();
    ASSERT_TRUE(runUntil([&] { return client().connection().isLost(); }));

    EXPECT_EQ(client().add(Key::right, commandOption, 2), hotKeyInternalError);
    EXPECT_EQ(client().install(), hotKeyInternalError);
    client().giveAllBack();
    runPosted();
    EXPECT_EQ(client().add(Key::left, commandOption, 3), hotKeyInternalError);
}

TEST_F(X11HotKeyGrabTest, AServerThatDoesNotAnswerIsNotWaitedForWithoutABoundAndAskedAgainLater) {
    start();
    HotKeyClient late(runLoop);
    desktop().server().freeze();
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(late.install(), hotKeyInternalError);
    EXPECT_EQ(late.add(Key::left, commandOption, 1), hotKeyInternalError);

    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
    desktop().server().thaw();
    EXPECT_EQ(late.install(), noError);
    EXPECT_EQ(late.add(Key::left, commandOption, 2), noError);
    keyboard().press({Key::leftSuper, Key::leftAlt}, Key::left);
    late.handleEverythingSent();
    EXPECT_THAT(late.pressed(), ElementsAre(2));
}

}  // namespace
}  // namespace velmorand::desktop

#include "platform/HotKeyService.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t signature = 0x54455354;

// Virtual key codes and modifier masks.
constexpr std::uint32_t keyA = 0;
constexpr std::uint32_t keyE = 14;
constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;
constexpr std::uint32_t shift = 0x200;

/// No other test uses this combination and this number.
constexpr std::uint32_t markerKey = 46;
constexpr std::uint32_t markerModifiers = control | option | shift;
constexpr std::uint32_t markerID = 999;

}  // namespace

void HotKeyServiceContract::install() {
    const auto installed =
        desktop->platform().hotKeyService().installHandler([this](const HotKeyEvent* event) -> OSStatus {
            pressed.push_back(event->hotKeyID().value_or(HotKeyID{}).id);
            return noError;
        });
    ASSERT_TRUE(installed.has_value());
}

void HotKeyServiceContract::registerKey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id) {
    const HotKeyRegistration registration =
        desktop->platform().hotKeyService().registerHotKey(keyCode, modifiers, {signature, id});
    ASSERT_EQ(registration.status, noError);
    ASSERT_TRUE(registration.reference.has_value());
}

std::vector<std::uint32_t> HotKeyServiceContract::waitForPresses(std::size_t count) {
    EXPECT_TRUE(desktop->runUntil([&] { return pressed.size() >= count; }, deadline));
    return pressed;
}

void HotKeyServiceContract::waitForEverythingPressed() {
    registerKey(markerKey, markerModifiers, markerID);
    desktop->press(markerKey, markerModifiers);
    ASSERT_TRUE(desktop->runUntil([&] { return !pressed.empty() && pressed.back() == markerID; }, deadline));
    pressed.pop_back();
}

TEST_P(HotKeyServiceContract, APressReachesTheHandlerWithTheIdItWasRegisteredUnder) {
    std::vector<HotKeyID> ids;
    HotKeyService& service = desktop->platform().hotKeyService();
    const auto installed = service.installHandler([&](const HotKeyEvent* event) -> OSStatus {
        ids.push_back(event->hotKeyID().value_or(HotKeyID{}));
        return noError;
    });
    ASSERT_TRUE(installed.has_value());
    ASSERT_EQ(service.registerHotKey(leftArrow, command | option, {signature, 7}).status, noError);

    desktop->press(leftArrow, command | option);

    EXPECT_TRUE(desktop->runUntil([&] { return !ids.empty(); }, deadline));
    EXPECT_EQ(ids, (std::vector<HotKeyID>{{signature, 7}}));
}

TEST_P(HotKeyServiceContract, TellsHotKeysApartByKeyAndByModifiers) {
    install();
    registerKey(keyA, command | option, 1);
    registerKey(keyA, command | option | shift, 2);
    registerKey(keyE, command | option, 3);
    registerKey(keyE, control | option | command, 4);

    desktop->press(keyE, control | option | command);
    desktop->press(keyA, command | option | shift);
    desktop->press(keyA, command | option);
    desktop->press(keyE, command | option);

    EXPECT_THAT(waitForPresses(4), ElementsAre(4, 2, 1, 3));
}

TEST_P(HotKeyServiceContract, DoesNotReportWhatNobodyRegistered) {
    install();
    registerKey(keyA, command | option, 1);

    desktop->press(keyA, command);
    desktop->press(keyA, command | option | shift);
    desktop->press(keyE, command | option);
    waitForEverythingPressed();

    EXPECT_THAT(pressed, IsEmpty());
}

TEST_P(HotKeyServiceContract, ReportsEveryPress) {
    install();
    registerKey(keyA, command, 1);

    desktop->press(keyA, command);
    desktop->press(keyA, command);
    desktop->press(keyA, command);
    waitForEverythingPressed();

    EXPECT_THAT(pressed, ElementsAre(1, 1, 1));
}

TEST_P(HotKeyServiceContract, ReportsAKeyThatIsHeldOnce) {
    VELMORAND_NEEDS(Ability::holdKeys);
    install();
    registerKey(keyA, command, 1);

    desktop->holdAndRelease(keyA, command);
    waitForEverythingPressed();

    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_P(HotKeyServiceContract, ReportsAPressWhileTheLockKeysAreOn) {
    VELMORAND_NEEDS(Ability::setLockKeys);
    install();
    registerKey(keyA, command, 1);

    desktop->setLockKeys(true);
    desktop->press(keyA, command);
    waitForEverythingPressed();
    desktop->setLockKeys(false);

    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_P(HotKeyServiceContract, DoesNotReportAnUnregisteredHotKey) {
    install();
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration registration = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(registration.reference.has_value());

    EXPECT_EQ(service.unregisterHotKey(*registration.reference), noError);
    desktop->press(keyA, command);
    waitForEverythingPressed();

    EXPECT_THAT(pressed, IsEmpty());
}

TEST_P(HotKeyServiceContract, ACombinationCanBeRegisteredAgainAfterItWasGivenBack) {
    install();
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration first = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(first.reference.has_value());
    ASSERT_EQ(service.unregisterHotKey(*first.reference), noError);

    registerKey(keyA, command, 2);
    desktop->press(keyA, command);

    EXPECT_THAT(waitForPresses(1), ElementsAre(2));
}

TEST_P(HotKeyServiceContract, APressBetweenGivingBackAndRegisteringAgainIsReportedUnderTheNewId) {
    install();
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration first = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(first.reference.has_value());

    ASSERT_EQ(service.unregisterHotKey(*first.reference), noError);
    desktop->press(keyA, command);
    registerKey(keyA, command, 2);

    EXPECT_THAT(waitForPresses(1), ElementsAre(2));
}

TEST_P(HotKeyServiceContract, APressThatIsOnItsWayIsNotReportedAfterItsHotKeyWasGivenBack) {
    install();
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration registration = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(registration.reference.has_value());

    desktop->press(keyA, command);
    ASSERT_EQ(service.unregisterHotKey(*registration.reference), noError);
    waitForEverythingPressed();

    EXPECT_THAT(pressed, IsEmpty());
}

TEST_P(HotKeyServiceContract, AnotherProgramCanTakeACombinationAfterTheTurnInWhichItWasGivenBack) {
    VELMORAND_NEEDS(Ability::takeCombinations);
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration registration = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(registration.reference.has_value());

    ASSERT_EQ(service.unregisterHotKey(*registration.reference), noError);
    finishTurn();
    desktop->takeCombination(keyA, command);

    EXPECT_EQ(service.registerHotKey(keyA, command, {signature, 2}),
              (HotKeyRegistration{hotKeyAlreadyTaken, std::nullopt}));
}

TEST_P(HotKeyServiceContract, GivingBackAnUnknownReferenceFails) {
    HotKeyService& service = desktop->platform().hotKeyService();
    const HotKeyRegistration registration = service.registerHotKey(keyA, command, {signature, 1});
    ASSERT_TRUE(registration.reference.has_value());
    ASSERT_EQ(service.unregisterHotKey(*registration.reference), noError);

    EXPECT_NE(service.unregisterHotKey(*registration.reference), noError);
}

TEST_P(HotKeyServiceContract, ACombinationThatThisProgramHoldsIsTaken) {
    registerKey(keyA, command, 1);

    EXPECT_EQ(desktop->platform().hotKeyService().registerHotKey(keyA, command, {signature, 2}),
              (HotKeyRegistration{hotKeyAlreadyTaken, std::nullopt}));
}

TEST_P(HotKeyServiceContract, ACombinationThatAnotherProgramHoldsIsTaken) {
    VELMORAND_NEEDS(Ability::takeCombinations);
    desktop->takeCombination(keyA, command);

    EXPECT_EQ(desktop->platform().hotKeyService().registerHotKey(keyA, command, {signature, 1}),
              (HotKeyRegistration{hotKeyAlreadyTaken, std::nullopt}));
}

TEST_P(HotKeyServiceContract, ACombinationThatIsTakenLeavesTheOthersAlone) {
    VELMORAND_NEEDS(Ability::takeCombinations);
    install();
    registerKey(keyE, command | option, 1);
    desktop->takeCombination(keyA, command | option);
    EXPECT_EQ(desktop->platform().hotKeyService().registerHotKey(keyA, command | option, {signature, 2}).status,
              hotKeyAlreadyTaken);

    desktop->press(keyE, command | option);

    EXPECT_THAT(waitForPresses(1), ElementsAre(1));
}

TEST_P(HotKeyServiceContract, AKeyOrAModifierThatTheKeyboardDoesNotHaveIsAParameterError) {
    HotKeyService& service = desktop->platform().hotKeyService();

    EXPECT_EQ(service.registerHotKey(4000, command, {signature, 1}),
              (HotKeyRegistration{hotKeyParameterError, std::nullopt}));
    EXPECT_EQ(service.registerHotKey(keyA, 0x40000000, {signature, 1}),
              (HotKeyRegistration{hotKeyParameterError, std::nullopt}));
}

TEST_P(HotKeyServiceContract, ARemovedHandlerIsNotCalled) {
    std::vector<std::uint32_t> removed;
    HotKeyService& service = desktop->platform().hotKeyService();
    const auto first = service.installHandler([&](const HotKeyEvent* event) -> OSStatus {
        removed.push_back(event->hotKeyID().value_or(HotKeyID{}).id);
        return noError;
    });
    ASSERT_TRUE(first.has_value());
    install();
    registerKey(keyA, command, 1);

    service.removeHandler(*first);
    service.removeHandler(*first);
    desktop->press(keyA, command);

    EXPECT_THAT(waitForPresses(1), ElementsAre(1));
    EXPECT_THAT(removed, IsEmpty());
}

}  // namespace velmorand

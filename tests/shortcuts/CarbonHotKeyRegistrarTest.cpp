#include "shortcuts/CarbonHotKeyRegistrar.h"

#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum GlobalHotKeyError::Case;

constexpr HotKey leftArrow{123, ShortcutModifiers(0x900)};
constexpr HotKey rightArrow{124, ShortcutModifiers(0x900)};

LogLine error(std::string text) {
    return {LogLevel::error, "hotkeys", std::move(text)};
}

class CarbonHotKeyRegistrarTest : public DesktopFixture {
protected:
    [[nodiscard]] SimulatedHotKeyService& service() { return platform.hotKeyService(); }
    [[nodiscard]] GlobalHotKeyRegistrar::Handler note() {
        return [this](std::uint32_t id) { pressed.push_back(id); };
    }
    void install() { ASSERT_EQ(failureOf(registrar->installHandler(note())), std::nullopt); }
    void registerKey(const HotKey& hotKey, std::uint32_t id) {
        ASSERT_EQ(failureOf(registrar->registerHotKey(hotKey, id)), std::nullopt);
    }

    std::vector<std::uint32_t> pressed;
};

TEST_F(CarbonHotKeyRegistrarTest, TouchesNothingBeforeItIsAsked) {
    EXPECT_EQ(service().handlerCount(), 0U);
    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(CarbonHotKeyRegistrarTest, RegistersUnderTheProgramsSignatureWithTheModifiersUnchanged) {
    registerKey({123, ShortcutModifiers(0x1900)}, 9);

    EXPECT_EQ(CarbonHotKeyRegistrar::signature,
              (std::uint32_t{'V'} << 24U) | (std::uint32_t{'L'} << 16U) | (std::uint32_t{'M'} << 8U) | 'R');
    EXPECT_EQ(service().registeredID(123, 0x1900), (HotKeyID{0x564C4D52, 9}));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, ReportsAPressAsItsIdInALaterTurn) {
    install();
    registerKey(leftArrow, 1);

    service().press(123, 0x900);
    EXPECT_THAT(pressed, IsEmpty());

    platform.runLoop().runPending();
    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_F(CarbonHotKeyRegistrarTest, ReportsEveryPressInItsOrder) {
    install();
    registerKey(leftArrow, 1);
    registerKey(rightArrow, 2);

    service().press(124, 0x900);
    service().press(123, 0x900);
    service().press(124, 0x900);
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, ElementsAre(2, 1, 2));
}

TEST_F(CarbonHotKeyRegistrarTest, InstallingTwiceOnlyReplacesTheCallback) {
    std::vector<std::uint32_t> second;
    install();
    ASSERT_EQ(failureOf(registrar->installHandler([&](std::uint32_t id) { second.push_back(id); })), std::nullopt);
    registerKey(leftArrow, 1);

    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_EQ(service().handlerCount(), 1U);
    EXPECT_THAT(pressed, IsEmpty());
    EXPECT_THAT(second, ElementsAre(1));
}

TEST_F(CarbonHotKeyRegistrarTest, AFailedInstallationIsReportedAndLogged) {
    service().failInstallations(-9868);

    EXPECT_EQ(failureOf(registrar->installHandler(note())), (GlobalHotKeyError{handlerInstallFailed, -9868}));
    EXPECT_THAT(logLines(), ElementsAre(error("InstallEventHandler failed: -9868")));
    EXPECT_EQ(service().handlerCount(), 0U);
}

TEST_F(CarbonHotKeyRegistrarTest, AFailedInstallationLeavesNoCallbackButALaterOneWorks) {
    service().failInstallations(-9868);
    ASSERT_NE(failureOf(registrar->installHandler(note())), std::nullopt);
    registerKey(leftArrow, 1);
    service().press(123, 0x900);
    platform.runLoop().runPending();
    EXPECT_THAT(pressed, IsEmpty());

    service().failInstallations(noError);
    install();
    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_F(CarbonHotKeyRegistrarTest, AFailedRegistrationIsReportedAndLogged) {
    service().setTaken(123, 0x900, true);

    EXPECT_EQ(failureOf(registrar->registerHotKey(leftArrow, 7)), (GlobalHotKeyError{registrationFailed, -9878}));
    EXPECT_THAT(logLines(), ElementsAre(error("RegisterEventHotKey failed id 7 result -9878")));
}

TEST_F(CarbonHotKeyRegistrarTest, AFailedRegistrationLeavesTheOnesBeforeItAlone) {
    install();
    registerKey(leftArrow, 1);
    service().setTaken(124, 0x900, true);
    ASSERT_NE(failureOf(registrar->registerHotKey(rightArrow, 2)), std::nullopt);

    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, ElementsAre(1));
    EXPECT_EQ(service().registrationCount(), 1U);
}

TEST_F(CarbonHotKeyRegistrarTest, ASuccessWithoutAReferenceIsAFailureWithStatusZero) {
    service().withholdReferences(true);

    EXPECT_EQ(failureOf(registrar->registerHotKey(leftArrow, 3)), (GlobalHotKeyError{registrationFailed, 0}));
    EXPECT_THAT(logLines(), ElementsAre(error("RegisterEventHotKey failed id 3 result 0")));
}

TEST_F(CarbonHotKeyRegistrarTest, ASecondHotKeyUnderOneIdDoesNotUnregisterTheFirst) {
    registerKey(leftArrow, 1);
    registerKey(rightArrow, 1);

    EXPECT_TRUE(service().isRegistered(123, 0x900));
    EXPECT_TRUE(service().isRegistered(124, 0x900));

    registrar->unregisterAll();
    EXPECT_TRUE(service().isRegistered(123, 0x900));
    EXPECT_FALSE(service().isRegistered(124, 0x900));
}

TEST_F(CarbonHotKeyRegistrarTest, UnregistersEveryHotKey) {
    registerKey(leftArrow, 1);
    registerKey(rightArrow, 2);

    registrar->unregisterAll();

    EXPECT_EQ(service().registrationCount(), 0U);
}

TEST_F(CarbonHotKeyRegistrarTest, RegistersAgainAfterUnregistering) {
    registerKey(leftArrow, 1);
    registrar->unregisterAll();
    registerKey(leftArrow, 4);

    EXPECT_EQ(service().registeredID(123, 0x900), (HotKeyID{0x564C4D52, 4}));
}

TEST_F(CarbonHotKeyRegistrarTest, UnregisteringNothingDoesNothing) {
    registrar->unregisterAll();
    registrar->unregisterAll();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, UnregistersAHotKeyThatTheServiceHasAlreadyLost) {
    registerKey(leftArrow, 1);
    registerKey(rightArrow, 2);
    service().unregisterHotKey(HotKeyReference{1});

    registrar->unregisterAll();

    EXPECT_EQ(service().registrationCount(), 0U);
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, UnregisteringKeepsTheHandler) {
    install();
    registerKey(leftArrow, 1);
    registrar->unregisterAll();
    registerKey(leftArrow, 1);

    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_F(CarbonHotKeyRegistrarTest, UninstallingRemovesTheHandlerAndKeepsTheHotKeys) {
    install();
    registerKey(leftArrow, 1);

    registrar->uninstallHandler();

    EXPECT_EQ(service().handlerCount(), 0U);
    EXPECT_EQ(service().registrationCount(), 1U);
}

TEST_F(CarbonHotKeyRegistrarTest, UninstallingDropsAPressThatIsStillToBeReported) {
    install();
    registerKey(leftArrow, 1);
    service().press(123, 0x900);

    registrar->uninstallHandler();
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, UninstallingWithoutAHandlerDoesNothing) {
    registrar->uninstallHandler();

    EXPECT_EQ(service().handlerCount(), 0U);
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, CanBeInstalledAgainAfterUninstalling) {
    install();
    registrar->uninstallHandler();
    install();
    registerKey(leftArrow, 1);

    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_EQ(service().handlerCount(), 1U);
    EXPECT_THAT(pressed, ElementsAre(1));
}

TEST_F(CarbonHotKeyRegistrarTest, CountsAnyHotKeyDeliveredToItWhateverItsSignature) {
    install();

    service().deliver({0x41424344, 12});
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, ElementsAre(12));
}

TEST_F(CarbonHotKeyRegistrarTest, IgnoresAPressWithoutAHotKeyId) {
    install();

    service().deliverWithoutHotKeyID();
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, IsEmpty());
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, IgnoresAPressWithoutAnEventAndAnswersThatItWasHandled) {
    install();

    EXPECT_EQ(service().deliverWithoutEvent(), noError);
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, UnregistersNothingWhenItDies) {
    auto other = std::make_shared<CarbonHotKeyRegistrar>(service(), platform.runLoop(), platform.log());
    ASSERT_EQ(failureOf(other->installHandler(note())), std::nullopt);
    ASSERT_EQ(failureOf(other->registerHotKey(leftArrow, 1)), std::nullopt);

    other.reset();
    service().press(123, 0x900);
    platform.runLoop().runPending();

    EXPECT_EQ(service().registrationCount(), 1U);
    EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(CarbonHotKeyRegistrarTest, DoesNotReportAPressAfterItsDeath) {
    auto other = std::make_shared<CarbonHotKeyRegistrar>(service(), platform.runLoop(), platform.log());
    ASSERT_EQ(failureOf(other->installHandler(note())), std::nullopt);
    service().deliver({CarbonHotKeyRegistrar::signature, 1});

    other.reset();
    platform.runLoop().runPending();

    EXPECT_THAT(pressed, IsEmpty());
}

}  // namespace
}  // namespace velmorand

#include "platform/simulated/SimulatedHotKeyService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t signature = 0x54455354;

class SimulatedHotKeyServiceTest : public testing::Test {
protected:
    [[nodiscard]] HotKeyHandler note(OSStatus status = noError) {
        return [this, status](const HotKeyEvent* event) {
            events.push_back(event == nullptr);
            if (event != nullptr) ids.push_back(event->hotKeyID());
            return status;
        };
    }

    std::vector<bool> events;  // whether the event was missing
    std::vector<std::expected<HotKeyID, OSStatus>> ids;
    SimulatedHotKeyService service;
};

TEST_F(SimulatedHotKeyServiceTest, APressOfARegisteredCombinationReachesTheHandler) {
    ASSERT_TRUE(service.installHandler(note()).has_value());
    ASSERT_EQ(service.registerHotKey(0, 0x100, {signature, 7}).status, noError);

    EXPECT_TRUE(service.press(0, 0x100));
    EXPECT_FALSE(service.press(0, 0x200));

    ASSERT_EQ(ids.size(), 1U);
    EXPECT_TRUE(ids[0] == (HotKeyID{signature, 7}));
}

TEST_F(SimulatedHotKeyServiceTest, AnUnregisteredCombinationIsNotReported) {
    ASSERT_TRUE(service.installHandler(note()).has_value());
    const HotKeyRegistration registration = service.registerHotKey(0, 0x100, {signature, 7});

    EXPECT_EQ(service.unregisterHotKey(*registration.reference), noError);
    EXPECT_NE(service.unregisterHotKey(*registration.reference), noError);

    EXPECT_FALSE(service.press(0, 0x100));
    EXPECT_THAT(ids, IsEmpty());
}

TEST_F(SimulatedHotKeyServiceTest, ACombinationIsRefusedWhileSomebodyHoldsIt) {
    service.setTaken(0, 0x100, true);
    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 1}), (HotKeyRegistration{hotKeyAlreadyTaken, {}}));

    service.setTaken(0, 0x100, false);
    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 1}).status, noError);
    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 2}), (HotKeyRegistration{hotKeyAlreadyTaken, {}}));
}

TEST_F(SimulatedHotKeyServiceTest, ARequestThatNoKeyboardHasIsRefused) {
    EXPECT_EQ(service.registerHotKey(128, 0x100, {signature, 1}).status, hotKeyParameterError);
    EXPECT_EQ(service.registerHotKey(0, 0x10000, {signature, 1}).status, hotKeyParameterError);
    EXPECT_EQ(service.registrationCount(), 0U);
}

TEST_F(SimulatedHotKeyServiceTest, OperationsCanBeMadeToFail) {
    service.failInstallations(-1);
    service.failRegistrations(-2);

    EXPECT_TRUE(service.installHandler(note()) == std::unexpected(-1));
    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 1}), (HotKeyRegistration{-2, {}}));

    service.failInstallations(noError);
    service.failRegistrations(noError);
    EXPECT_TRUE(service.installHandler(note()).has_value());
    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 1}).status, noError);
}

TEST_F(SimulatedHotKeyServiceTest, ASuccessCanComeWithoutAReference) {
    service.withholdReferences(true);

    EXPECT_EQ(service.registerHotKey(0, 0x100, {signature, 1}), (HotKeyRegistration{noError, std::nullopt}));
    EXPECT_FALSE(service.isRegistered(0, 0x100));
}

TEST_F(SimulatedHotKeyServiceTest, DeliversMalformedEvents) {
    ASSERT_TRUE(service.installHandler(note(-5)).has_value());

    service.deliverWithoutHotKeyID();
    EXPECT_EQ(service.deliverWithoutEvent(), -5);

    EXPECT_THAT(events, ElementsAre(false, true));
    ASSERT_EQ(ids.size(), 1U);
    EXPECT_TRUE(ids[0] == std::unexpected(-9870));
}

TEST_F(SimulatedHotKeyServiceTest, ARemovedHandlerIsNotCalled) {
    const auto reference = service.installHandler(note());
    ASSERT_TRUE(reference.has_value());

    service.removeHandler(*reference);
    service.removeHandler(*reference);
    service.deliver({signature, 1});

    EXPECT_EQ(service.handlerCount(), 0U);
    EXPECT_THAT(ids, IsEmpty());
}

}  // namespace
}  // namespace velmorand

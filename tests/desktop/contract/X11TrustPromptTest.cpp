#include "desktop/contract/X11DesktopUnderContract.h"
#include "platform/UserNotificationCenter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace velmorand {
namespace {

using testing::ElementsAre;

TEST(X11TrustPromptTest, WhatIsMissingIsOneNotificationHoweverOftenItIsAskedFor) {
    const auto made = desktop::X11DesktopUnderContract::make();
    auto* desktop = dynamic_cast<desktop::X11DesktopUnderContract*>(made.get());
    ASSERT_NE(desktop, nullptr);
    if (const auto reason = desktop->reasonAgainst(Ability::showNotifications)) GTEST_SKIP() << *reason;
    desktop->allowNotifications();
    desktop->revokeTrust();
    const ContractNotification expected{"Velmorand",
                                        "No window manager that follows the desktop's conventions (EWMH) is running."};
    Accessibility& accessibility = desktop->platform().accessibility();

    EXPECT_FALSE(accessibility.isProcessTrustedWithPrompt());
    EXPECT_TRUE(desktop->runUntil([&] { return !desktop->shownNotifications().empty(); }, std::chrono::seconds{15}));
    EXPECT_FALSE(accessibility.isProcessTrustedWithPrompt());
    EXPECT_TRUE(desktop->runUntil([&] { return desktop->receivedNotifications() == 2; }, std::chrono::seconds{15}));

    EXPECT_THAT(desktop->shownNotifications(), ElementsAre(expected));
}

}  // namespace
}  // namespace velmorand

#include "platform/linux/StartupToken.h"

#include "platform/linux/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

constexpr const char* activationToken = "XDG_ACTIVATION_TOKEN";
constexpr const char* startupId = "DESKTOP_STARTUP_ID";

TEST(StartupTokenTest, TakesBothOutOfTheEnvironment) {
    const ScopedEnvironment token(activationToken, "token-1");
    const ScopedEnvironment id(startupId, "launcher-1_TIME42");

    EXPECT_EQ(takeStartupTokens(),
              (StartupTokens{.activationToken = "token-1", .desktopStartupId = "launcher-1_TIME42"}));

    EXPECT_EQ(std::getenv(activationToken), nullptr);
    EXPECT_EQ(std::getenv(startupId), nullptr);
    EXPECT_EQ(takeStartupTokens(), StartupTokens{});
}

TEST(StartupTokenTest, WhatIsNoTextIsTakenAwayAndDropped) {
    for (const char* value : {"", "line\nend", "cut\xC3", "token\uFFFE", "\uFDD0", "\U0001FFFF"}) {
        const ScopedEnvironment token(activationToken, value);
        const ScopedEnvironment id(startupId, "launcher-1");

        EXPECT_EQ(takeStartupTokens(), StartupTokens{.desktopStartupId = "launcher-1"}) << value;
        EXPECT_EQ(std::getenv(activationToken), nullptr) << value;
    }
}

}  // namespace
}  // namespace velmorand

#pragma once

#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/TrustPrompt.h"
#include "platform/linux/support/FakeWindowSystem.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedUserNotificationCenter.h"
#include "support/Expected.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace velmorand {

/// The accessibility service over a window system in memory, with one application that has two windows.
class LinuxAccessibilityFixture : public testing::Test {
protected:
    static constexpr std::int32_t pid = 501;
    static constexpr Rect frontFrame{100, 120, 800, 600};
    static constexpr Rect backFrame{10, 20, 300, 200};

    [[nodiscard]] AXElement application() { return accessibility->createApplication(pid); }

    /// The application's windows as elements, front to back, asked for anew.
    [[nodiscard]] std::vector<AXElement> windowElements() {
        return std::get<std::vector<AXElement>>(
            accessibility->copyAttributeValue(application(), ax_attribute::windows).value());
    }
    [[nodiscard]] AXElement frontElement() { return windowElements().at(0); }
    [[nodiscard]] AXElement backElement() { return windowElements().at(1); }

    [[nodiscard]] std::expected<void, AXError> setPosition(const AXElement& element, Point position) {
        return accessibility->setAttributeValue(element, ax_attribute::position, {AXValueType::point, position});
    }
    [[nodiscard]] std::expected<void, AXError> setSize(const AXElement& element, Size size) {
        return accessibility->setAttributeValue(element, ax_attribute::size, {AXValueType::size, size});
    }
    [[nodiscard]] std::expected<AXAttributeValue, AXError> copy(const AXElement& element, std::string_view attribute) {
        return accessibility->copyAttributeValue(element, attribute);
    }

    SimulatedRunLoop runLoop;
    SimulatedLog log;
    SimulatedUserNotificationCenter userNotificationCenter{runLoop};
    TrustPrompt trustPrompt{userNotificationCenter, log, "app.velmorand.Velmorand"};
    FakeWindowSystem windowSystem;
    WindowID back = windowSystem.open(pid, backFrame);
    WindowID front = windowSystem.open(pid, frontFrame);
    std::unique_ptr<LinuxAccessibility> accessibility =
        std::make_unique<LinuxAccessibility>(windowSystem, runLoop, trustPrompt, log);
};

/// Matches the result of a call that succeeded.
MATCHER(Succeeds, "success") {
    return arg.has_value();
}

/// Matches the result of a call that failed with this error.
MATCHER_P(FailsWith, error, "failure with AXError " + std::to_string(error.code)) {
    return !arg.has_value() && arg.error() == error;
}

}  // namespace velmorand

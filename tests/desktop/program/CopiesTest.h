#pragma once

#include "desktop/harness/Pager.h"
#include "desktop/harness/TestDesktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand::desktop {

/// A desktop with one window on which the program is started more than once.
class CopiesTest : public testing::Test {
protected:
    /// What a start prints that another copy has answered.
    static constexpr std::string_view handedOver = "velmorand: Another copy is running and comes to the front.\n";

    void SetUp() override;
    void TearDown() override;

    /// Starts the program and does not wait for anything.
    [[nodiscard]] ChildProcess start(const Environment& additions = {});
    /// Starts the program and waits until it has all shortcuts; the test fails when it does not get them.
    [[nodiscard]] ChildProcess startFully(const Environment& additions = {});
    /// Starts another program that takes the name of the program under test and behaves in this way.
    [[nodiscard]] ChildProcess takeName(std::string_view behaviour);

    /// The program ends with status 0, having said in one line that another copy has answered.
    void expectHandedOver(ChildProcess& program);
    /// The settings window is shown and has the keyboard, or soon will.
    void expectSettingsInFront();
    /// Its shortcut puts the window into the left half, where it was not before.
    void expectShortcutWorks(ChildProcess& program);
    [[nodiscard]] bool logs(const ChildProcess& program, std::string_view line);

    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::optional<ChildProcess> client_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace velmorand::desktop

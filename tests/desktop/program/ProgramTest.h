#pragma once

#include "desktop/demo/DemoDesktop.h"
#include "desktop/harness/HostileClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace velmorand::desktop {

/// Where the program under test was built.
[[nodiscard]] std::filesystem::path programUnderTest();

/// The built program on a desktop with two displays, a panel and three real windows, under the window manager that the
/// parameter names. The primary display does not begin at the root window's origin.
class ProgramTest : public testing::TestWithParam<WindowManagerKind> {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The program to be started.
    [[nodiscard]] virtual std::filesystem::path program() const { return programUnderTest(); }

    /// The document that the program finds when it starts; empty for none.
    [[nodiscard]] virtual std::string_view storedSettings() const { return {}; }

    /// Presses the default shortcut of the action.
    void press(std::string_view action);

    /// Gives the window the focus; the test fails when it does not get it.
    void focus(DemoWindow window);

    /// Where the action has to put the window, which is where it is seen now.
    [[nodiscard]] PixelRect wanted(std::string_view action, DemoWindow window);

    /// The window's frame once it has settled at \p frame, or the last one seen.
    [[nodiscard]] PixelRect settledFrame(DemoWindow window, const PixelRect& frame);

    /// Presses the shortcut for the focused \p window and expects it where the action puts it.
    void expectLanding(std::string_view action, DemoWindow window);

    /// Whether the program logs \p line, from byte \p from of its log on, in time.
    [[nodiscard]] bool logs(std::string_view line, std::uintmax_t from = 0);
    /// How often the program's log holds \p line.
    [[nodiscard]] int count(std::string_view line);

    [[nodiscard]] DemoDesktop& desktop() { return *desktop_; }
    [[nodiscard]] HostileClient hostileClient() { return HostileClient(desktop_->observer().connection()); }

private:
    std::unique_ptr<DemoDesktop> desktop_;
};

/// Names the runs of a test after their window managers.
[[nodiscard]] std::string windowManagerName(const testing::TestParamInfo<WindowManagerKind>& info);

}  // namespace velmorand::desktop

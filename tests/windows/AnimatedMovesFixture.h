#pragma once

#include "support/DesktopFixture.h"
#include "windows/WindowManager.h"

#include <chrono>
#include <string_view>

namespace velmorand {

inline constexpr Rect leftHalfFrame{0, 25, 720, 875};
inline constexpr Rect rightHalfFrame{720, 25, 720, 875};
inline constexpr std::string_view didNotMove = "The window did not move to the requested position.";

/// Moves that take their time.
class AnimatedMovesFixture : public DesktopFixture {
protected:
    AnimatedMovesFixture() {
        changePreferences([](PreferencesState& state) {
            state.enableAnimations = true;
            state.animationDuration = 0.3;
        });
    }

    void perform(WindowAction action) { EXPECT_EQ(failureOf(windowManager->perform(action)), std::nullopt); }
    void advance(std::chrono::milliseconds span) { platform.runLoop().advance(span); }
    /// Performs the action and waits for its end.
    void performWhole(WindowAction action) {
        perform(action);
        advance(std::chrono::milliseconds(400));
    }
    void expectNothingToRestore() {
        EXPECT_EQ(failureOf(windowManager->perform(WindowAction::restore)), WindowOperationError::missingRestoreFrame);
    }
    void setDuration(double seconds) {
        changePreferences([=](PreferencesState& state) { state.animationDuration = seconds; });
    }

    SimulatedWindowID id = openWindow();
};

}  // namespace velmorand

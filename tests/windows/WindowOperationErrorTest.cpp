#include "windows/WindowOperationError.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace velmorand {
namespace {

struct ErrorRow {
    WindowOperationError error;
    WindowOperationError::Case which;
    std::string_view description;
};

TEST(WindowOperationError, DescribesEveryCaseInTheWordsTheUserSees) {
    using enum WindowOperationError::Case;
    const std::vector<ErrorRow> rows{
        {WindowOperationError::ignored("Editor"), ignoredApplication, "Editor is ignored."},
        {WindowOperationError::accessibility("Anything at all."), axFailure, "Anything at all."},
        {accessibilityPermissionMissing, accessibilityPermissionMissing, "Accessibility permission is required."},
        {noFrontmostApplication, noFrontmostApplication, "No frontmost application is available."},
        {velmorandIsFrontmost, velmorandIsFrontmost, "Select another app's window, then try again."},
        {noFocusedWindow, noFocusedWindow, "No focused window is available."},
        {unsupportedWindow, unsupportedWindow, "This window does not support resizing."},
        {missingWindowFrame, missingWindowFrame, "Could not read the window frame."},
        {missingScreen, missingScreen, "Could not find a matching display."},
        {displayMoveUnavailable, displayMoveUnavailable, "Only one display is connected."},
        {missingRestoreFrame, missingRestoreFrame, "No previous frame is available to restore."},
    };
    int position = 0;
    for (const ErrorRow& row : rows) {
        SCOPED_TRACE(row.description);
        EXPECT_EQ(row.error.which(), row.which);
        EXPECT_EQ(row.error.description(), row.description);
        EXPECT_EQ(static_cast<int>(row.which), position++);
    }
}

TEST(WindowOperationError, IsEqualWhenCaseAndPayloadAre) {
    EXPECT_EQ(WindowOperationError::ignored("A"), WindowOperationError::ignored("A"));
    EXPECT_NE(WindowOperationError::ignored("A"), WindowOperationError::ignored("B"));
    EXPECT_NE(WindowOperationError::ignored("A"), WindowOperationError::accessibility("A"));
    EXPECT_NE(WindowOperationError(WindowOperationError::missingScreen),
              WindowOperationError(WindowOperationError::missingWindowFrame));
}

TEST(WindowOperationError, HasOneMoreTextForAMoveThatDidNotLand) {
    EXPECT_EQ(windowDidNotMoveMessage, "The window did not move to the requested position.");
}

}  // namespace
}  // namespace velmorand

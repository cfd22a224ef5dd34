#include "shortcuts/GlobalHotKeyRegistrar.h"

#include <gtest/gtest.h>

namespace velmorand {
namespace {

using enum GlobalHotKeyError::Case;

TEST(GlobalHotKeyError, DescribesAFailedInstallation) {
    EXPECT_EQ((GlobalHotKeyError{handlerInstallFailed, -9868}.description()),
              "Could not install the keyboard shortcut handler (error -9868).");
}

TEST(GlobalHotKeyError, DescribesAFailedRegistration) {
    EXPECT_EQ((GlobalHotKeyError{registrationFailed, -9878}.description()),
              "Could not register the shortcut (error -9878).");
    EXPECT_EQ((GlobalHotKeyError{registrationFailed, 0}.description()), "Could not register the shortcut (error 0).");
}

TEST(GlobalHotKeyError, IsEqualWhenCaseAndStatusAre) {
    EXPECT_TRUE((GlobalHotKeyError{registrationFailed, 1} == GlobalHotKeyError{registrationFailed, 1}));
    EXPECT_FALSE((GlobalHotKeyError{registrationFailed, 1} == GlobalHotKeyError{registrationFailed, 2}));
    EXPECT_FALSE((GlobalHotKeyError{registrationFailed, 1} == GlobalHotKeyError{handlerInstallFailed, 1}));
}

}  // namespace
}  // namespace velmorand

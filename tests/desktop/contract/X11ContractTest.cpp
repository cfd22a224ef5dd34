#include "desktop/contract/X11DesktopUnderContract.h"
#include "platform/contract/Contracts.h"

#include <memory>

namespace velmorand {
namespace {

const DesktopFactory x11Desktop{.name = "Desktop", .make = [] { return desktop::X11DesktopUnderContract::make(); }};

INSTANTIATE_TEST_SUITE_P(X11, AccessibilityContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, AccessibilityWriteContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, ApplicationContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, BundleContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, DisplaysContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, HotKeyServiceContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, LogContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, LoginItemServiceContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, NotificationCenterContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, RecorderPanelHostContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, RunLoopContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, StatusBarContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, UserDefaultsContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, UserNotificationCenterContract, testing::Values(x11Desktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(X11, WorkspaceContract, testing::Values(x11Desktop), nameOfDesktop);

}  // namespace
}  // namespace velmorand

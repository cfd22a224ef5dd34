#include "platform/contract/Contracts.h"
#include "platform/simulated/SimulatedDesktopUnderContract.h"

#include <memory>

namespace velmorand {
namespace {

const DesktopFactory simulatedDesktop{.name = "Desktop",
                                      .make = [] { return std::make_unique<SimulatedDesktopUnderContract>(); }};

INSTANTIATE_TEST_SUITE_P(Simulated, AccessibilityContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, AccessibilityWriteContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, ApplicationContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, BundleContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, DisplaysContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, HotKeyServiceContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, LogContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, LoginItemServiceContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, NotificationCenterContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, RecorderPanelHostContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, RunLoopContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, StatusBarContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, UserDefaultsContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, UserNotificationCenterContract, testing::Values(simulatedDesktop), nameOfDesktop);
INSTANTIATE_TEST_SUITE_P(Simulated, WorkspaceContract, testing::Values(simulatedDesktop), nameOfDesktop);

}  // namespace
}  // namespace velmorand
